# Lays out what the library unpacks at run time: bin/proj/proj.zip, with the installed PROJ library
# and its resource files below a top folder "proj", and bin/geoid_model_list.
find_library(KELSTD_PROJ_LIBRARY NAMES "${KELSTD_PROJ_LIBRARY_NAME}" proj_9_1 REQUIRED
    DOC "The PROJ library file that goes into proj.zip")
find_path(KELSTD_PROJ_RESOURCES NAMES proj.db PATH_SUFFIXES share/proj proj REQUIRED
    DOC "The directory of PROJ's resource files")
find_file(KELSTD_EGM96_GRID NAMES egm96_15.gtx HINTS "${KELSTD_PROJ_RESOURCES}" REQUIRED
    DOC "The EGM96 geoid grid in GTX form")

set(archive_stage "${PROJECT_BINARY_DIR}/proj-archive")
set(archive_file "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/proj/proj.zip")
set(geoid_file "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/geoid_model_list/egm96_15.gtx")
file(REAL_PATH "${KELSTD_PROJ_LIBRARY}" proj_library_file)

add_custom_command(
    OUTPUT "${archive_file}"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${archive_stage}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${archive_stage}/proj"
            "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/proj"
    COMMAND ${CMAKE_COMMAND} -E copy "${proj_library_file}"
            "${archive_stage}/proj/${KELSTD_PROJ_LIBRARY_NAME}"
    COMMAND ${CMAKE_COMMAND} -E copy_directory "${KELSTD_PROJ_RESOURCES}"
            "${archive_stage}/proj/share"
    COMMAND ${CMAKE_COMMAND} -E copy_if_different "${KELSTD_EGM96_GRID}"
            "${archive_stage}/proj/share/egm96_15.gtx"
    # The archive's modes do not depend on whoever builds it.
    COMMAND ${CMAKE_COMMAND} -D "directory=${archive_stage}/proj"
            -P "${CMAKE_CURRENT_LIST_DIR}/KelStdArchiveModes.cmake"
    COMMAND ${CMAKE_COMMAND} -E chdir "${archive_stage}"
            ${CMAKE_COMMAND} -E tar cf "${archive_file}" --format=zip proj
    DEPENDS "${proj_library_file}" "${KELSTD_PROJ_RESOURCES}/proj.db" "${KELSTD_EGM96_GRID}"
            "${CMAKE_CURRENT_LIST_DIR}/KelStdArchiveModes.cmake"
    COMMENT "Packing PROJ and its resource files into proj.zip"
    VERBATIM)
add_custom_command(
    OUTPUT "${geoid_file}"
    COMMAND ${CMAKE_COMMAND} -E copy "${KELSTD_EGM96_GRID}" "${geoid_file}"
    DEPENDS "${KELSTD_EGM96_GRID}"
    VERBATIM)
add_custom_target(KelStdProgramDirectory ALL DEPENDS "${archive_file}" "${geoid_file}")
# Whoever builds a target of his own that links the library gets what it unpacks, too.
add_dependencies(KelStd KelStdProgramDirectory)

install(FILES "${archive_file}" DESTINATION "${KELSTD_INSTALL_PROGRAM_DIR}/proj"
    COMPONENT library)
install(FILES "${geoid_file}" DESTINATION "${KELSTD_INSTALL_PROGRAM_DIR}/geoid_model_list"
    COMPONENT library)
