# What the scripts beside this have in common. They get
#   BUILD_TREE  the build tree of KelStd          WORK        the directory in which all of it happens
#   GENERATOR, COMPILER, FLAGS                    as that tree is built
#   SYSTEM      a document of a coordinate system
# KelStd is installed in WORK/prefix (Install.cmake) and gone when the last test is (Remove.cmake).
set(prefix "${WORK}/prefix")

function(complain)
    list(JOIN ARGN "\n" text)
    message(FATAL_ERROR "${text}")
endfunction()

# Runs a command, which has to succeed; `output` becomes what it prints.
function(step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        complain("${ARGN}" "ended with ${result}:" "${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# The same, and the output has to hold EXPECTED. Nothing but the program itself says where what it
# unpacks is, and its home is a directory of its own.
function(run_program)
    string(RANDOM LENGTH 12 name)
    set(home "${WORK}/home ${name}")
    file(MAKE_DIRECTORY "${home}")
    set(ENV{KELSTD_HOME_DIR} "${home}")
    unset(ENV{KELSTD_BIN_DIR})
    step(${ARGN})
    file(REMOVE_RECURSE "${home}")
    string(FIND "${output}" "${EXPECTED}" place)
    if(place EQUAL -1)
        complain("${ARGN}" "printed: ${output}" "and should have printed: ${EXPECTED}")
    endif()
endfunction()

# Configures SOURCE in `build`, with further arguments.
function(configure source build)
    step("${CMAKE_COMMAND}" -S "${source}" -B "${build}" -G "${GENERATOR}"
        "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${FLAGS}" ${ARGN})
    set(output "${output}" PARENT_SCOPE)
endfunction()
