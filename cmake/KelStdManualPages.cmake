# Writes the manual pages of the program and of each of its commands into DIRECTORY, by PROGRAM
# itself: cmake -DPROGRAM=... -DDIRECTORY=... [-DCOMPRESS=ON] -P
function(write_page file)
    execute_process(COMMAND "${PROGRAM}" ${ARGN} man
        OUTPUT_VARIABLE page RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${PROGRAM} ${ARGN} man: ${status}")
    endif()
    file(WRITE "${DIRECTORY}/${file}.1" "${page}")
endfunction()

execute_process(COMMAND "${PROGRAM}" help names OUTPUT_VARIABLE names RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR names STREQUAL "")
    message(FATAL_ERROR "${PROGRAM} help names: ${status}")
endif()
file(REMOVE_RECURSE "${DIRECTORY}")
string(REPLACE "\n" ";" names "${names}")
foreach(name IN LISTS names)
    if(name STREQUAL "")
        continue()
    endif()
    string(REPLACE " " "-" file "kelstd-${name}")
    string(REPLACE " " ";" words "${name}")
    write_page("${file}" help ${words})
endforeach()
# The last one: the build takes it for all.
write_page(kelstd help)

# Without names and times, so that the same pages are the same bytes.
if(COMPRESS)
    file(GLOB pages "${DIRECTORY}/*.1")
    execute_process(COMMAND gzip -9n ${pages} COMMAND_ERROR_IS_FATAL ANY)
endif()
