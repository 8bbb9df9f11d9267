# What every target of this project is compiled with; nothing here reaches a consumer.
add_library(KelStdCompileOptions INTERFACE)
target_compile_features(KelStdCompileOptions INTERFACE cxx_std_17)
target_compile_definitions(KelStdCompileOptions INTERFACE QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(KelStdCompileOptions INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:KELSTD_SIZES_ARE_INT>>>:-Wconversion>
        # Qt's logging macros leave their variadic arguments out.
        $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
        $<$<BOOL:${KELSTD_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

# Tests take the sizes of Qt's containers for int, as they are in Qt 5; with Qt 6, -Wconversion would
# mention each. With Qt 5 it looks at the tests, too.
function(kelstd_sizes_are_int target)
    if(KELSTD_QT_MAJOR GREATER 5)
        set_target_properties(${target} PROPERTIES KELSTD_SIZES_ARE_INT ON)
    endif()
endfunction()

if(KELSTD_SANITIZE)
    target_compile_options(KelStdCompileOptions INTERFACE
        -fsanitize=${KELSTD_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(KelStdCompileOptions INTERFACE -fsanitize=${KELSTD_SANITIZE})
endif()

if(KELSTD_BUILD_FUZZERS)
    # Lets libFuzzer see which lines of the library an input reaches.
    target_compile_options(KelStdCompileOptions INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(KELSTD_COVERAGE)
    target_compile_options(KelStdCompileOptions INTERFACE --coverage)
    target_link_options(KelStdCompileOptions INTERFACE --coverage)
endif()

# Most of a source's compilation is the toolkit's headers, and under a sanitizer all the more. The other
# builds show that each source includes what it needs.
option(KELSTD_PRECOMPILE "Compile Qt's headers once for each library; always with KELSTD_SANITIZE" OFF)
function(kelstd_precompile_headers target)
    if(KELSTD_SANITIZE OR KELSTD_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE
            <QtCore/QDataStream>
            <QtCore/QDir>
            <QtCore/QFile>
            <QtCore/QList>
            <QtCore/QMap>
            <QtCore/QObject>
            <QtCore/QString>
            <QtCore/QVariant>
            <algorithm>
            <cmath>
            <functional>
            <optional>)
    endif()
endfunction()
