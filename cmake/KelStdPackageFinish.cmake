# Run by cpack behind the packages. dpkg itself makes new libraries known (packaging/debian/triggers);
# the scripts that cpack has written for it would do so a second time.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    get_filename_component(name "${package}" NAME)
    if(NOT name MATCHES "^libkelstd[0-9][^_]*_")
        continue()
    endif()
    set(tree "${package}.tree")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${tree}"
        COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")
    # The libraries of several architectures stand side by side.
    file(READ "${tree}/DEBIAN/control" control)
    string(REPLACE "\nVersion:" "\nMulti-Arch: same\nVersion:" control "${control}")
    file(WRITE "${tree}/DEBIAN/control" "${control}")
    execute_process(COMMAND dpkg-deb --root-owner-group --build "${tree}" "${package}"
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE_RECURSE "${tree}")
endforeach()
