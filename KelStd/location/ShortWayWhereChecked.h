#pragma once

#include <KelStd/location/DefinitionsWay.h>
#include <KelStd/location/ShortWay.h>

#include <array>
#include <cstdint>

namespace KelStd {

/// The short way between the frames, where it gives what the definitions' way gives: to 1e-6 m and
/// 1e-11 degrees, in all frames and both directions.
///
/// The Earth is divided into cells of five degrees. Before a position is taken the short way, both
/// are compared at five places of its cell, at two heights, and where they differ at any, all
/// positions of the cell are taken the definitions' way: at the edges of a projection, say, where
/// its scale makes metres of micrometres. So are those above 4,000 m, where the definitions' way
/// loses accuracy, and those within half a degree of a pole, where a nanometre is some 1e-11
/// degrees of longitude.
class ShortWayWhereChecked
{
public:
    /// Both outlive this, and `prepared` is that of `definitionsWay`.
    ShortWayWhereChecked(DefinitionsWay &definitionsWay, proj::PreparedTransformations &prepared,
                         const ShortWayOperations &operations)
        : m_definitionsWay(definitionsWay), m_shortWay(prepared, operations)
    {}

    /// Whether both ways agree at nine places about one of the plane, each at two heights. False,
    /// too, where that is no place.
    bool holdsAbout(const Pos &plane);

    /// Has positions outside of these bounds [deg], which are those of cells, taken the
    /// definitions' way.
    void keepTo(double west, double south, double east, double north);

    /// Takes a step, as `ShortWay` does.
    template <FrameConversion conversion>
    bool convert(const Pos &from, Pos &to, ConversionFailure *failure)
    {
        return m_shortWay.convert<conversion>(from, to, failure);
    }

    /// Forgets what was compared, for another PROJ.
    void forget() { m_cells.fill(Verdict::Unknown); }

    /// Whether both ways agree about a WGS84 position (longitude, latitude [deg], height [m]).
    bool leadsThrough(const stLongLatH &wgs84)
    {
        // False for what is no number, too.
        if (!(wgs84.longitude >= -maxLongitude && wgs84.longitude < maxLongitude
              && wgs84.latitude >= poleDistance - maxLatitude
              && wgs84.latitude <= maxLatitude - poleDistance && wgs84.height >= minHeight
              && wgs84.height <= maxHeight))
            return false;
        const auto column = static_cast<std::size_t>((wgs84.longitude + maxLongitude) / cellSize);
        const auto row = static_cast<std::size_t>((wgs84.latitude + maxLatitude) / cellSize);
        Verdict &verdict = m_cells[row * columns + column];
        if (verdict == Verdict::Unknown)
            verdict = holdsInCell(row, column) ? Verdict::Agree : Verdict::Differ;
        return verdict == Verdict::Agree;
    }

private:
    enum class Verdict : std::uint8_t
    {
        Unknown,
        Agree,
        Differ
    };

    static constexpr double maxLongitude = 180.0;
    static constexpr double maxLatitude = 90.0;
    static constexpr double poleDistance = 0.5;
    static constexpr double cellSize = 5.0; // [deg]
    static constexpr std::size_t columns = 72;
    static constexpr std::size_t rows = 36;

    /// Of the heights [m] where both ways are compared, and that are taken the short way.
    static constexpr double minHeight = -1000.0;
    static constexpr double maxHeight = 4000.0;

    static double westOf(std::size_t column)
    {
        return static_cast<double>(column) * cellSize - maxLongitude;
    }
    static double southOf(std::size_t row)
    {
        return static_cast<double>(row) * cellSize - maxLatitude;
    }

    bool holdsInCell(std::size_t row, std::size_t column);
    bool holdsAtHeights(double longitude, double latitude);
    bool holdsExactlyAt(const Pos &wgs84);

    DefinitionsWay &m_definitionsWay;
    ShortWay m_shortWay;
    std::array<Verdict, columns * rows> m_cells{};
};

} // namespace KelStd
