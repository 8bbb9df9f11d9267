# A project that has found the other Qt beside the installed package: what CMake says of it. Stand-ins
# take the place of the other Qt, which need not be installed.
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

set(build "${WORK}/two qts ${ORDER}")
execute_process(COMMAND "${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/two_qts" -B "${build}"
        -G "${GENERATOR}" "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_PREFIX_PATH=${prefix}"
        -DORDER=${ORDER} -DQT=${QT}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
string(REGEX REPLACE "[ \n]+" " " output "${output}") # CMake breaks lines
if(EXPECTED STREQUAL "")
    if(NOT result EQUAL 0)
        complain("refused: ${output}")
    endif()
elseif(result EQUAL 0)
    complain("taken, and should not have been")
elseif(NOT output MATCHES "${EXPECTED}")
    complain("said: ${output}" "and should have said: ${EXPECTED}")
endif()
