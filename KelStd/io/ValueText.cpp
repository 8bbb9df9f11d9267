#include <KelStd/io/ValueText.h>

#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>
#include <KelStd/text/RaisedException.h>

#include <cmath>

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

bool isBooleanWord(const QString &word)
{
    return word.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0
           || word.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0;
}

bool isReadAsNumber(const QString &text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        return false;
    if (value != 0.0)
        return true;
    // Other digits that read as zero are a number too small for a double.
    for (const QChar c : text) {
        if (c == QLatin1Char('e') || c == QLatin1Char('E'))
            break;
        if (c.isDigit() && c.digitValue() != 0)
            return false;
    }
    return true;
}

QVariant fromValueText(EValueType type, const QString &text, Taken *taken)
{
    bool isRead = true;
    const auto judge = [taken](bool isTaken, Taken otherwise) {
        if (taken != nullptr)
            *taken = isTaken ? Taken::AsItStands : otherwise;
    };
    judge(true, Taken::AsItStands);
    switch (kindOf(type)) {
    case ValueKind::Boolean:
    case ValueKind::ProjFlag:
        judge(taken == nullptr || isBooleanWord(text), Taken::AsAnotherWord);
        return Words::ForCoordIO_Boolean_from_AsciiString(text);
    case ValueKind::Int32: {
        const int value = text.toInt(&isRead);
        judge(isRead, Taken::AsAnotherNumber);
        return value;
    }
    case ValueKind::Int64:
    case ValueKind::TimeSpan: {
        const qlonglong value = text.toLongLong(&isRead);
        judge(isRead, Taken::AsAnotherNumber);
        return value;
    }
    case ValueKind::Number:
    case ValueKind::Length:
    case ValueKind::Angle:
    case ValueKind::Longitude:
    case ValueKind::Latitude:
    case ValueKind::Pressure:
    case ValueKind::Temperature:
        judge(taken == nullptr || isReadAsNumber(text), Taken::AsAnotherNumber);
        return text.toDouble();
    case ValueKind::LocationZeroType: {
        const int value =
            static_cast<int>(Words::ForCoordIO_ELocationZeroType_from_AsciiString(text));
        judge(taken == nullptr || toValueText(type, value) == text, Taken::AsAnotherWord);
        return value;
    }
    case ValueKind::WhichHalfEarth:
    case ValueKind::EllipsoidDirection: {
        // Directions are read by the words of the hemispheres, which are taken as they stand.
        const auto half = Words::ForCoordIO_EWhichHalfEarth_from_AsciiString(text);
        const int value = static_cast<int>(half);
        judge(taken == nullptr || toValueText(type, value) == text
                  || Words::ForCoordIO_EWhichHalfEarth_to_AsciiString(half) == text,
              Taken::AsAnotherWord);
        return value;
    }
    case ValueKind::Time: raiseByPointer(noTimeInDocument);
    case ValueKind::Text:
    case ValueKind::AsVariant: break;
    }
    return text;
}

} // namespace KelStd::io
