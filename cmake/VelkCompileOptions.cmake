# What every target of this project is compiled with. Nothing of it reaches a target that links to the library.
function(velk_compile_options target)
    target_compile_features(${target} PRIVATE cxx_std_17)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
        if(CMAKE_CXX_COMPILER_ID MATCHES Clang OR CMAKE_CXX_CLANG_TIDY)
            # Qt's logging macros, as Qt itself uses them.
            target_compile_options(${target} PRIVATE -Wno-gnu-zero-variadic-macro-arguments)
        endif()
        if(VELK_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
endfunction()

# Where several files are compiled at once, those of a folder are, so that names in unnamed namespaces need to differ within
# their folder only.
function(velk_unite_by_folder target)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        get_filename_component(folder ${source} DIRECTORY)
        string(MAKE_C_IDENTIFIER "in_${folder}" group)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()

# What the libraries have in common besides. The prefix is that of the macros in the export header.
function(velk_library_options target prefix)
    velk_compile_options(${target})
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON
        VERIFY_INTERFACE_HEADER_SETS ON)
    target_compile_options(${target} PRIVATE ${VELK_LIBRARY_OPTIONS})
    if(NOT velk_is_shared)
        target_compile_definitions(${target} PUBLIC ${prefix}_STATIC_DEFINE)
    elseif(UNIX AND NOT APPLE)
        # Else templates of Qt and the standard library that happen to be used would be exported too.
        target_link_options(${target} PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exported.map)
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exported.map)
    endif()
endfunction()
