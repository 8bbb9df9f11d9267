#pragma once

#include <cli/positions/Columns.h>

namespace KelStd::cli {

/// What the height of the input is. No heading of a height above the ellipsoid is taken for one of
/// a height above the geoid, nor the other way round.
enum class InputHeight
{
    OfFrame,        ///< that of the frame which --from names
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

/// A copy of the column that a component is read as, with the words of the height that is meant. It
/// is none of `columns`: ask those for the kind of its values.
Column inputColumn(const InputForm &form, int component);

/// The unit in which the component is read.
EUnit inputUnit(const InputForm &form, int component);

/// "a line of headings or --columns": how the user says in which order the fields stand.
QString waysToSayOrder(const InputForm &form);

} // namespace KelStd::cli
