# A shared library finds the program directory beside itself. Static ones lie in the program, which
# may be anywhere: every program and shared library that links them gets a source that says where the
# directory is. What the program has beside itself, and what the environment names, goes before it.
function(kelstd_tell_program_directory target directory)
    set(source "${CMAKE_CURRENT_BINARY_DIR}/KelStdProgramDirectory.cpp")
    file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [[
extern "C" const char *kelstdProgramDirectory();

extern "C" const char *kelstdProgramDirectory()
{
    return R"kelstd(@directory@)kelstd";
}
]])
    set(type "$<TARGET_PROPERTY:TYPE>")
    set(is_linked "$<OR:$<STREQUAL:${type},EXECUTABLE>,$<STREQUAL:${type},SHARED_LIBRARY>,$<STREQUAL:${type},MODULE_LIBRARY>>")
    set_property(TARGET ${target} APPEND PROPERTY INTERFACE_SOURCES
        "$<BUILD_INTERFACE:$<${is_linked}:${source}>>")
endfunction()
