# Debian packages: scripts/package, or cpack -G DEB in a build folder made with CMAKE_SKIP_INSTALL_RPATH and the prefix
# /usr.
set(CPACK_PACKAGE_NAME velk)
set(CPACK_PACKAGE_CONTACT "Velk maintainers <maintainers@velk.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(velk_packages library development command)
if(VELK_BUILD_PLANNING)
    list(APPEND velk_packages planning)
endif()
if(VELK_BUILD_PYTHON)
    list(APPEND velk_packages python)
endif()
set(CPACK_COMPONENTS_ALL ${velk_packages})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # else CPack puts it before the summary of each package
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS 
    ${PROJECT_BINARY_DIR}/velk ${PROJECT_BINARY_DIR}/velkini ${PROJECT_BINARY_DIR}/velkplanning)

set(library_package libvelkrouting${PROJECT_VERSION_MAJOR})
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Finds routes through electrical test systems drawn in KiCad
Velk reads the wiring of an automated electrical test system from KiCad
netlists, joins boards that are plugged together, and finds the chains of
relays and resistors from an instrument pin to a pin of the device under test.

This package holds the shared libraries.")

if(VELK_BUILD_PLANNING)
    set(planning_package libvelkplanning${PROJECT_VERSION_MAJOR})
    set(needs_planning ", ${planning_package} ${same_version}")
    set(CPACK_DEBIAN_PLANNING_PACKAGE_NAME ${planning_package})
    set(CPACK_DEBIAN_PLANNING_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_PLANNING_PACKAGE_DEPENDS "${library_package} ${same_version}")
    set(CPACK_DEBIAN_PLANNING_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
    set(CPACK_COMPONENT_PLANNING_DESCRIPTION "Plans connections of electrical test systems drawn in KiCad
Velk reads the wiring of an automated electrical test system from KiCad
netlists. The library in this package finds positions of its relays that make
several connections at once and nothing else, or proves that there are none.")
endif()

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvelkrouting-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} ${same_version}${needs_planning}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "qt6-base-dev (>= 6.4)") # callers of the facade need none of it
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Files to build programs with Velk
Velk reads the wiring of an automated electrical test system from KiCad
netlists and finds the routes through it.

This package holds the headers, the CMake package and the pkg-config files.
Programs that use more than the facade need the headers of Qt 6 too.")

set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME velk)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${library_package} ${same_version}${needs_planning}")
set(CPACK_COMPONENT_COMMAND_DESCRIPTION "Command that finds routes through a test system drawn in KiCad
It reads KiCad netlists, one for each board, joins them where the boards are
plugged together, lists what is connected, shows the chains of relays and
resistors between two pins, and writes the INI files of the test system's
resource manager.")

if(VELK_BUILD_PYTHON)
    find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)
    set(python ${Python3_VERSION_MAJOR}.${Python3_VERSION_MINOR})
    math(EXPR next_minor "${Python3_VERSION_MINOR} + 1")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-velk)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${library_package} ${same_version}${needs_planning}, \
python3 (>= ${python}~), python3 (<< ${Python3_VERSION_MAJOR}.${next_minor})")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
        ${PROJECT_SOURCE_DIR}/packaging/debian/python/postinst ${PROJECT_SOURCE_DIR}/packaging/debian/python/prerm)
    set(CPACK_COMPONENT_PYTHON_DESCRIPTION "Finds routes through test systems drawn in KiCad (Python 3)
Velk reads the wiring of an automated electrical test system from KiCad
netlists, finds the chains of relays and resistors between two pins, plans
several connections at once and tells what is connected.

This package holds the module velk for Python.")
endif()

configure_file(packaging/debian/changelog.in ${PROJECT_BINARY_DIR}/changelog.Debian @ONLY)
find_program(GZIP_PROGRAM gzip REQUIRED)
execute_process(COMMAND ${GZIP_PROGRAM} -9nc ${PROJECT_BINARY_DIR}/changelog.Debian
    OUTPUT_FILE ${PROJECT_BINARY_DIR}/changelog.Debian.gz COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS velk_packages)
    string(TOUPPER ${component} upper)
    install(FILES packaging/debian/copyright ${PROJECT_BINARY_DIR}/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
        COMPONENT ${component})
endforeach()
install(FILES packaging/debian/lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
    COMPONENT library
    RENAME ${library_package})
include(CPack)
