include(CMakePackageConfigHelpers)

set(velk_cmakedir ${CMAKE_INSTALL_LIBDIR}/cmake/VelkRouting)
set(velk_pkgconfigdir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# Everything finds its files relative to itself, so that an installation can be moved.
file(RELATIVE_PATH velk_prefix_from_pkgconfigdir ${CMAKE_INSTALL_PREFIX}/${velk_pkgconfigdir} ${CMAKE_INSTALL_PREFIX})
if(NOT velk_is_shared)
    set(velk_static_definition -DVELK_STATIC_DEFINE)
    set(velkini_static_definition -DVELKINI_STATIC_DEFINE)
    set(velk_facade_requires "Requires: velk-ini")
endif()

if(velk_is_shared)
    file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/VelkFacadeFiles.cmake CONTENT
"set_target_properties(Velk::VelkFacade PROPERTIES
    IMPORTED_LOCATION \"\${velk_prefix}/${CMAKE_INSTALL_LIBDIR}/$<TARGET_FILE_NAME:VelkRouting>\"
    IMPORTED_SONAME $<TARGET_SONAME_FILE_NAME:VelkRouting>)
")
    install(FILES ${PROJECT_BINARY_DIR}/VelkFacadeFiles.cmake DESTINATION ${velk_cmakedir} COMPONENT development)
endif()

set(velk_libraries VelkRouting)
set(velk_pkgconfig_files velk-routing velk-facade)
if(TARGET VelkIni)
    list(APPEND velk_libraries VelkIni)
    list(APPEND velk_pkgconfig_files velk-ini)
endif()
install(TARGETS ${velk_libraries}
    EXPORT VelkRoutingTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILE_SET generated DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT VelkRoutingTargets NAMESPACE Velk:: DESTINATION ${velk_cmakedir} COMPONENT development)

configure_package_config_file(cmake/VelkRoutingConfig.cmake.in
    ${PROJECT_BINARY_DIR}/VelkRoutingConfig.cmake
    INSTALL_DESTINATION ${velk_cmakedir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VelkRoutingConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/VelkRoutingConfig.cmake
    ${PROJECT_BINARY_DIR}/VelkRoutingConfigVersion.cmake
    DESTINATION ${velk_cmakedir}
    COMPONENT development)
foreach(name IN LISTS velk_pkgconfig_files)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${velk_pkgconfigdir} COMPONENT development)
endforeach()

# The libraries find each other, and the command finds them, from wherever the whole installation is moved to.
set_target_properties(${velk_libraries} PROPERTIES INSTALL_RPATH "$ORIGIN")
if(VELK_VELKINI STREQUAL "system")
    set_target_properties(VelkRouting PROPERTIES INSTALL_RPATH_USE_LINK_PATH ON)
endif()

if(VELK_BUILD_CLI)
    file(RELATIVE_PATH relative_libdir
        ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(velk PROPERTIES INSTALL_RPATH "$ORIGIN/${relative_libdir}")
    install(TARGETS velk RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)
endif()
