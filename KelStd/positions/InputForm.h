#pragma once

#include <KelStd/positions/Columns.h>

namespace KelStd::positions {

/// What the height of the input is. No heading of a height above the ellipsoid is taken for one of
/// a height above the geoid, nor the other way round.
enum class InputHeight
{
    OfFrame,        ///< that of the frame
    AboveEllipsoid, ///< of geographic positions, without a choice of frames
    AboveGeoid      ///< the same
};

/// What the three components of an input are, and in which unit its lengths are measured. Angles
/// are degrees.
struct InputForm
{
    InputForm(Frame inputFrame, InputHeight inputHeight = InputHeight::OfFrame,
              EUnit inputUnit = Unit_Meter)
        : frame(inputFrame), height(inputHeight), lengthUnit(inputUnit)
    {}

    Frame frame;
    InputHeight height;
    EUnit lengthUnit;
};

} // namespace KelStd::positions
