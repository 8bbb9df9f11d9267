// The array call of a builder for a Python process to compare its own with: array_call.py beside
// this loads it, so that both run on one loaded library, in turn.

#include <KelStd/coord/Coord.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/location/LocationBuilder.h>

#include <cstddef>
#include <ctime>
#include <memory>
#include <vector>

#if defined(__GNUC__)
#    define ARRAY_CALL_EXPORT __attribute__((visibility("default")))
#else
#    define ARRAY_CALL_EXPORT
#endif

namespace {

using namespace KelStd;

struct Call
{
    std::unique_ptr<LocationBuilder> builder;
    std::vector<Pos> positions;
    std::vector<Location> locations;
    std::vector<LocationBuilder::Outcome> outcomes;
};

Call &call()
{
    static Call instance;
    return instance;
}

double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

} // namespace

/// Takes the system and the positions: longitude, latitude [deg], height [m]. False where the
/// document cannot be read.
extern "C" ARRAY_CALL_EXPORT bool prepare(const char *document, const double *longitude,
                                          const double *latitude, const double *height,
                                          std::size_t count)
{
    Coord coord;
    if (!Coord_IO::xml_read(QString::fromUtf8(document), coord, nullptr))
        return false;
    call().builder = std::make_unique<LocationBuilder>(coord);
    call().builder->requireOneToOne();
    call().positions.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        call().positions[i].setLongLatH(longitude[i], latitude[i], height[i]);
    call().locations.assign(count, Location());
    call().outcomes.resize(count);
    return true;
}

/// Makes all locations, with what became of each; the processor time that it took [s], or a
/// negative number where some were not made.
extern "C" ARRAY_CALL_EXPORT double run()
{
    Call &c = call();
    const double start = processorTime();
    const std::size_t made =
        c.builder->make(LocationBuilder::Frame::Wgs84Geographic, c.positions.data(),
                        c.positions.size(), c.locations.data(), c.outcomes.data());
    const double taken = processorTime() - start;
    return made == c.positions.size() ? taken : -1.0;
}

/// Twelve numbers of each location, in memory that stays until the next `prepare`.
extern "C" ARRAY_CALL_EXPORT const double *locations()
{
    return reinterpret_cast<const double *>(call().locations.data());
}
