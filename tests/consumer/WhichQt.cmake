# KELSTD_QT, and what it becomes when it is empty. Stand-ins take the place of Qt's packages.
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

set(work "${WORK}/which qt")
file(REMOVE_RECURSE "${work}")
foreach(version 5.15.8 5.12.0 6.4.2 6.4.3 6.2.0)
    string(SUBSTRING "${version}" 0 1 major)
    set(parts "Core Xml")
    if(version STREQUAL "6.4.2")
        string(APPEND parts " Core5Compat")
    endif()
    set(package "${work}/qt-${version}/lib/cmake/Qt${major}")
    file(WRITE "${package}/Qt${major}Config.cmake"
        "foreach(part ${parts})\n"
        "    set(Qt${major}\${part}_FOUND TRUE)\n"
        "    if(NOT TARGET Qt${major}::\${part})\n"
        "        add_library(Qt${major}::\${part} INTERFACE IMPORTED)\n"
        "    endif()\n"
        "endforeach()\n")
    file(WRITE "${package}/Qt${major}ConfigVersion.cmake"
        "set(PACKAGE_VERSION ${version})\n"
        "if(NOT PACKAGE_FIND_VERSION VERSION_GREATER PACKAGE_VERSION)\n"
        "    set(PACKAGE_VERSION_COMPATIBLE TRUE)\n"
        "endif()\n")
endforeach()

# `found`: the versions that are installed; `expected`: what the output holds.
function(expect found options expected)
    list(TRANSFORM found PREPEND "${work}/qt-")
    string(RANDOM LENGTH 8 name)
    execute_process(COMMAND "${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/which_qt"
            -B "${work}/${name}" -G "${GENERATOR}" "-DKELSTD_FOLDER=${SOURCE}" "-DCMAKE_PREFIX_PATH=${found}"
            ${options}
        OUTPUT_VARIABLE output ERROR_VARIABLE output)
    string(REGEX REPLACE "[ \n]+" " " output "${output}")
    string(FIND "${output}" "${expected}" place)
    if(place EQUAL -1)
        complain("of ${found} with ${options}: ${output}" "and not: ${expected}")
    endif()
endfunction()

set(five "chose 5 at least 5.15 being 5.15.8")
set(six "chose 6 at least 6.4 being 6.4.2")
expect("5.15.8;6.4.2" "" "${five}")
expect("6.4.2;5.15.8" "" "${five}")
expect("6.4.2" "" "${six}")
expect("5.12.0;6.4.2" "" "${six}")
expect("5.15.8;6.4.2" "-DKELSTD_QT=6" "${six}")
expect("5.15.8;6.4.2" "-DKELSTD_QT=5" "${five}")
expect("5.15.8;6.4.2" "-DFOUND_BEFORE=6" "${six}")
expect("5.15.8;6.4.2" "-DFOUND_BEFORE=6;-DKELSTD_QT=5" "${five}")
expect("5.15.8" "-DKELSTD_QT=6" "provided by \"Qt6\"")
expect("6.2.0" "-DKELSTD_QT=6" "requested version \"6.4\"")
expect("6.4.3" "" "KelStd needs Core5Compat of Qt 6, too. Debian has it in qt6-5compat-dev.")
expect("6.2.0;5.12.0" "" "KelStd needs Core and Xml of Qt 5.15, or of Qt 6.4.")
expect("5.15.8" "-DKELSTD_QT=4" "KELSTD_QT is 5 or 6, not \"4\"")
