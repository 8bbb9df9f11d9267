# kelstd.pc for builds by pkg-config, and kelstd-core.pc for a host with a platform of its own, which
# leaves the default one out. The paths in them begin at the files themselves.
set(pc_dir "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pc_to_prefix "${pc_dir}" "${CMAKE_INSTALL_PREFIX}")
file(RELATIVE_PATH pc_to_libdir "${pc_dir}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH pc_to_includedir "${pc_dir}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
GNUInstallDirs_get_absolute_install_dir(program_dir KELSTD_PROGRAM_DIRECTORY BINDIR)
file(RELATIVE_PATH pc_to_program_directory "${pc_dir}" "${program_dir}")
foreach(path pc_to_prefix pc_to_libdir pc_to_includedir pc_to_program_directory)
    string(REGEX REPLACE "/$" "" ${path} "${${path}}")
endforeach()

# Debian's Qt wants position-independent code of everybody, and its CMake package sees to it.
set(pc_flags "-fPIC")
set(pc_private_libraries "")
set(pc_private_packages "")
if(KELSTD_IS_STATIC)
    list(TRANSFORM KELSTD_QT_PRIVATE REPLACE "(.+)"
        "Qt${KELSTD_QT_MAJOR}\\1 >= ${KELSTD_QT_MINIMUM}" OUTPUT_VARIABLE pc_private_packages)
    list(JOIN pc_private_packages " " pc_private_packages)
    if(WIN32)
        string(APPEND pc_flags " -DKELSTD_STATIC")
    endif()
    list(JOIN CMAKE_DL_LIBS " -l" pc_private_libraries)
    if(pc_private_libraries)
        string(PREPEND pc_private_libraries "-l")
    endif()
endif()

function(kelstd_write_pc name libraries remark)
    set(pc_name "${name}")
    set(pc_libraries "${libraries}")
    set(pc_remark "${remark}")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/kelstd.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endfunction()
# The library leaves symbols open that the platform brings: it stands before it.
kelstd_write_pc(kelstd "-lKelStd -lKelStdPlatform" "")
kelstd_write_pc(kelstd-core "-lKelStd" ", for a host that brings its own platform")
