#pragma once

#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// The entry of a fuzz target, by the name that libFuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace KelStd::fuzz {

/// Ends the process with `claim` unless it `holds`: libFuzzer and the replay both take that for a
/// finding.
inline void require(bool holds, const char *claim)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", claim);
    std::abort();
}

/// Qt's warnings about damaged data are expected, and would be most of a run's time.
inline void silenceQt()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

} // namespace KelStd::fuzz
