include(CMakePackageConfigHelpers)

set(VELK_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/VelkRouting)

set(velk_libraries VelkRouting)
if(TARGET VelkIni)
    list(APPEND velk_libraries VelkIni)
endif()
install(TARGETS ${velk_libraries}
    EXPORT VelkRoutingTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILE_SET generated DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT VelkRoutingTargets NAMESPACE Velk:: DESTINATION ${VELK_INSTALL_CMAKEDIR})

configure_package_config_file(cmake/VelkRoutingConfig.cmake.in
    ${PROJECT_BINARY_DIR}/VelkRoutingConfig.cmake
    INSTALL_DESTINATION ${VELK_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VelkRoutingConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/VelkRoutingConfig.cmake
    ${PROJECT_BINARY_DIR}/VelkRoutingConfigVersion.cmake
    DESTINATION ${VELK_INSTALL_CMAKEDIR})

# The libraries find each other, and the command finds them, from wherever the whole installation is moved to.
set_target_properties(${velk_libraries} PROPERTIES INSTALL_RPATH "$ORIGIN")
if(VELK_VELKINI STREQUAL "system")
    set_target_properties(VelkRouting PROPERTIES INSTALL_RPATH_USE_LINK_PATH ON)
endif()

if(VELK_BUILD_CLI)
    file(RELATIVE_PATH relative_libdir
        ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(velk PROPERTIES INSTALL_RPATH "$ORIGIN/${relative_libdir}")
    install(TARGETS velk RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
