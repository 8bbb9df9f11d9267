# Compares small libraries, made here, by scripts/abi.sh: SCRIPT, COMPILER, WORK.
function(complain)
    list(JOIN ARGN "\n" text)
    message(FATAL_ERROR "${text}")
endfunction()

# An installation in WORK/`name`: both libraries with these sources, the header, and the SONAME's number.
function(install name header source number)
    set(prefix "${WORK}/abi/${name}")
    file(REMOVE_RECURSE "${prefix}")
    file(WRITE "${prefix}/include/KelStd/Offer.h" "${header}")
    file(WRITE "${prefix}/Offer.cpp" "#include <KelStd/Offer.h>\n${source}")
    file(WRITE "${prefix}/Other.cpp" "int other() { return 0; }\n")
    foreach(library "libKelStd;Offer" "libKelStdPlatform;Other")
        list(GET library 0 file)
        list(GET library 1 of)
        execute_process(COMMAND "${COMPILER}" -g -shared -fPIC "-I${prefix}/include"
                "-Wl,-soname,${file}.so.${number}" -o "${prefix}/${file}.so" "${prefix}/${of}.cpp"
            RESULT_VARIABLE result ERROR_VARIABLE errors)
        if(NOT result EQUAL 0)
            complain("${errors}")
        endif()
    endforeach()
endfunction()

function(expect name status)
    execute_process(COMMAND "${SCRIPT}" --compare "${WORK}/abi/old" "${WORK}/abi/${name}"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL status)
        complain("${name}: ended with ${result}:" "${output}")
    endif()
    foreach(text IN LISTS ARGN)
        string(FIND "${output}" "${text}" place)
        if(place EQUAL -1)
            complain("${name}: printed: ${output}" "and should have printed: ${text}")
        endif()
    endforeach()
endfunction()

set(header "struct Place { double east; double north; };\nint length(const Place &);\nint width(const Place &);\n")
set(source "int length(const Place &p) { return p.east > 0; }\nint width(const Place &p) { return p.north > 0; }\n")
install(old "${header}" "${source}" 0)
install(same "${header}" "${source}" 0)
expect(same 0 "what libKelStd.so.0 offered is all there")

install(more "${header}int height();\n" "${source}int height() { return 1; }\n" 0)
expect(more 0 "what libKelStd.so.0 offered is all there" "1 Added")

string(REGEX REPLACE "int width[^\n]*\n" "" less_header "${header}")
string(REGEX REPLACE "int width[^\n]*\n" "" less_source "${source}")
install(less "${less_header}" "${less_source}" 0)
expect(less 1 "width(const Place&)" "what libKelStd.so.0 offered was removed or changed"
    "raise KELSTD_SOVERSION")

string(REPLACE "double east" "double up; double east" grown "${header}")
install(grown "${grown}" "${source}" 0)
expect(grown 1 "what libKelStd.so.0 offered was removed or changed")

# The number in the SONAME says so.
install(raised "${less_header}" "${less_source}" 1)
expect(raised 0 "libKelStd.so.0 becomes libKelStd.so.1")
