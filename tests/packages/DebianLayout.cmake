# Where the pages of Debian's packages are installed by a build that is configured for the first time:
# SOURCE in WORK, with the Qt of version QT. It is not built.
file(REMOVE_RECURSE "${WORK}")
execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${SOURCE}" -B "${WORK}" -DCMAKE_INSTALL_PREFIX=/usr
        -DKELSTD_DEBIAN_BUILD=ON -DKELSTD_BUILD_DOCS=ON -DKELSTD_BUILD_TESTS=OFF -DKELSTD_QT=${QT}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE rules "${WORK}/cmake_install.cmake")
set(places "")
foreach(file IN LISTS rules)
    file(STRINGS "${file}" lines REGEX "DESTINATION .*/html")
    string(REGEX MATCHALL "share/doc/[^/\" ]*" found "${lines}")
    list(APPEND places ${found})
endforeach()
list(REMOVE_DUPLICATES places)
file(REMOVE_RECURSE "${WORK}")
if(NOT places STREQUAL "share/doc/kelstd-doc")
    message(FATAL_ERROR "the pages are installed in: ${places}")
endif()
