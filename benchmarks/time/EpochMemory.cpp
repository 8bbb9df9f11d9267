// Takes a million epochs from UTC to week and seconds and back and says by how much the process has
// grown; fails when it grows, or when an epoch comes back as another.

#include "support/ResidentMemory.h"

#include <KelStd/time/TimeGpsW.h>

#include <QtCore/QtGlobal>

#include <cstdio>

namespace {

using KelStd::TimeGpsW;
using KelStd::TimeUtc;

/// From 1980-01-06, some 63 minutes apart: to the year 2099.
void convert(int epochs)
{
    for (int i = 0; i < epochs; ++i) {
        const TimeUtc utc(TimeGpsW::g_gpsStartTimTick + i * 3'787'000LL);
        if (utc.toGpsW().toUtc() != utc)
            qFatal("%s comes back as another epoch", qPrintable(utc.toString()));
    }
}

} // namespace

int main()
{
    constexpr int warmUp = 10'000;
    constexpr int epochs = 1'000'000;
    constexpr long allowedKiB = 128; // an eighth of a byte an epoch

    convert(warmUp);
    const long before = KelStd::bench::residentKiB();
    convert(epochs);
    const long growth = KelStd::bench::residentKiB() - before;
    std::printf("memory growth over %d epochs there and back: %ld KiB (allowed %ld)\n", epochs,
                growth, allowedKiB);
    return growth <= allowedKiB ? 0 : 1;
}
