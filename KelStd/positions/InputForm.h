#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PlaneUnit.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::positions {

/// What the height of the input is. No heading of a height above the ellipsoid is taken for one of
/// a height above the geoid, nor the other way round.
enum class InputHeight
{
    OfFrame,        ///< that of the frame
    AboveEllipsoid, ///< of geographic positions, where the user does not choose the frame
    AboveGeoid      ///< of geographic positions, where the user does not choose the frame
};

/// What messages call the settings that remove a mistake, so that they name what the user of a
/// program knows: its options, or the parts of its window. Each stands alone or before a value, as
/// in "skipping 3 passes over the first 3 lines".
struct InputWords
{
    QString columns = QStringLiteral("a choice of columns"); ///< of a `ColumnChoice`
    QString skip = QStringLiteral("skipping");       ///< of `PositionParser::setSkippedLines`
    QString frame = QStringLiteral("the frame");     ///< of `InputForm::frame`
    QString lengthUnit = QStringLiteral("the unit"); ///< of `InputForm::lengthUnit`
};

/// What the three components of an input are, and in which unit its lengths are measured. Angles
/// are degrees.
struct KELSTD_EXPORT InputForm
{
    InputForm(Frame inputFrame, InputHeight inputHeight = InputHeight::OfFrame,
              EUnit inputUnit = Unit_Meter)
        : frame(inputFrame), height(inputHeight), lengthUnit(inputUnit)
    {}

    /// Northing, easting and height at the site of a system, which are read as those of the plane.
    static InputForm atSite(EUnit inputUnit = Unit_Meter);

    /// "local-neh": what the three components together are called.
    QString frameName() const;

    /// The unit in which a component is read, 0 to 2: "deg", "m", "us-ft".
    QString unitText(int component) const;

    /// What one of that unit measures [m]; 1 for an angle.
    double metresPerUnit(int component) const;

    Frame frame;
    bool isAtSite = false;
    InputHeight height;
    EUnit lengthUnit; ///< of every length of the input, one that `lengthUnits` has
    std::optional<PlaneUnit> planeUnit; ///< of northing and easting, where it is another one
    InputWords words;
};

} // namespace KelStd::positions
