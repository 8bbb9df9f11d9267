#pragma once

#include <KelStd/Export.h>
#include <KelStd/catalogue/SystemArea.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::catalogue {

/// What a system of the database is.
enum class SystemKind
{
    Projected,  ///< northing and easting
    Compound,   ///< a horizontal and a vertical system
    Geographic, ///< two- or three-dimensional
    Geocentric, ///< X, Y, Z
    Vertical,   ///< heights
    Other       ///< none of these
};

/// "projected", "compound" and so on.
KELSTD_EXPORT QString kindWord(SystemKind kind);

/// A system of PROJ's database.
struct FoundSystem
{
    QString code;                        ///< "EPSG:28992"
    QString name;                        ///< "Amersfoort / RD New"
    SystemKind kind = SystemKind::Other; ///< what it is
    SystemArea area;                     ///< where it is meant to be used
    bool isDeprecated = false;           ///< whether the database advises against it
};

/// What is looked for. Every condition that is given has to be met.
struct SystemQuery
{
    /// Words in any order, each of which a system must have: in its name, its code, its area's
    /// description. A word may be the beginning of a longer one; accents and the case of letters do
    /// not matter, and digits stand apart from letters: "utm31" is "utm 31". A word of digits alone
    /// is a whole number. "EPSG:28992" is one code.
    QString words;
    std::optional<GroundPoint> at; ///< lies in the area of use
    std::optional<SystemArea> box; ///< has something in common with the area of use
    bool withDeprecated = false;   ///< whether systems are listed that the database advises against
};

} // namespace KelStd::catalogue
