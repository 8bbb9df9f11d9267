#pragma once

#include <KelStd/text/UnitNames.h>

#include <QtCore/QString>
#include <QtCore/QVector>

/// Units that titles and remarks name in words: "Units: US survey feet", "all heights in ft".
namespace KelStd::positions {

/// What a text says to be in a unit.
enum class Said
{
    All,
    Lengths,
    Angles,
    Heights
};

struct SaidUnit
{
    Said said = Said::All;
    const NamedUnit *unit = nullptr;
    QString words; ///< as they stand
};

/// What a text says of units, in the order of its words. A name such as "Site 12 in Foot Lane" says
/// nothing.
QVector<SaidUnit> saidUnits(const QString &text);

/// A unit among other words: "feet, surveyed". Null when there is none.
const NamedUnit *unitWithin(const QString &text);

} // namespace KelStd::positions
