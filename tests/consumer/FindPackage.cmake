# A project that finds the installed package: SOURCE, its PROGRAM, and its arguments by KIND.
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

set(build "${WORK}/${KIND}")
configure("${SOURCE}" "${build}" "-DCMAKE_PREFIX_PATH=${prefix}" -DCMAKE_BUILD_TYPE=Debug)
step("${CMAKE_COMMAND}" --build "${build}")
if(KIND STREQUAL "host")
    file(MAKE_DIRECTORY "${WORK}/home of the host")
    run_program("${build}/${PROGRAM}" "${WORK}/home of the host" "${prefix}/bin" "${SYSTEM}")
else()
    run_program("${build}/${PROGRAM}" "${SYSTEM}")
endif()
