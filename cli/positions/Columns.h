#pragma once

#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Location.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QString>

#include <array>
#include <cstddef>

/// What stands in which column, of the output and of the input. To add a column of output: one row
/// in Columns.cpp.
namespace KelStd::cli {

/// The four frames of a location, in the order in which they are printed.
enum class Frame
{
    Wgs84LLH,
    Wgs84XYZ,
    LocalLLH,
    LocalNEH
};

inline constexpr int componentsPerFrame = 3;
inline constexpr std::size_t frameCount = 4;
inline constexpr std::size_t columnCount = frameCount * componentsPerFrame;

/// How a component is measured.
struct Quantity
{
    const char *unit; ///< of an input, and in column names when no other one is asked for
    double limit;     ///< the largest magnitude that an input may have
};

/// Decimals of plain numbers, degrees and metres: 0.01 mm loses nothing that a survey can measure.
inline constexpr int csvAngleDecimals = 11;
inline constexpr int csvLengthDecimals = 5;

/// One of the twelve numbers of a location.
struct Column
{
    Frame frame;
    const char *label;   ///< what the component is called in its frame
    const char *csvName; ///< without the unit, unique among the columns
    const char
        *headerWords; ///< what an input's header may call it, blank-separated, the best first
    const Quantity *quantity;
    int integerWidth; ///< of a sign and the digits before the point, in metres or degrees, of every
                      ///< number on and near the earth
    double (Location::*value)() const;
};

/// The twelve, frame by frame; within a frame in the order in which the program reads and prints
/// its components.
const std::array<Column, columnCount> &columns();

/// The column of a component, 0 to 2, of a frame.
const Column &columnOf(Frame frame, int component);

/// The library's kind of the column's values.
EValueType valueTypeOf(const Column &column);

/// True for longitudes and latitudes.
bool isAngle(const Column &column);

/// "wgs84_longitude_deg", with the unit "deg"
QString csvNameOf(const Column &column, const QString &unit);

/// What the projected height is above: "geoid MODEL", or "ellipsoid" without a model.
QString heightReference(const QString &geoidModel);

/// A frame by its name on the command line.
struct FrameRow
{
    Frame frame;
    const char *option; ///< the value of --from
    const char *title;  ///< above its columns
    std::array<EValueType, componentsPerFrame> valueTypes;
    /// A position from its components in the order of its columns.
    Pos (*position)(double first, double second, double third);
    LocationBuilder::Frame builderFrame;
};

const std::array<FrameRow, frameCount> &frames();

const FrameRow &rowOf(Frame frame);

/// The row of that --from, or null.
const FrameRow *findFrame(const QString &option);

} // namespace KelStd::cli
