#pragma once

#include <KelStd/Export.h>
#include <KelStd/catalogue/CatalogueFailure.h>
#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::catalogue {

/// What an import may take, and what it is for.
struct ImportOptions
{
    /// Where the system is used: the datum shift is chosen for this place instead of the centre of
    /// the system's area.
    std::optional<GroundPoint> at;

    /// The datum shift to take, by its code ("EPSG:15934") or its number in
    /// `Catalogue::datumShifts`; empty for the best one.
    QString shift;

    /// Consents to no datum shift where there is none: the local ellipsoid's cartesian coordinates
    /// are taken as those of WGS 84.
    bool takeAsWgs84 = false;

    /// Stores seven parameters fitted to PROJ's own result instead of the published ones, which
    /// EPSG applies linearly and the conversions of a `Coord` by the full rotation matrix.
    bool fit = false;
};

/// What was imported, and how far it can be trusted.
struct ImportReport
{
    QString source;  ///< as it was given, or what it was when it was a long text ("WKT 1")
    QString name;    ///< of the system
    QString code;    ///< "EPSG:28992"; empty where none was identified
    SystemArea area; ///< where it is meant to be used

    /// The datum shift that the system has.
    struct Shift
    {
        ShiftKind kind = ShiftKind::None; ///< what it computes with
        QString code;                     ///< empty where the database has none for it
        QString name;                     ///< "Amersfoort to WGS 84 (4)"
        std::optional<double> accuracy;   ///< [m]
        double coverage = 0.0;            ///< share of the system's area, 0 to 1
        QStringList grids;                ///< the files that it needs

        /// What a grid leads to from the local frame, which WGS 84 positions are taken as: by its
        /// header "ETRS89", where that says it; else as `operationFrame`. Empty without a grid.
        QString frame;
        QString operationFrame; ///< by the database, which may say "WGS 84" of the same grid
    };
    Shift shift; ///< as it was taken over

    /// The largest difference [m] to PROJ's own result by the same operation.
    double difference = 0.0;

    /// How far PROJ's projection is from the published method within the area at most [m]; 0 where
    /// it is the same. A warning tells of it.
    double methodDifference = 0.0;

    std::vector<DatumShift> alternatives; ///< others that could have been taken
    std::vector<DatumShift> better; ///< more accurate ones that need a grid or cannot be carried

    QString geoidModel;  ///< what the heights refer to; empty when they are ellipsoidal
    QString missingGrid; ///< the file that a geoid model would need; empty when none misses

    QString axisUnit = QStringLiteral("metre"); ///< of northing and easting in the system itself
    double metresPerUnit = 1.0; ///< positions of a `Coord` are in metres all the same

    QString databaseVersion; ///< "EPSG v10.076" of PROJ's database

    QStringList warnings; ///< English sentences
};

/// What became of an import.
struct ImportedSystem
{
    std::optional<Coord> system; ///< nothing where the import is refused
    ImportReport report;         ///< of a refusal as much as is known
    CatalogueFailure refusal;    ///< its text says what to do
};

} // namespace KelStd::catalogue
