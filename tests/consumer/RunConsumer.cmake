# Configures, builds and runs a project against an install tree made from a build tree:
#   cmake -D BUILD_TREE=... -D SOURCE=... -D PROGRAM=... -D KIND=quickstart|host -D SYSTEM=...
#         -D EXPECTED=... -D FLAGS=... -D GENERATOR=... -D COMPILER=... -P RunConsumer.cmake
# Everything happens in a temporary directory, which is gone afterwards.

string(RANDOM LENGTH 12 suffix)
set(temporary "$ENV{TMPDIR}")
if(NOT temporary)
    set(temporary "/tmp")
endif()
set(work "${temporary}/kelstd consumer ${suffix}") # blanks in paths must not matter
set(prefix "${work}/prefix")
file(MAKE_DIRECTORY "${work}/home")

function(step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        file(REMOVE_RECURSE "${work}")
        message(FATAL_ERROR "${ARGN}\nended with ${result}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

step("${CMAKE_COMMAND}" --install "${BUILD_TREE}" --prefix "${prefix}")
# The delivered library is installed, all of it.
file(GLOB_RECURSE delivered RELATIVE "${BUILD_TREE}/bin/library" "${BUILD_TREE}/bin/library/*")
file(GLOB_RECURSE installed RELATIVE "${prefix}/bin/library" "${prefix}/bin/library/*")
list(LENGTH installed installed_count)
if(NOT installed STREQUAL delivered OR installed_count LESS 130)
    file(REMOVE_RECURSE "${work}")
    message(FATAL_ERROR "installed: ${installed}\nand not: ${delivered}")
endif()
step("${CMAKE_COMMAND}" -S "${SOURCE}" -B "${work}/build" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_PREFIX_PATH=${prefix}" -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS=${FLAGS}")
step("${CMAKE_COMMAND}" --build "${work}/build")

# Nothing points into the build tree any more: the program finds what the package installed.
set(ENV{KELSTD_HOME_DIR} "${work}/home")
unset(ENV{KELSTD_BIN_DIR})
if(KIND STREQUAL "host")
    step("${work}/build/${PROGRAM}" "${work}/home" "${prefix}/bin" "${SYSTEM}")
else()
    step("${work}/build/${PROGRAM}" "${SYSTEM}")
endif()
file(REMOVE_RECURSE "${work}")
if(NOT output MATCHES "${EXPECTED}")
    message(FATAL_ERROR "unexpected output: ${output}")
endif()
