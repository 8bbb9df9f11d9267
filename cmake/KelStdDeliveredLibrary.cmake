# Lays out the delivered library of coordinate systems: bin/library, with the documents of
# data/library and the UTM zones of the world, which are made from one template.
set(delivered_source "${PROJECT_SOURCE_DIR}/data/library")
set(delivered_library "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/library")

file(GLOB delivered_documents RELATIVE "${delivered_source}" CONFIGURE_DEPENDS
    "${delivered_source}/*.xml" "${delivered_source}/*/*.xml")
list(APPEND delivered_documents SOURCES.md)
foreach(document IN LISTS delivered_documents)
    configure_file("${delivered_source}/${document}" "${delivered_library}/${document}" COPYONLY)
endforeach()

# The area of a zone in words; a line of the table begins with the zone.
set(utm_areas_file "${delivered_source}/utm_areas.txt")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${utm_areas_file}")
file(READ "${utm_areas_file}" utm_areas)

function(kelstd_deliver_utm_zone utm_zone utm_letter utm_false_northing epsg_of_zone_0 utm_south
         utm_north)
    math(EXPR utm_central_meridian "6 * ${utm_zone} - 183")
    math(EXPR utm_west "${utm_central_meridian} - 3")
    math(EXPR utm_east "${utm_central_meridian} + 3")
    if(NOT utm_areas MATCHES "\n${utm_zone}${utm_letter} ([^\n]+)\n")
        message(FATAL_ERROR "${utm_areas_file} has no zone ${utm_zone}${utm_letter}")
    endif()
    set(utm_area "${CMAKE_MATCH_1}")
    math(EXPR utm_epsg "${epsg_of_zone_0} + ${utm_zone}")
    configure_file("${delivered_source}/utm_zone.xml.in"
        "${delivered_library}/standard/WGS_84_UTM_zone_${utm_zone}${utm_letter}.xml" @ONLY)
endfunction()
foreach(zone RANGE 1 60)
    kelstd_deliver_utm_zone(${zone} N 0 32600 0 84)
    kelstd_deliver_utm_zone(${zone} S 10000000 32700 -80 0)
    list(APPEND delivered_documents "standard/WGS_84_UTM_zone_${zone}N.xml"
        "standard/WGS_84_UTM_zone_${zone}S.xml")
endforeach()

# What is no longer delivered does not linger in a build directory.
file(GLOB_RECURSE delivered_before RELATIVE "${delivered_library}" "${delivered_library}/*")
foreach(document IN LISTS delivered_before)
    if(NOT document IN_LIST delivered_documents)
        file(REMOVE "${delivered_library}/${document}")
    endif()
endforeach()

install(DIRECTORY "${delivered_library}" DESTINATION "${KELSTD_INSTALL_PROGRAM_DIR}"
    COMPONENT library)
