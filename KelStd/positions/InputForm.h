#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
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

/// The height of positions whose lines have none: two numbers a line.
struct MissingHeight
{
    double metres = 0.0; ///< the height [m]
    bool isGiven =
        false;     ///< by the user, so that lines have none; else it is taken where one lacks
    QString above; ///< "the ellipsoid": what it is measured from, for the note
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
    /// Of `InputForm::missingHeight`; empty where nobody can set it.
    QString height = QStringLiteral("the height");
};

/// What the three components of an input are, and in which unit its lengths are measured where
/// neither headings nor a line of units name one. Angles without a named unit are degrees.
struct KELSTD_EXPORT InputForm
{
    /// Positions of this frame, with lengths in this unit.
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

    /// Whether the user has said the unit of lengths.
    bool isLengthUnitSaid() const { return hasLengthUnit || lengthUnit != Unit_Meter; }

    /// Whether lines may have two components, without a height: not those of cartesian positions.
    bool mayLackHeight() const { return missingHeight && frame != Frame::Wgs84Cartesian; }

    /// Whether the user has said that the lines have no heights.
    bool lacksHeight() const { return mayLackHeight() && missingHeight->isGiven; }

    Frame frame;           ///< of the positions, or of the plane that the site belongs to
    bool isAtSite = false; ///< whether northing, easting and height are those of the site
    InputHeight height;    ///< what the heights of geographic positions are above
    EUnit lengthUnit;      ///< of every length of the input, one that `lengthUnits` has
    std::optional<PlaneUnit> planeUnit; ///< of northing and easting, where it is another one
    bool hasLengthUnit = false;         ///< whether the user has chosen the unit, the metre even
    /// Whether heights of the plane are taken as ellipsoidal: a note says so of those that are
    /// called otherwise.
    bool isPlaneHeightEllipsoidal = false;
    std::optional<MissingHeight> missingHeight; ///< nothing: a line without a height is refused
    /// Which way longitudes and latitudes of `Frame::LocalGeographic` count: plain numbers do, and
    /// letters are the side of the earth.
    EEllipsoidDirection localAxes = EllipsoidDirection_ENU;
    InputWords words; ///< what messages call the things that a user can choose
};

} // namespace KelStd::positions
