#include <KelStd/io/ReviewedValue.h>

#include <KelStd/io/ValueText.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>

#include <QtCore/QObject>

#include <cmath>
#include <optional>

namespace KelStd::io {

namespace {

using Words = CoordStringHelper;

/// How a text is misread as a value of a kind.
struct Misreading
{
    FindingKind kind;
    QString understood;
};

template <typename Enumeration>
std::optional<Misreading> misreadWord(const QString &text, int value,
                                      QString (*toWord)(Enumeration))
{
    const QString understood = toWord(static_cast<Enumeration>(value));
    if (text == understood)
        return std::nullopt;
    return Misreading{FindingKind::UnknownWord, understood};
}

std::optional<Misreading> misreadDirection(const QString &text, int value)
{
    // Directions are read by the words of the hemispheres, which are taken as they stand.
    const bool isHemisphere =
        Words::ForCoordIO_EWhichHalfEarth_to_AsciiString(static_cast<EWhichHalfEarth>(value))
        == text;
    if (isHemisphere)
        return std::nullopt;
    return misreadWord(text, value, &Words::ForCoordIO_EEllipsoidDirection_to_AsciiString);
}

/// Nothing when the text is read as it stands.
std::optional<Misreading> misread(EValueType type, const QString &text)
{
    const QVariant value = fromValueText(type, text);
    bool isWhole = false;
    switch (kindOf(type)) {
    case ValueKind::Boolean:
    case ValueKind::ProjFlag:
        if (isBooleanWord(text))
            return std::nullopt;
        return Misreading{FindingKind::UnknownWord, toValueText(type, value)};
    case ValueKind::Int32:
        text.toInt(&isWhole);
        if (isWhole)
            return std::nullopt;
        return Misreading{FindingKind::NotANumber, toValueText(type, value)};
    case ValueKind::Int64:
    case ValueKind::TimeSpan:
        text.toLongLong(&isWhole);
        if (isWhole)
            return std::nullopt;
        return Misreading{FindingKind::NotANumber, toValueText(type, value)};
    case ValueKind::Number:
    case ValueKind::Length:
    case ValueKind::Angle:
    case ValueKind::Longitude:
    case ValueKind::Latitude:
    case ValueKind::Pressure:
    case ValueKind::Temperature:
        if (isReadAsNumber(text))
            return std::nullopt;
        return Misreading{FindingKind::NotANumber, asNumber(value.toDouble())};
    case ValueKind::LocationZeroType:
        return misreadWord(text, value.toInt(),
                           &Words::ForCoordIO_ELocationZeroType_to_AsciiString);
    case ValueKind::WhichHalfEarth:
        return misreadWord(text, value.toInt(), &Words::ForCoordIO_EWhichHalfEarth_to_AsciiString);
    case ValueKind::EllipsoidDirection: return misreadDirection(text, value.toInt());
    case ValueKind::Time:
    case ValueKind::Text:
    case ValueKind::AsVariant: break;
    }
    return std::nullopt;
}

} // namespace

bool isBooleanWord(const QString &word)
{
    return word.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0
           || word.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0;
}

QString wholeText(const QDomElement &element)
{
    QString text;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isText())
            text += child.nodeValue(); // an only one is shared, however long
    }
    return text;
}

bool isReadAsNumber(const QString &text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        return false;
    if (value != 0.0)
        return true;
    // A zero of other digits is one that a double is too coarse for.
    for (const QChar c : text) {
        if (c == QLatin1Char('e') || c == QLatin1Char('E'))
            break;
        if (c.isDigit() && c.digitValue() != 0)
            return false;
    }
    return true;
}

void reviewValue(const QDomElement &element, EValueType type, ReviewFindings &findings)
{
    const QString whole = wholeText(element);
    const QDomNode first = element.firstChild();
    const QString taken = first.isText() ? first.nodeValue() : QString();
    if (whole.size() != taken.size() && whole.trimmed() != taken.trimmed()) {
        findings.add(FindingKind::SplitText, element, whole,
                     taken.isEmpty() ? QObject::tr("nothing")
                                     : toValueText(type, fromValueText(type, taken)));
        return;
    }
    if (!first.isText())
        return;
    if (const auto misreading = misread(type, taken))
        findings.add(misreading->kind, element, taken, misreading->understood);
}

} // namespace KelStd::io
