# The project of in_tree, by its WAY of having KelStd, with SHARED or static libraries. It builds its
# own target only, which has to bring what it needs with it, and nothing else.
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

set(build "${WORK}/in tree")
configure("${CMAKE_CURRENT_LIST_DIR}/in_tree" "${build}" -DWAY=${WAY} "-DKELSTD_FOLDER=${SOURCE}"
    # What FetchContent would clone is here already.
    "-DFETCHCONTENT_SOURCE_DIR_KELSTD=${SOURCE}" -DKELSTD_QT=${QT} -DBUILD_SHARED_LIBS=${SHARED}
    -DKELSTD_PRECOMPILE=ON)
step("${CMAKE_COMMAND}" --build "${build}" --target quickstart)
run_program("${build}/quickstart" "${SYSTEM}")

file(GLOB_RECURSE objects RELATIVE "${build}" "${build}/*.o")
list(FILTER objects EXCLUDE REGEX "^CMakeFiles/(quickstart|[0-9.]+)|/CMakeFiles/KelStd(Platform)?.dir/")
if(objects OR EXISTS "${build}/_deps/kelstd-build/bin/kelstd")
    complain("built besides: ${objects}")
endif()

if(INSTALLED)
    # The same libraries, installed and found as a package, in a folder that is moved.
    set(static_prefix "${WORK}/static")
    file(REMOVE_RECURSE "${static_prefix}" "${WORK}/moved")
    step("${CMAKE_COMMAND}" --install "${build}/_deps/kelstd-build" --prefix "${static_prefix}")
    file(RENAME "${static_prefix}" "${WORK}/moved")
    configure("${SOURCE}/examples/quickstart" "${WORK}/found static"
        "-DCMAKE_PREFIX_PATH=${WORK}/moved")
    step("${CMAKE_COMMAND}" --build "${WORK}/found static")
    run_program("${WORK}/found static/quickstart" "${SYSTEM}")
    step(ldd "${WORK}/found static/quickstart")
    if(output MATCHES "libKelStd")
        complain("linked to the shared library: ${output}")
    endif()

    # And by pkg-config, which knows no program directory but the one that the environment names.
    file(GLOB_RECURSE package_file "${WORK}/moved/kelstd.pc")
    get_filename_component(pc_directory "${package_file}" DIRECTORY)
    set(ENV{PKG_CONFIG_PATH} "${pc_directory}")
    step(pkg-config --static --cflags --libs kelstd)
    separate_arguments(flags UNIX_COMMAND "${output}")
    step("${COMPILER}" -std=c++17 "${SOURCE}/examples/quickstart/main.cpp"
        -o "${WORK}/found static/by pkg-config" ${flags})
    step(pkg-config --variable=program_directory kelstd)
    separate_arguments(program_directory UNIX_COMMAND "${output}")
    run_program("${CMAKE_COMMAND}" -E env "KELSTD_BIN_DIR=${program_directory}"
        "${WORK}/found static/by pkg-config" "${SYSTEM}")
endif()
