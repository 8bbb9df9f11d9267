#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/AreaOfUse.h>
#include <KelStd/coord/ControlPoint.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd {

/// Where a coordinate system came from, where it is meant to be used, the unit in which its plane
/// coordinates are customarily given, and the points that its site was fitted to. Nothing of it
/// changes what a `Coord` computes.
///
/// Everything is optional: what is not known is empty. A document keeps it beside its system
/// (`io::readOrigin`, `io::writeSystem`).
struct KELSTD_EXPORT SystemOrigin
{
    /// The operation of a database that the datum shift was taken from.
    struct KELSTD_EXPORT Operation
    {
        QString code;                    ///< with its authority, "EPSG:4833"; empty for none
        QString name;                    ///< "Amersfoort to WGS 84 (4)"
        std::optional<double> accuracyM; ///< as the database has it [m]

        /// Equality of all members.
        bool operator==(const Operation &other) const;
        /// The negation of `operator==`.
        bool operator!=(const Operation &other) const { return !(*this == other); }
    };

    /// A unit of northings and eastings.
    struct KELSTD_EXPORT PlaneUnit
    {
        QString name;        ///< "US survey foot"
        double metres = 1.0; ///< what one of it measures [m]

        /// Equality of all members.
        bool operator==(const PlaneUnit &other) const;
        /// The negation of `operator==`.
        bool operator!=(const PlaneUnit &other) const { return !(*this == other); }
    };

    QString authority;                  ///< "EPSG"
    QString code;                       ///< within the authority, "28992"
    QString databaseVersion;            ///< of the database that it was read from, "EPSG v10.076"
    std::optional<Operation> operation; ///< of the datum shift
    std::optional<AreaOfUse> area;      ///< where the system is meant to be used
    QString areaName;                   ///< the area in words
    QStringList countries;              ///< names of countries in it, for those who look for them
    std::optional<PlaneUnit> planeUnit; ///< nothing for metres
    ControlPoints control;              ///< that the system's site was fitted to; empty without one

    /// Whether nothing is known.
    bool isEmpty() const;

    /// "EPSG:28992"; empty without an authority or a code.
    QString fullCode() const;

    /// Equality of all members.
    bool operator==(const SystemOrigin &other) const;
    /// The negation of `operator==`.
    bool operator!=(const SystemOrigin &other) const { return !(*this == other); }
};

} // namespace KelStd
