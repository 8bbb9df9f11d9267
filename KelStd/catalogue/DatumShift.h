#pragma once

#include <KelStd/Export.h>
#include <KelStd/catalogue/FoundSystem.h>
#include <KelStd/catalogue/SystemArea.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace KelStd::catalogue {

/// What a datum shift computes with.
enum class ShiftKind
{
    None,  ///< cartesian coordinates are kept
    Three, ///< three translations
    Seven, ///< translations, rotations, scale
    Grid,  ///< by grid files
    Other  ///< one that a `Coord` cannot carry
};

/// "none", "three", "seven", "grid", "other".
KELSTD_EXPORT QString shiftWord(ShiftKind kind);

/// A datum shift between a system and WGS 84.
struct DatumShift
{
    int number = 0;                    ///< from 1, in the order of preference
    QString code;                      ///< "EPSG:15934"; empty for one that PROJ puts together
    QString name;                      ///< "Amersfoort to WGS 84 (4)"
    ShiftKind kind = ShiftKind::Other; ///< what it computes with
    std::optional<double> accuracy;    ///< [m], where it is known
    SystemArea area;                   ///< where it holds
    double coverage = 0.0;             ///< share of the system's area that `area` covers, 0 to 1
    bool containsPoint = true;         ///< whether `area` contains the place that was asked for
    QStringList grids;                 ///< the files that it needs
    QStringList missingGrids;          ///< those of them that PROJ does not find
    bool isTimeDependent = false;      ///< whether it depends on the date of the position
    bool isAvailable = false; ///< `importSystem` can take it: a `Coord` carries it, no grid misses
};

/// The datum shifts that a system can have, best first.
struct DatumShifts
{
    QString source;     ///< as it was given
    FoundSystem system; ///< whose shifts they are
    GroundPoint at;     ///< the place they are ordered for: the one given, else the area's centre
    std::vector<DatumShift> shifts; ///< best first
};

} // namespace KelStd::catalogue
