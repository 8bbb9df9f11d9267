#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Location.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QString>

#include <array>
#include <cstddef>

/// What stands in which column, of the output and of the input. Everything here may be called on
/// any thread; references and pointers to rows are valid as long as the library is loaded.
namespace KelStd::positions {

/// The four frames of a location; their order is that in which they are printed.
using Frame = LocationBuilder::Frame;

/// Each frame has so many numbers.
inline constexpr int componentsPerFrame = 3;
/// A location has so many frames.
inline constexpr std::size_t frameCount = 4;
/// A location has so many numbers.
inline constexpr std::size_t columnCount = frameCount * componentsPerFrame;

/// Decimals of plain numbers, degrees and metres: 0.01 mm loses nothing that a survey can measure.
inline constexpr int csvAngleDecimals = 11;
/// The same of metres.
inline constexpr int csvLengthDecimals = 5;

/// One of the twelve numbers of a location.
struct Column
{
    Frame frame;          ///< to which it belongs
    int component;        ///< 0 to 2: its place in the frame
    EValueType valueType; ///< what its values are to the display configuration
    const char *label;    ///< what the component is called in its frame
    const char *csvName;  ///< without the unit, unique among the columns
    const char
        *headerWords; ///< what an input's header may call it, blank-separated, the best first
    const char *unit; ///< of an input, and in column names when no other one is asked for
    double limit;     ///< the largest magnitude that an input may have, in degrees or metres
    int integerWidth; ///< of a sign and the digits before the point, in metres or degrees, of every
                      ///< number on and near the earth
    double (Location::*value)() const; ///< reads it from a location
};

/// The twelve, frame by frame; within a frame in the order in which the program reads and prints
/// its components.
KELSTD_EXPORT const std::array<Column, columnCount> &columns();

/// The column of a component of a frame. `component` must be 0 to 2.
KELSTD_EXPORT const Column &columnOf(Frame frame, int component);

/// Northing, easting and height at the site of a system (`calibration::SiteTransform`), which stand
/// beside the frames: the columns of the projected frame by names of their own. Their values are
/// taken from the projected frame of a location that has the coordinates at the site there.
KELSTD_EXPORT const std::array<Column, componentsPerFrame> &siteColumns();

/// What these three are called among the frames, in options and messages.
inline constexpr const char *siteFrameName = "site-neh";

/// True for longitudes and latitudes.
KELSTD_EXPORT bool isAngle(const Column &column);

/// Whether longitude or latitude of the local geographic frame counts westwards or southwards in a
/// system of these axes; of other columns none does.
KELSTD_EXPORT bool countsBackwards(const Column &column, EEllipsoidDirection localAxes);

/// True for northing and easting.
KELSTD_EXPORT bool isPlane(const Column &column);

/// "wgs84_longitude_deg", with the unit "deg"
KELSTD_EXPORT QString csvNameOf(const Column &column, const QString &unit);

/// The column that says what the projected height of a line is above.
inline constexpr char heightReferenceName[] = "local_height_reference";

/// What the projected height is above: "geoid MODEL", or "ellipsoid" without a model.
KELSTD_EXPORT QString heightReference(const QString &geoidModel);

/// A frame by its name.
struct FrameRow
{
    Frame frame;        ///< the frame
    const char *option; ///< "wgs84-llh": its name in options and messages
    const char *title;  ///< above its columns
    /// A position from its components in the order of its columns.
    Pos (*position)(double first, double second, double third);
};

/// All frames, in the order in which they are printed.
KELSTD_EXPORT const std::array<FrameRow, frameCount> &frames();

/// The row of a frame.
KELSTD_EXPORT const FrameRow &rowOf(Frame frame);

/// The row of that name; null for another word.
KELSTD_EXPORT const FrameRow *findFrame(const QString &option);

} // namespace KelStd::positions
