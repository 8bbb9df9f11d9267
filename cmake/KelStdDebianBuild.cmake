# A build for Debian packages differs from others in its layout and in its flags. It is configured by
# the preset "package", or by cpack where it is run in another build (KelStdPackageTree).
option(KELSTD_DEBIAN_BUILD "Lay the install out, and compile, as Debian's packages are" OFF)
if(NOT KELSTD_DEBIAN_BUILD)
    return()
endif()

# The folders of Debian's systems: lib/<architecture>.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    message(FATAL_ERROR "KELSTD_DEBIAN_BUILD needs CMAKE_INSTALL_PREFIX=/usr")
endif()
set(KELSTD_INSTALL_PROGRAM_DIR "${CMAKE_INSTALL_LIBDIR}/kelstd" CACHE STRING
    "Folder of the installed program directory" FORCE)
# The pages are those of a package of their own. No cache entry: the first time that a build is
# configured, GNUInstallDirs has set a variable that goes before it.
set(CMAKE_INSTALL_DOCDIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/kelstd-doc")
# The dynamic linker looks there by itself.
set(CMAKE_SKIP_INSTALL_RPATH ON)

# Hardening and reproducible paths as Debian has them; optimisation stays that of the build type.
function(kelstd_debian_flags result which)
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -E env DEB_BUILD_MAINT_OPTIONS=hardening=+bindnow
            "DEB_CXXFLAGS_MAINT_STRIP=-g -O2" dpkg-buildflags --get "${which}"
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(flags UNIX_COMMAND "${flags}")
    set(${result} ${flags} PARENT_SCOPE)
endfunction()
kelstd_debian_flags(compile_flags CXXFLAGS)
kelstd_debian_flags(preprocessor_flags CPPFLAGS)
kelstd_debian_flags(link_flags LDFLAGS)
add_compile_options(${compile_flags} ${preprocessor_flags})
add_link_options(${link_flags})
