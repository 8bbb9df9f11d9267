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

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KelStd")
install(EXPORT KelStdTargets NAMESPACE KelStd:: DESTINATION "${package_dir}"
    COMPONENT development)
configure_package_config_file(cmake/KelStdConfig.cmake.in
    "${PROJECT_BINARY_DIR}/KelStdConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KelStdConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/KelStdConfig.cmake"
    "${PROJECT_BINARY_DIR}/KelStdConfigVersion.cmake"
    DESTINATION "${package_dir}" COMPONENT development)
