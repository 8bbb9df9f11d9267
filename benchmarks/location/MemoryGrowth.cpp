// Converts over and over and says by how much the process has grown; fails when it grows on.

#include "support/Environment.h"
#include "support/ResidentMemory.h"

#include <cstdio>

namespace {

using namespace KelStd;
using bench::residentKiB;

void convert(int times)
{
    Location location;
    for (int i = 0; i < times; ++i) {
        const Pos start = Pos::fromLongLatH(3.0 + i * 1e-6, 52.0, 45.0);
        if (!Coord::MakeLocation_byWGS84LatLongH(start, location, nullptr,
                                                 &bench::benchmarkSystem())
            || !Coord::MakeLocation_byLocalNEH(location.localNEH, location, nullptr,
                                               &bench::benchmarkSystem()))
            qFatal("the position cannot be converted");
    }
}

} // namespace

int main(int argc, char **argv)
{
    const KelStd::bench::Environment environment(argc, argv);
    constexpr int warmUp = 2'000;
    constexpr int runs = 10'000;
    constexpr long allowedKiB =
        1'024; // 50 bytes a conversion: less than the smallest object it makes

    convert(warmUp);
    const long before = residentKiB();
    convert(runs);
    const long growth = residentKiB() - before;
    std::printf("memory growth over %d locations there and back: %ld KiB (allowed %ld)\n", runs,
                growth, allowedKiB);
    return growth <= allowedKiB ? 0 : 1;
}
