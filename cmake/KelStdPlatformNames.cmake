# The one place that changes on another platform: the file name of the PROJ 9.1 library, and the
# program that unpacks the archive it is delivered in.
if(WIN32)
    set(KELSTD_PROJ_LIBRARY_NAME "proj_9_1.dll")
    set(KELSTD_UNPACKER_NAME "unzip.exe")
elseif(APPLE)
    set(KELSTD_PROJ_LIBRARY_NAME "libproj.25.dylib")
    set(KELSTD_UNPACKER_NAME "unzip")
else()
    set(KELSTD_PROJ_LIBRARY_NAME "libproj.so.25")
    set(KELSTD_UNPACKER_NAME "unzip")
endif()
