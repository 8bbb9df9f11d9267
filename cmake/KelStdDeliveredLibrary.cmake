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

function(kelstd_deliver_utm_zone utm_zone utm_letter utm_false_northing epsg_of_zone_0)
    math(EXPR utm_central_meridian "6 * ${utm_zone} - 183")
    math(EXPR utm_epsg "${epsg_of_zone_0} + ${utm_zone}")
    configure_file("${delivered_source}/utm_zone.xml.in"
        "${delivered_library}/standard/WGS_84_UTM_zone_${utm_zone}${utm_letter}.xml" @ONLY)
endfunction()
foreach(zone RANGE 1 60)
    kelstd_deliver_utm_zone(${zone} N 0 32600)
    kelstd_deliver_utm_zone(${zone} S 10000000 32700)
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

install(DIRECTORY "${delivered_library}" DESTINATION "${CMAKE_INSTALL_BINDIR}")
