add_subdirectory("${KELSTD_FOLDER}" "${KELSTD_BINARY_FOLDER}")
