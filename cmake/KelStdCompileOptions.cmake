# What every target of this project is compiled with; nothing here reaches a consumer.
add_library(KelStdCompileOptions INTERFACE)
target_compile_features(KelStdCompileOptions INTERFACE cxx_std_17)
target_compile_definitions(KelStdCompileOptions INTERFACE QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(KelStdCompileOptions INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow
        # Qt's logging macros leave their variadic arguments out.
        $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
        $<$<BOOL:${KELSTD_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

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

# Under a sanitizer most of a source's compilation is the toolkit's headers. The other builds show that
# each source includes what it needs.
function(kelstd_precompile_when_sanitized target)
    if(KELSTD_SANITIZE)
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
