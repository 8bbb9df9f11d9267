#include <KelStd/io/ValueText.h>

#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/RaisedException.h>

namespace KelStd::io {

namespace {

constexpr const char *noTimeInDocument = "No Time Value In Make Coordinate";
constexpr int numberDigits = 15; ///< significant digits of a number in a document

using Words = CoordStringHelper;

} // namespace

QString toValueText(EValueType type, const QVariant &value)
{
    switch (kindOf(type)) {
    case ValueKind::Boolean:
    case ValueKind::ProjFlag: return Words::ForCoordIO_Boolean_to_AsciiString(value.toBool());
    case ValueKind::Int32: return QString::number(value.toInt());
    case ValueKind::Int64:
    case ValueKind::TimeSpan: return QString::number(value.toLongLong());
    case ValueKind::Number:
    case ValueKind::Length:
    case ValueKind::Angle:
    case ValueKind::Longitude:
    case ValueKind::Latitude:
    case ValueKind::Pressure:
    case ValueKind::Temperature: return QString::number(value.toDouble(), 'g', numberDigits);
    case ValueKind::LocationZeroType:
        return Words::ForCoordIO_ELocationZeroType_to_AsciiString(
            static_cast<ELocationZeroType>(value.toInt()));
    case ValueKind::WhichHalfEarth:
        return Words::ForCoordIO_EWhichHalfEarth_to_AsciiString(
            static_cast<EWhichHalfEarth>(value.toInt()));
    case ValueKind::EllipsoidDirection:
        return Words::ForCoordIO_EEllipsoidDirection_to_AsciiString(
            static_cast<EEllipsoidDirection>(value.toInt()));
    case ValueKind::Text: return {};
    case ValueKind::Time: raiseByPointer(noTimeInDocument);
    case ValueKind::AsVariant: break;
    }
    return value.toString();
}

QVariant fromValueText(EValueType type, const QString &text)
{
    switch (kindOf(type)) {
    case ValueKind::Boolean:
    case ValueKind::ProjFlag: return Words::ForCoordIO_Boolean_from_AsciiString(text);
    case ValueKind::Int32: return text.toInt();
    case ValueKind::Int64:
    case ValueKind::TimeSpan: return text.toLongLong();
    case ValueKind::Number:
    case ValueKind::Length:
    case ValueKind::Angle:
    case ValueKind::Longitude:
    case ValueKind::Latitude:
    case ValueKind::Pressure:
    case ValueKind::Temperature: return text.toDouble();
    case ValueKind::LocationZeroType:
        return static_cast<int>(Words::ForCoordIO_ELocationZeroType_from_AsciiString(text));
    case ValueKind::WhichHalfEarth:
    case ValueKind::EllipsoidDirection:
        return static_cast<int>(Words::ForCoordIO_EWhichHalfEarth_from_AsciiString(text));
    case ValueKind::Time: raiseByPointer(noTimeInDocument);
    case ValueKind::Text:
    case ValueKind::AsVariant: break;
    }
    return text;
}

} // namespace KelStd::io
