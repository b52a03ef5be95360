include(CMakePackageConfigHelpers)

if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
    message(FATAL_ERROR "CMAKE_INSTALL_LIBDIR and CMAKE_INSTALL_INCLUDEDIR have to be relative to the prefix")
endif()
set(velk_cmakedir ${CMAKE_INSTALL_LIBDIR}/cmake/VelkRouting)
set(velk_pkgconfigdir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# Everything finds its files relative to itself, so that an installation can be moved.
file(RELATIVE_PATH velk_prefix_from_pkgconfigdir ${CMAKE_INSTALL_PREFIX}/${velk_pkgconfigdir} ${CMAKE_INSTALL_PREFIX})
# Callers of a static library link to the INI library too, which has no pkg-config file unless it is the bundled one.
if(TARGET VelkIni AND velk_is_shared)
    set(velk_requires_private "Requires.private: velk-ini")
elseif(TARGET VelkIni)
    set(velk_requires ", velk-ini")
endif()
if(NOT velk_is_shared)
    set(velk_static_definition -DVELK_STATIC_DEFINE)
    set(velkini_static_definition -DVELKINI_STATIC_DEFINE)
    set(velkplanning_static_definition -DVELKPLANNING_STATIC_DEFINE)
    set(velk_cadical_libs -lcadical)
    set(velk_facade_requires "Requires: Qt6Core >= 6.4${velk_requires}")
endif()

# Where the file of a shared library is, for a target that needs no Qt.
function(velk_install_facade_files facade library)
    if(velk_is_shared)
        file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/${facade}Files.cmake CONTENT
"set_target_properties(Velk::${facade} PROPERTIES
    IMPORTED_LOCATION \"\${velk_prefix}/${CMAKE_INSTALL_LIBDIR}/$<TARGET_FILE_NAME:${library}>\"
    IMPORTED_SONAME $<TARGET_SONAME_FILE_NAME:${library}>)
")
        install(FILES ${PROJECT_BINARY_DIR}/${facade}Files.cmake DESTINATION ${velk_cmakedir} COMPONENT development)
    endif()
endfunction()

# Targets with their files and headers, the shared libraries themselves as a part of their own.
function(velk_install_libraries export component)
    install(TARGETS ${ARGN}
        EXPORT ${export}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component} NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${component}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
        FILE_SET generated DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
    install(EXPORT ${export} NAMESPACE Velk:: DESTINATION ${velk_cmakedir} COMPONENT development)
endfunction()

set(velk_libraries VelkRouting)
set(velk_pkgconfig_files velk-routing velk-facade)
if(TARGET VelkIni)
    list(APPEND velk_libraries VelkIni)
    list(APPEND velk_pkgconfig_files velk-ini)
endif()
velk_install_libraries(VelkRoutingTargets library ${velk_libraries})
velk_install_facade_files(VelkFacade VelkRouting)
if(VELK_BUILD_PLANNING)
    velk_install_libraries(VelkPlanningTargets planning VelkPlanning)
    velk_install_facade_files(VelkPlanner VelkPlanning)
    list(APPEND velk_libraries VelkPlanning)
    list(APPEND velk_pkgconfig_files velk-planning velk-planner)
endif()

configure_package_config_file(cmake/VelkRoutingConfig.cmake.in
    ${PROJECT_BINARY_DIR}/package/VelkRoutingConfig.cmake
    INSTALL_DESTINATION ${velk_cmakedir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/VelkRoutingConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/package/VelkRoutingConfig.cmake
    ${PROJECT_BINARY_DIR}/package/VelkRoutingConfigVersion.cmake
    DESTINATION ${velk_cmakedir}
    COMPONENT development)
foreach(name IN LISTS velk_pkgconfig_files)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${velk_pkgconfigdir} COMPONENT development)
endforeach()

# The libraries find each other, and the command finds them, from wherever the whole installation is moved to; Qt is found
# where it was when it is in no folder of the system.
set(velk_library_rpath $ORIGIN ${CMAKE_INSTALL_RPATH})
set_target_properties(${velk_libraries} PROPERTIES
    INSTALL_RPATH "${velk_library_rpath}"
    INSTALL_RPATH_USE_LINK_PATH ON)

if(VELK_BUILD_CLI)
    file(RELATIVE_PATH relative_libdir
        ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set(velk_command_rpath $ORIGIN/${relative_libdir} ${CMAKE_INSTALL_RPATH})
    set_target_properties(velk PROPERTIES
        INSTALL_RPATH "${velk_command_rpath}"
        INSTALL_RPATH_USE_LINK_PATH ON)
    install(TARGETS velk RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)

    # As in the source folder, so that the commands of the documents work there too.
    set(velk_docdir ${CMAKE_INSTALL_DATADIR}/doc/velk)
    install(FILES README.md CHANGELOG.md DESTINATION ${velk_docdir} COMPONENT command)
    install(DIRECTORY docs DESTINATION ${velk_docdir} COMPONENT command
        FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.png" PATTERN site EXCLUDE)
    install(DIRECTORY examples DESTINATION ${velk_docdir} COMPONENT command
        FILES_MATCHING PATTERN "*.net" PATTERN "*.csv" PATTERN "*.toml" PATTERN "*.kicad_*" PATTERN "*.cpp" PATTERN "*.py" PATTERN CMakeLists.txt)
endif()
