#pragma once

#include "ArrayConversion.h"
#include "ReasonTexts.h"

#include <array>
#include <atomic>
#include <optional>

namespace KelStd::python {

inline constexpr std::size_t pointsTogether = 256; ///< whose locations stay near the processor

/// What one thread of a conversion works with.
struct ArrayWorker
{
    explicit ArrayWorker(const UsedSystem &system);

    calibration::SiteBuilder builder;
    std::optional<AreaCheck> area;
    std::vector<Pos> positions = std::vector<Pos>(pointsTogether);
    std::vector<LocationBuilder::Outcome> outcomes =
        std::vector<LocationBuilder::Outcome>(pointsTogether);
    bool expectsFailures = false; ///< some of the last piece failed
};

/// One call: what is read and written, piece by piece, each by one thread. Without the
/// interpreter's lock.
struct ArrayRun
{
    LocationBuilder::Frame frame = LocationBuilder::Frame::Wgs84Geographic;
    bool isFromSite = false;
    bool wantsSeparations = false;
    bool isSimple = false;          ///< of a location that was made no more is to be said
    bool hasHeightsOfGeoid = false; ///< a geoid model is named
    const calibration::SiteExtent *extent = nullptr; ///< of the site
    std::array<ReasonTexts::Component, 3> components;
    std::array<Column, 3> columns;
    std::size_t count = 0;
    Location *locations = nullptr;
    Pos *atSite = nullptr;
    double *separations = nullptr;
    unsigned char *status = nullptr;
    ReasonTexts reasons;
    std::atomic<std::size_t> next{0};
    std::atomic<bool> isStopped{false};

    void takePiece(std::size_t begin, std::size_t size, ArrayWorker &worker);

private:
    bool readPiece(std::size_t begin, std::size_t size, ArrayWorker &worker);
    bool areAllMade(std::size_t begin, std::size_t size, ArrayWorker &worker);
    void markOutside(std::size_t begin, std::size_t size, const ArrayWorker &worker);
    void fail(std::size_t at, const QString &reason);
    void takeLocations(std::size_t begin, std::size_t size, ArrayWorker &worker);
    void takeSeparations(std::size_t begin, std::size_t size, ArrayWorker &worker);
};

} // namespace KelStd::python
