# Debian packages by "cpack -G DEB": one for each component that is installed. In a build that was not
# configured for them (KELSTD_DEBIAN_BUILD) cpack makes such a build first (KelStdPackageTree).
set(KELSTD_PACKAGE_MAINTAINER "The KelStd authors <packages@kelstd.example>" CACHE STRING
    "Who answers for the packages: NAME <ADDRESS>")
set(KELSTD_PACKAGE_REVISION "0kelstd1" CACHE STRING
    "Debian's revision of the packages; this one is older than any of Debian's own")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelstd)
set(CPACK_PACKAGE_CONTACT "${KELSTD_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_BINARY_DIR}/KelStdPackageTree.cmake")
configure_file("${CMAKE_CURRENT_LIST_DIR}/KelStdPackageTree.cmake.in"
    "${CPACK_PROJECT_CONFIG_FILE}" @ONLY)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE kelstd)
set(CPACK_DEBIAN_PACKAGE_RELEASE "${KELSTD_PACKAGE_REVISION}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

# A package: kelstd_package(COMPONENT NAME SECTION DEPENDS DESCRIPTION). DEPENDS is a list of
# components, of which the same version is needed, and of packages that dpkg-shlibdeps does not find.
# The first line of the description is the synopsis.
function(kelstd_package component name section description)
    cmake_parse_arguments(PARSE_ARGV 4 arg "" "ARCHITECTURE" "COMPONENTS;DEPENDS;RECOMMENDS")
    get_cmake_property(installed COMPONENTS)
    if(NOT component IN_LIST installed)
        return()
    endif()
    string(TOUPPER "${component}" upper)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DEPENDS ${arg_COMPONENTS} PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${description}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    if(arg_ARCHITECTURE)
        set(CPACK_DEBIAN_${upper}_PACKAGE_ARCHITECTURE ${arg_ARCHITECTURE} PARENT_SCOPE)
    endif()
    list(JOIN arg_DEPENDS ", " depends)
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    list(JOIN arg_RECOMMENDS ", " recommends)
    set(CPACK_DEBIAN_${upper}_PACKAGE_RECOMMENDS "${recommends}" PARENT_SCOPE)

    if(KELSTD_DEBIAN_BUILD)
        set(documents "${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}")
        install(FILES packaging/debian/copyright DESTINATION "${documents}"
            COMPONENT ${component})
        install(FILES "${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz"
            "${PROJECT_BINARY_DIR}/packaging/changelog.gz"
            DESTINATION "${documents}" COMPONENT ${component})
        if(EXISTS "${PROJECT_SOURCE_DIR}/packaging/debian/${name}.lintian-overrides")
            install(FILES "packaging/debian/${name}.lintian-overrides"
                DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides" RENAME "${name}"
                COMPONENT ${component})
        endif()
    endif()
endfunction()

if(KELSTD_DEBIAN_BUILD)
    # The changelogs, compressed as Debian wants them: without a name and a time in the archive.
    string(TIMESTAMP KELSTD_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
    configure_file(packaging/debian/changelog.in packaging/changelog.Debian @ONLY)
    configure_file(CHANGELOG.md packaging/changelog COPYONLY)
    foreach(changelog changelog.Debian changelog)
        execute_process(COMMAND gzip -9nf "${PROJECT_BINARY_DIR}/packaging/${changelog}"
            COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
endif()

set(about "KelStd turns a measured GNSS position into every frame a surveyor needs:
WGS84 geographic and cartesian, local geographic, and the projected
northing, easting and height of a coordinate system.")

# What links the libraries needs a package of at least their version. It is called after their SONAME.
get_target_property(soversion KelStd SOVERSION)
configure_file(packaging/debian/shlibs.in packaging/shlibs @ONLY)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    "${PROJECT_BINARY_DIR}/packaging/shlibs" "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/KelStdPackageFinish.cmake")

# PROJ is loaded from an archive that unzip unpacks: no binary says so. The copy in the archive needs
# what Debian's own needs.
kelstd_package(library libkelstd${soversion} libs
"coordinate systems for GNSS surveying - shared libraries
${about}
.
This package has the libraries, and what they look up at run time: PROJ and its
resource files as an archive, the delivered systems and the EGM96 geoid model."
    DEPENDS libproj25 proj-data unzip)
set(qt_headers qtbase5-dev)
if("${KELSTD_QT_MAJOR}" STREQUAL "6")
    set(qt_headers qt6-base-dev)
endif()
kelstd_package(development libkelstd-dev libdevel
"coordinate systems for GNSS surveying - development files
${about}
.
This package has the headers and what CMake's find_package(KelStd) needs."
    COMPONENTS library DEPENDS ${qt_headers})
kelstd_package(program kelstd science
"coordinate systems for GNSS surveying - program
${about}
.
This package has the program kelstd: it converts lists of positions, vector
files and what receivers say, finds and imports coordinate systems, and fits
building sites. Completion for bash, zsh and fish comes with it."
    COMPONENTS library)
# The module is one of the Python that it was built with. What Python compiles of it goes with it.
if(KELSTD_PYTHON)
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    math(EXPR next_minor "${Python3_VERSION_MINOR} + 1")
    set(python_versions
        "python3 (>= ${Python3_VERSION_MAJOR}.${Python3_VERSION_MINOR}~)"
        "python3 (<< ${Python3_VERSION_MAJOR}.${next_minor})")
endif()
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
    "${PROJECT_SOURCE_DIR}/packaging/debian/python/postinst"
    "${PROJECT_SOURCE_DIR}/packaging/debian/python/prerm")
kelstd_package(python python3-kelstd python
"coordinate systems for GNSS surveying - Python module
${about}
.
This package has the module kelstd, which takes and gives NumPy arrays."
    COMPONENTS library DEPENDS ${python_versions} python3-numpy)
kelstd_package(documents kelstd-doc doc
"coordinate systems for GNSS surveying - documentation
${about}
.
This package has the guides, the file formats and the reference of the library
as pages for a browser."
    ARCHITECTURE all)

include(CPack)
