#include <KelStd/positions/LineDoubts.h>

#include <KelStd/text/AngleSigns.h>
#include <KelStd/text/TypedAngle.h>

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::positions {

namespace {

constexpr QChar comma = QLatin1Char(',');

bool isAngle(Frame frame, int component)
{
    return isAngle(columnOf(frame, component));
}

bool isLongitude(Frame frame, int component)
{
    return columnOf(frame, component).valueType == ValueType_Longitude;
}

/// "12,345" and "12,345,678", which have thousands in groups or, the former, three decimals. A
/// number with groups does not begin with a zero.
bool mayHaveGroups(const QString &field)
{
    static const QRegularExpression groups(
        QStringLiteral("\\A[-+]?[1-9][0-9]{0,2}(,[0-9]{3})+\\z"));
    return groups.match(field).hasMatch();
}

/// A field that may be a piece of the angle beside it: a hemisphere letter, a minus, or an angle
/// with its signs.
bool mayBePiece(const QString &field)
{
    static const QRegularExpression lone(QStringLiteral("\\A[-+NSEWnsew]\\z"));
    static const QRegularExpression degrees(QStringLiteral("\\A[-+NSEWnsew]?[0-9.]+[dD]\\z"));
    static const QRegularExpression start(QStringLiteral("\\A[-+NSEWnsew]?[0-9]"));
    return lone.match(field).hasMatch() || degrees.match(field).hasMatch()
           || (start.match(field).hasMatch() && hasAngleSigns(field));
}

/// A time of day, which looks like an angle with colons. With its date before it, it does not.
bool isTime(const QString &field, bool needsDate)
{
    static const QRegularExpression time(QStringLiteral(
        "\\A([0-9]{4}[-/.][0-9]{1,2}[-/.][0-9]{1,2}[T_])?[0-9]{1,2}:[0-9]{2}(:[0-9]{2}"
        "([.,][0-9]*)?)?(Z|[-+][0-9:]+)?\\z"));
    const QRegularExpressionMatch match = time.match(field);
    return match.hasMatch() && (!needsDate || match.capturedLength(1) > 0);
}

/// "52°" and "52°30'", to which minutes or seconds may belong that the next field holds.
bool mayGoOn(const QString &field)
{
    static const QRegularExpression whole(
        QStringLiteral("\\A[^.,]*[0-9][%1%2]\\z")
            .arg(angleSigns(AngleSign::Degree), angleSigns(AngleSign::Minute)));
    return whole.match(field).hasMatch();
}

/// What is wrong with "5,5 52,1 3,0", whose commas were meant for decimals and are taken for
/// separators.
QString commasBesideBlanks(const SplitLine &line, const FieldOrder &order)
{
    static const QRegularExpression twoNumbers(QStringLiteral("\\A[-+0-9.]+\\s+[-+0-9.]+\\z"));
    QStringList found;
    for (const int field : order.componentFields()) {
        if (twoNumbers.match(line.fields.at(field)).hasMatch())
            found += line.fields.at(field);
    }
    if (found.size() < 2)
        return {};
    return QStringLiteral("the commas separate the fields, and %1 is not a number; where commas "
                          "mark decimals, write semicolons between the fields")
        .arg(quoted(found.first()));
}

/// Whether a component between commas is set in quotation marks because it has a comma itself.
bool hasQuotedComma(const SplitLine &line, const FieldOrder &order)
{
    const ComponentFields fields = order.componentFields();
    return std::any_of(fields.begin(), fields.end(), [&line](int field) {
        return line.isQuoted.at(field) && line.fields.at(field).contains(comma);
    });
}

bool isPlainNumber(const QString &field)
{
    bool ok = false;
    field.toDouble(&ok);
    return ok;
}

} // namespace

std::optional<DecimalMark> decimalMarkOf(const SplitLine &line, const FieldOrder &order,
                                         Frame frame, QString &mistake)
{
    if (line.separator == comma && !hasQuotedComma(line, order)) {
        mistake = commasBesideBlanks(line, order);
        return mistake.isEmpty() ? std::optional(DecimalMark::Point) : std::nullopt;
    }
    if (line.separator != comma && line.separator != QLatin1Char(';')
        && line.separator != QLatin1Char('\t'))
        return DecimalMark::Point;

    const QString *withComma = nullptr;
    const QString *withPoint = nullptr;
    bool isSure = false;
    for (int i = 0; i < order.countComponents(); ++i) {
        const QString &field = line.fields.at(order.components[static_cast<std::size_t>(i)]);
        if (field.contains(QLatin1Char('.')))
            withPoint = &field;
        if (!field.contains(comma))
            continue;
        withComma = &field;
        // There are no thousands of degrees.
        isSure = isSure || isAngle(frame, i) || !mayHaveGroups(field);
    }
    if (withComma == nullptr)
        return DecimalMark::Point;
    if (withPoint != nullptr) {
        mistake = QStringLiteral("%1 has a comma and %2 a point; write every number with a decimal "
                                 "point, or every one with a decimal comma")
                      .arg(quoted(*withComma), quoted(*withPoint));
        return std::nullopt;
    }
    if (!isSure) {
        mistake = QStringLiteral("the comma of %1 may stand before decimals or thousands; write a "
                                 "decimal point")
                      .arg(quoted(*withComma));
        return std::nullopt;
    }
    return DecimalMark::Comma;
}

std::optional<DecimalMark> shownMark(const SplitLine &line, const FieldOrder &order)
{
    const ComponentFields fields = order.componentFields();
    const auto isIn = [&](QChar mark) {
        return std::any_of(fields.begin(), fields.end(),
                           [&](int field) { return line.fields.at(field).contains(mark); });
    };
    if (isIn(comma))
        return DecimalMark::Comma;
    return isIn(QLatin1Char('.')) ? std::optional(DecimalMark::Point) : std::nullopt;
}

QString separatorDoubt(const SplitLine &one, const SplitLine &other)
{
    const auto nameOf = [](const SplitLine &line) {
        return line.byBlanks                         ? QStringLiteral("blanks")
               : line.separator == QLatin1Char('\t') ? QStringLiteral("tabulators")
               : line.separator == QLatin1Char(';')  ? QStringLiteral("semicolons")
                                                     : QStringLiteral("commas");
    };
    return QStringLiteral("separated by %1 and by %2 the line is a position; put a text that holds "
                          "some of them into quotation marks")
        .arg(nameOf(one), nameOf(other));
}

QString hintOnPieces(const SplitLine &line)
{
    const bool holdsPiece =
        line.byBlanks && std::any_of(line.fields.cbegin(), line.fields.cend(), mayBePiece);
    return holdsPiece ? QStringLiteral("; where blanks separate the fields, an angle holds none: "
                                       "write it without, or semicolons between the fields")
                      : QString();
}

namespace {

/// A cell that names a hemisphere, as a letter or a word of some language.
struct Hemisphere
{
    bool isNorthOrSouth = false;
    bool isEastOrWest = false;

    bool isThere() const { return isNorthOrSouth || isEastOrWest; }
};

/// The direction of "N", "south", "(S)", "Ost." and their like.
Hemisphere hemisphereOf(const QString &field)
{
    static const QRegularExpression frame(
        QStringLiteral("\\A[(\\[]?\\s*(?:deg\\s+|[\u00B0\u00BA\u02DA]\\s*)?"
                       "(\\w+)\\s*[.)\\]]*\\z"),
        QRegularExpression::UseUnicodePropertiesOption);
    static const QStringList northOrSouth = {
        QStringLiteral("n"),     QStringLiteral("s"),     QStringLiteral("north"),
        QStringLiteral("nord"),  QStringLiteral("noord"), QStringLiteral("norte"),
        QStringLiteral("south"), QStringLiteral("sued"),  QStringLiteral("s\u00FCd"),
        QStringLiteral("sud"),   QStringLiteral("sur"),   QStringLiteral("zuid")};
    static const QStringList eastOrWest = {
        QStringLiteral("e"),     QStringLiteral("w"),    QStringLiteral("east"),
        QStringLiteral("ost"),   QStringLiteral("oost"), QStringLiteral("est"),
        QStringLiteral("este"),  QStringLiteral("west"), QStringLiteral("ouest"),
        QStringLiteral("oeste"), QStringLiteral("ovest")};
    const QString word = frame.match(field).captured(1).toLower();
    return {northOrSouth.contains(word), eastOrWest.contains(word)};
}

} // namespace

QString loneHemisphere(const SplitLine &line, const FieldOrder &order, Frame frame)
{
    const auto isExtra = [&](int field) {
        const auto &components = order.components;
        return field >= 0 && field < line.fields.size() && field != order.name
               && std::find(components.begin(), components.end(), field) == components.end();
    };
    const auto refused = [&line](int hemisphere, const QString &place) {
        return QStringLiteral("a hemisphere in a column of its own is not read: %1 %2; write both "
                              "in one field")
            .arg(quoted(line.fields.at(hemisphere)), place);
    };
    for (int i = 0; i < componentsPerFrame; ++i) {
        const int field = order.components[static_cast<std::size_t>(i)];
        if (!isAngle(frame, i))
            continue;
        const QString angle = quoted(line.fields.at(field));
        if (isExtra(field + 1) && hemisphereOf(line.fields.at(field + 1)).isThere())
            return refused(field + 1, QStringLiteral("behind ") + angle);
        // In front of an angle a letter of the other direction is a code.
        if (!isExtra(field - 1))
            continue;
        const Hemisphere before = hemisphereOf(line.fields.at(field - 1));
        if (isLongitude(frame, i) ? before.isEastOrWest : before.isNorthOrSouth)
            return refused(field - 1, QStringLiteral("before ") + angle);
    }
    // One letter elsewhere is a code. One letter of each direction belong to the angles.
    const auto isBeforeAngle = [&](int field) {
        for (int i = 0; i < componentsPerFrame; ++i) {
            if (isAngle(frame, i) && order.components[static_cast<std::size_t>(i)] == field + 1)
                return true;
        }
        return false;
    };
    int northOrSouth = -1;
    int eastOrWest = -1;
    for (int field = 0; isAngle(frame, 0) && field < line.fields.size(); ++field) {
        if (!isExtra(field) || isBeforeAngle(field))
            continue;
        const Hemisphere found = hemisphereOf(line.fields.at(field));
        northOrSouth = found.isNorthOrSouth ? field : northOrSouth;
        eastOrWest = found.isEastOrWest ? field : eastOrWest;
    }
    return northOrSouth >= 0 && eastOrWest >= 0
               ? refused(northOrSouth, QStringLiteral("and ") + quoted(line.fields.at(eastOrWest)))
               : QString();
}

QString unreadMinutes(const SplitLine &line, const FieldOrder &order, Frame frame)
{
    static const QRegularExpression wholeDegrees(QStringLiteral("\\A[-+]?[0-9]{1,3}\\z"));
    static const QRegularExpression minutes(QStringLiteral("\\A[0-5]?[0-9]([.,][0-9]*)?\\z"));
    const auto &components = order.components;
    for (int i = 0; i < componentsPerFrame; ++i) {
        const int field = components[static_cast<std::size_t>(i)];
        const int next = field + 1;
        if (!isAngle(frame, i) || next >= line.fields.size() || next == order.name
            || std::find(components.begin(), components.end(), next) != components.end())
            continue;
        if (wholeDegrees.match(line.fields.at(field)).hasMatch()
            && minutes.match(line.fields.at(next)).hasMatch()) {
            return QStringLiteral("%1 behind %2 may be minutes, which are not read in a column of "
                                  "their own; write each angle in one field, or degrees with "
                                  "decimals")
                .arg(quoted(line.fields.at(next)), quoted(line.fields.at(field)));
        }
    }
    return {};
}

QString tornAngle(const SplitLine &line, const FieldOrder &order, Frame frame)
{
    if (!line.byBlanks)
        return {};
    const auto componentAt = [&order](int field) {
        const auto &components = order.components;
        const auto found = std::find(components.begin(), components.end(), field);
        return found != components.end() ? static_cast<int>(found - components.begin()) : -1;
    };
    const auto doubt = [&line](int first) {
        return QStringLiteral("%1 and %2 may be one angle; write it without blanks, or separate "
                              "the fields by semicolons")
            .arg(quoted(line.fields.at(first)), quoted(line.fields.at(first + 1)));
    };
    // Where headings or numbers say what a field is, times stand in fields of their own.
    const auto mayBePieceAt = [&](int field) {
        const QString &text = line.fields.at(field);
        return mayBePiece(text) && !isTime(text, order.isPlain || field == order.name);
    };
    for (int i = 0; i + 1 < line.fields.size(); ++i) {
        if (line.isQuoted.at(i) || line.isQuoted.at(i + 1))
            continue;
        const int left = componentAt(i);
        const int right = componentAt(i + 1);
        const bool leftIsAngle = left >= 0 && isAngle(frame, left);
        const bool rightIsAngle = right >= 0 && isAngle(frame, right);
        if (rightIsAngle && left < 0 && mayBePieceAt(i))
            return doubt(i);
        if (leftIsAngle && right < 0 && mayBePieceAt(i + 1))
            return doubt(i);
        if (leftIsAngle && rightIsAngle && mayGoOn(line.fields.at(i))
            && isPlainNumber(line.fields.at(i + 1)))
            return doubt(i);
    }
    return {};
}

} // namespace KelStd::positions
