#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/ControlPoint.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/positions/PlaneUnit.h>
#include <KelStd/positions/QuotedBreaks.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>
#include <string_view>

/// Lists of points that are known twice. The first line that is no remark is headings, in any
/// order; fields, numbers and angles are those of lists of positions (`PositionParser`), and what
/// can be read in two ways is refused. A length has the unit that its heading names, else metres.
namespace KelStd::positions {

class HeadedList;

/// Reads control points of a site: name, longitude, latitude, height, northing, easting and, where
/// they are there, elevation, use, sigma_h, sigma_v. A point without an elevation has none.
class KELSTD_EXPORT ControlListReader
{
public:
    /// `planeUnit`: of northings and eastings whose headings name no unit; nothing for metres.
    explicit ControlListReader(const std::optional<PlaneUnit> &planeUnit = {});
    ~ControlListReader();
    ControlListReader(const ControlListReader &) = delete;
    ControlListReader &operator=(const ControlListReader &) = delete;

    /// Takes the next line, without its end, as `PositionParser::parse` does. False with the
    /// `mistake` where it is refused; other lines may still be read, to tell of all mistakes at
    /// once.
    bool read(std::string_view line, QString &mistake);

    /// False while no line was headings: then nothing can be read.
    bool hasHeadings() const;

    /// How the lines are separated, as far as the headings have shown it.
    ListShape shape() const;

    /// Whether a line below the headings was read: all others are separated as it is.
    bool hasRows() const { return !m_points.isEmpty(); }

    /// The points that were read, in their order.
    const ControlPoints &points() const { return m_points; }

    /// The headings of columns that are not read.
    QStringList notRead() const;

    /// Whether northings or eastings are in the unit of the plane, as no heading says another one.
    bool usesPlaneUnit() const;

private:
    QString readRow(ControlPoint &point) const;

    std::unique_ptr<HeadedList> m_list;
    std::optional<PlaneUnit> m_planeUnit;
    ControlPoints m_points;
};

/// A point in a list of pairs of positions.
struct PositionPair
{
    QString name; ///< of the point
    Pos local;    ///< longitude, latitude [deg], height [m], or X, Y, Z [m]
    Pos wgs84;    ///< longitude, latitude [deg], height [m], or X, Y, Z [m]
};

/// Reads pairs of positions: name and, of each side, either local_x, local_y, local_z or
/// local_longitude, local_latitude, local_height; and so with wgs84.
class KELSTD_EXPORT PairListReader
{
public:
    PairListReader();
    ~PairListReader();
    PairListReader(const PairListReader &) = delete;
    PairListReader &operator=(const PairListReader &) = delete;

    /// As `ControlListReader::read`.
    bool read(std::string_view line, QString &mistake);

    /// As `ControlListReader::hasHeadings`.
    bool hasHeadings() const;
    /// As `ControlListReader::shape`.
    ListShape shape() const;
    /// As `ControlListReader::hasRows`.
    bool hasRows() const { return !m_pairs.isEmpty(); }
    /// The pairs that were read, in their order.
    const QVector<PositionPair> &pairs() const { return m_pairs; }

    /// Whether positions of the side are longitudes, latitudes and heights.
    bool isLocalGeographic() const;
    /// The same of the WGS84 side.
    bool isWgs84Geographic() const;

    /// As `ControlListReader::notRead`.
    QStringList notRead() const;

private:
    std::unique_ptr<HeadedList> m_list;
    QVector<PositionPair> m_pairs;
};

} // namespace KelStd::positions
