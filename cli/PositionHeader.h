#pragma once

#include <cli/Columns.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <vector>

namespace KelStd::cli {

/// In which field of a line the name and the three components of a frame stand.
struct FieldOrder
{
    int fields = 0;
    int name = -1; ///< -1: the lines have no names
    std::array<int, componentsPerFrame> components{};
    std::vector<int> carried;    ///< the fields that go into the output as they are
    QStringList carriedHeadings; ///< one for each
};

/// What the height of the input is. No heading of a height above the ellipsoid is taken for one of
/// a height above the geoid, nor the other way round.
enum class InputHeight
{
    OfFrame,        ///< that of the frame which --from names
    AboveEllipsoid, ///< of geographic positions, without a choice of frames
    AboveGeoid      ///< the same
};

/// The order of a line of `fields` fields where no header names them: the documented order of the
/// frame, after a point name when there is one field more.
FieldOrder plainOrder(int fields);

/// Reads the header `fields` for positions of `frame`. Columns that are not needed may be there; a
/// needed one that is missing or there twice is a `mistake`.
bool readHeader(const QStringList &fields, Frame frame, FieldOrder &order, QString &mistake,
                InputHeight height = InputHeight::OfFrame);

/// A heading as it is compared: "Longitude [deg]" is "longitude_deg".
QString normalisedHeading(const QString &heading);

/// The component of the frame that a heading names, 0 to 2; -1 when it names none of them.
int componentHeaded(const QString &heading, Frame frame);

/// "longitude, latitude, height": the frame's components in their order.
QString labelsOf(Frame frame);

/// Puts a unit in brackets that stands as a field of its own back to the word before it: a header
/// "longitude [deg]" that was split at blanks.
QStringList joinUnits(const QStringList &fields);

} // namespace KelStd::cli
