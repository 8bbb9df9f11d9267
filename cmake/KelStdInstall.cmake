# The package: libraries, headers and what find_package(KelStd) needs. The program directory's own
# files are installed where they are made (KelStdProjArchive, cli).
#
# Components: library, development, program; those of python and documents where they are built.
install(TARGETS KelStd KelStdPlatform EXPORT KelStdTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT library
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")

get_target_property(public_headers KelStd KELSTD_PUBLIC_HEADERS)
foreach(header IN LISTS public_headers)
    get_filename_component(folder "${header}" DIRECTORY)
    install(FILES "KelStd/${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/KelStd/${folder}"
        COMPONENT development)
endforeach()

# Where the program directory is installed.
set(KELSTD_PROGRAM_DIRECTORY "${KELSTD_INSTALL_PROGRAM_DIR}")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KelStd")
set(KELSTD_STATIC_PACKAGE "")
set(KELSTD_QT_LINKED "")
if(KELSTD_IS_STATIC)
    set(KELSTD_QT_LINKED ${KELSTD_QT_PRIVATE})
    string(CONCAT KELSTD_STATIC_PACKAGE
        "include(\"\${CMAKE_CURRENT_LIST_DIR}/KelStdProgramDirectory.cmake\")\n"
        "kelstd_tell_program_directory(KelStd::PlatformDefault \"\${KelStd_PROGRAM_DIRECTORY}\")")
    install(FILES cmake/KelStdProgramDirectory.cmake DESTINATION "${package_dir}"
        COMPONENT development)
endif()
install(EXPORT KelStdTargets NAMESPACE KelStd:: DESTINATION "${package_dir}"
    COMPONENT development)
configure_package_config_file(cmake/KelStdConfig.cmake.in
    "${PROJECT_BINARY_DIR}/KelStdConfig.cmake" INSTALL_DESTINATION "${package_dir}"
    PATH_VARS KELSTD_PROGRAM_DIRECTORY)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KelStdConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/KelStdConfig.cmake"
    "${PROJECT_BINARY_DIR}/KelStdConfigVersion.cmake"
    DESTINATION "${package_dir}" COMPONENT development)

include(KelStdPkgConfig)
# The documents' folder has our name, also as a part of a project with another.
set(documents "${CMAKE_INSTALL_DOCDIR}")
if(NOT PROJECT_IS_TOP_LEVEL)
    set(documents "${CMAKE_INSTALL_DATAROOTDIR}/doc/KelStd")
endif()
# Debian has the pages in a package of their own, and the other two in forms of its own.
if(NOT KELSTD_DEBIAN_BUILD)
    install(FILES README.md CHANGELOG.md LICENSE
        DESTINATION "${documents}" COMPONENT development)
    install(DIRECTORY docs/ DESTINATION "${documents}/docs" COMPONENT development
        FILES_MATCHING PATTERN "*.md" PATTERN site EXCLUDE)
endif()
