#include <KelStd/positions/UnitDoubts.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/text/TypedNumber.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QVector>

#include <algorithm>
#include <array>
#include <optional>

namespace KelStd::positions {

namespace {

/// A word of a text, and whether a sign such as a full stop or a colon, or a bracket, stands before
/// it.
struct Word
{
    QString text;
    bool isBehindSign = false;
    bool isBehindBracket = false;

    QString lower() const { return text.toLower(); }
};

/// What a text says to be in a unit.
enum class Said
{
    All,
    Lengths,
    Angles,
    Heights
};

struct SaidUnit
{
    Said said = Said::All;
    const HeadingUnit *unit = nullptr;
    QString words; ///< as they stand
};

QVector<Word> wordsOf(QString text)
{
    text.replace(QLatin1String("U.S."), QLatin1String("US"));
    QVector<Word> words;
    Word word;
    const auto end = [&] {
        if (word.text.isEmpty())
            return;
        words += word;
        word = {};
    };
    for (const QChar c : text) {
        if (c.isLetterOrNumber()) {
            word.text += c;
            continue;
        }
        end();
        const bool isBracket = c == QLatin1Char('(') || c == QLatin1Char('[');
        const bool isHyphen = c == QLatin1Char('-') || c == QLatin1Char('_');
        word.isBehindBracket = word.isBehindBracket || isBracket;
        word.isBehindSign = word.isBehindSign || !(c.isSpace() || isHyphen);
    }
    end();
    return words;
}

bool isAmong(const QString &word, const char *list)
{
    return QString::fromLatin1(list).split(QLatin1Char(' ')).contains(word);
}

/// What the word speaks of; nothing when it is none of a position.
std::optional<Said> subjectOf(const QString &word)
{
    if (isAmong(word, "unit units coordinate coordinates position positions values"))
        return Said::All;
    if (isAmong(word,
                "length lengths northing northings easting eastings distance distances dimension "
                "dimensions"))
        return Said::Lengths;
    if (isAmong(word, "angle angles latitude latitudes longitude longitudes lat lon"))
        return Said::Angles;
    if (isAmong(word, "height heights elevation elevations altitude altitudes"))
        return Said::Heights;
    return std::nullopt;
}

bool isUnitsWord(const QString &word)
{
    return word == QLatin1String("unit") || word == QLatin1String("units");
}

/// Words that may stand before a subject. "Antenna heights in mm" speak of no position.
bool mayQualify(const QString &word)
{
    return subjectOf(word)
           || isAmong(word, "all the and or of linear angular length height horizontal vertical "
                            "ellipsoidal orthometric geoid geodetic geographic cartesian projected "
                            "plane grid local wgs84 map file point survey project job x y z n e h");
}

/// Words that may stand between a subject and its unit.
bool isFiller(const QString &word)
{
    return mayQualify(word)
           || isAmong(word, "is are given measured expressed stored written above below ellipsoid "
                            "sea level datum in decimal as");
}

/// The unit that begins with that word, the longest one; `next` is behind it.
const HeadingUnit *unitAt(const QVector<Word> &words, int position, int &next)
{
    constexpr int maxWords = 3; // "us survey feet"
    for (int count = std::min(maxWords, words.size() - position); count > 0; --count) {
        QStringList parts;
        for (int i = position; i < position + count; ++i)
            parts += words.at(i).lower();
        const QString name = parts.join(QLatin1Char('_'));
        const HeadingUnit *unit = unitNamed(name);
        const bool isClear = unit != nullptr && unit->kind != UnitKind::TypedAngle
                             && name.size() > 1 && name != QLatin1String("in");
        if (!isClear)
            continue;
        next = position + count;
        return unit;
    }
    return nullptr;
}

/// "Foot Lane": a name goes on in a word with a capital letter.
bool isNameAt(const QVector<Word> &words, int next)
{
    if (next >= words.size() || words.at(next).isBehindSign)
        return false;
    const QString &text = words.at(next).text;
    return text.at(0).isUpper()
           && std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isLower(); });
}

/// The unit that the words behind a subject give it: "units: feet", "heights above the ellipsoid in
/// feet".
const HeadingUnit *unitBehind(const QVector<Word> &words, int subject, int &next)
{
    constexpr int maxFillers = 8;
    bool isIn = isUnitsWord(words.at(subject).lower());
    for (int i = subject + 1; i < words.size() && i <= subject + maxFillers; ++i) {
        const QString word = words.at(i).lower();
        const bool isInBrackets = !isIn && i == subject + 1 && words.at(i).isBehindBracket;
        if (isIn || isInBrackets) {
            if (const HeadingUnit *unit = unitAt(words, i, next)) {
                // "(cm accuracy)"
                const bool goesOn =
                    isInBrackets && next < words.size() && !words.at(next).isBehindSign;
                return goesOn || isNameAt(words, next) ? nullptr : unit;
            }
        }
        if (!isFiller(word))
            return nullptr;
        isIn = isIn || word == QLatin1String("in") || isUnitsWord(word);
    }
    return nullptr;
}

QString joined(const QVector<Word> &words, int from, int to)
{
    QStringList texts;
    for (int i = from; i < to; ++i)
        texts += words.at(i).text;
    return texts.join(QLatin1Char(' '));
}

/// Whether the subject is that of the list: what qualifies it begins the text or a clause, or is a
/// word for units. The "accuracy of the heights" is another thing.
bool isOfPositions(const QVector<Word> &words, int subject)
{
    for (int i = subject; i > 0 && !words.at(i).isBehindSign; --i) {
        const QString before = words.at(i - 1).lower();
        if (isUnitsWord(before))
            return true;
        if (!mayQualify(before))
            return false;
    }
    return true;
}

QVector<SaidUnit> saidUnits(const QString &text)
{
    constexpr int maxCharacters = 400; // of a title that is read
    const QVector<Word> words = wordsOf(text.left(maxCharacters));
    QVector<SaidUnit> said;
    int next = 0;
    bool hasUnit = false;
    for (int i = 0; i < words.size() && !hasUnit; ++i)
        hasUnit = unitAt(words, i, next) != nullptr;
    if (!hasUnit)
        return said;
    // Nothing but a unit: "US survey feet", "in feet".
    const bool beginsIn = !words.isEmpty() && words.first().lower() == QLatin1String("in");
    const HeadingUnit *whole = unitAt(words, beginsIn ? 1 : 0, next);
    const bool isOften =
        whole != nullptr && !isAmong(QLatin1String(whole->shown), "in yd mi links chains fathoms");
    if (isOften && next == words.size())
        said += {Said::All, whole, joined(words, 0, next)};
    for (int i = 0; i < words.size(); ++i) {
        const auto subject = subjectOf(words.at(i).lower());
        if (!subject || !isOfPositions(words, i))
            continue;
        const HeadingUnit *unit = unitBehind(words, i, next);
        if (unit == nullptr)
            continue;
        // "height unit: ft"
        const auto before = i > 0 && !words.at(i).isBehindSign && isUnitsWord(words.at(i).lower())
                                ? subjectOf(words.at(i - 1).lower())
                                : std::nullopt;
        said += {before ? *before : *subject, unit, joined(words, i, next)};
    }
    return said;
}

bool isAbout(Said said, const InputForm &form, int component)
{
    const bool isOfAngle = isAngle(columnOf(form.frame, component));
    switch (said) {
    case Said::All: return true;
    case Said::Lengths: return !isOfAngle;
    case Said::Angles: return isOfAngle;
    case Said::Heights: break;
    }
    return component == componentsPerFrame - 1 && form.frame != Frame::Wgs84Cartesian;
}

/// Whether the unit may be that of the component at all.
bool measures(const HeadingUnit &unit, const InputForm &form, int component)
{
    return (unit.kind == UnitKind::Length) != isAngle(columnOf(form.frame, component));
}

/// Whether a text that says the unit may mean the one in which the component is read: "feet" may be
/// US survey feet.
bool mayBeInputUnit(const HeadingUnit &unit, const InputForm &form, int component)
{
    return isInputUnit(form, component, unit)
           || (unit.unit == Unit_Foot && form.unitText(component) == unitSymbol(Unit_USFoot));
}

/// A field without its brackets: "[deg]" and "(deg)" are "deg".
QString withoutBrackets(const QString &field)
{
    const bool isInBrackets =
        field.size() > 1
        && ((field.startsWith(QLatin1Char('[')) && field.endsWith(QLatin1Char(']')))
            || (field.startsWith(QLatin1Char('(')) && field.endsWith(QLatin1Char(')'))));
    return (isInBrackets ? field.mid(1, field.size() - 2) : field).trimmed();
}

const HeadingUnit *unitOfField(const QString &field)
{
    static const QRegularExpression direction(
        QStringLiteral("\\s*\\b(N|S|E|W|north|south|east|west)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    QString text = withoutBrackets(field);
    text.replace(QLatin1String("U.S."), QLatin1String("US"));
    if (text.size() > 1)
        text.remove(direction); // "deg N"
    static const QStringList degreeSigns = {QStringLiteral("\u00B0"), QStringLiteral("\u00BA"),
                                            QStringLiteral("\u02DA")};
    if (degreeSigns.contains(text))
        return unitNamed(QStringLiteral("deg"));
    const HeadingUnit *unit = unitNamed(normalisedHeading(text));
    return unit != nullptr ? unit : unitNamed(text);
}

/// The fields with those put together that blanks tore apart: "[US survey feet]".
QStringList withWholeBrackets(const SplitLine &line)
{
    if (!line.byBlanks)
        return line.fields;
    QStringList fields;
    bool isOpen = false;
    for (const QString &field : line.fields) {
        if (isOpen)
            fields.last() += QLatin1Char(' ') + field;
        else
            fields += field;
        const QString &last = fields.last();
        isOpen = (last.startsWith(QLatin1Char('[')) && !last.endsWith(QLatin1Char(']')))
                 || (last.startsWith(QLatin1Char('(')) && !last.endsWith(QLatin1Char(')')));
    }
    return fields;
}

/// "[gon]" in the place of a component that is read in another unit.
QString mistakeAt(const QString &field, const InputForm &form, int component)
{
    Heading heading;
    heading.text = field;
    heading.unit = unitOfField(field);
    static const QRegularExpression otherWay(
        QStringLiteral("(\\b|\u00B0|\u00BA|\u02DA)(S|W|south|west)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const QString text = withoutBrackets(field);
    if (heading.unit != nullptr && isAngle(columnOf(form.frame, component)) && text.size() > 1
        && otherWay.match(text).hasMatch()) {
        return QStringLiteral("%1 counts southwards or westwards; %2 is read northwards or "
                              "eastwards, with a minus otherwise")
            .arg(quoted(field), QLatin1String(columnOf(form.frame, component).label));
    }
    return heading.unit == nullptr || isInputUnit(form, component, *heading.unit)
               ? QString()
               : unitMistake(form, component, heading);
}

/// A unit among other words: "feet, surveyed".
const HeadingUnit *unitWithin(const QString &text)
{
    const QVector<Word> words = wordsOf(text);
    const HeadingUnit *unit = nullptr;
    int next = 0;
    for (int i = 0; unit == nullptr && i < words.size(); ++i)
        unit = unitAt(words, i, next);
    return unit;
}

} // namespace

QStringList unitsOfLine(const SplitLine &line)
{
    static const QRegularExpression announcement(QStringLiteral("\\Aunits?\\s*[:=]?\\s*"),
                                                 QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression nothing(QStringLiteral("\\A[-.?/]*\\z"));
    QStringList fields = withWholeBrackets(line);
    if (fields.isEmpty())
        return {};
    if (fields.first().contains(announcement)) {
        fields.first().remove(announcement);
        if (fields.first().isEmpty() && line.byBlanks)
            fields.removeFirst();
    }
    int units = 0;
    bool areInBrackets = true;
    for (const QString &field : fields) {
        const QString text = withoutBrackets(field);
        if (unitOfField(field) != nullptr) {
            ++units;
            areInBrackets = areInBrackets && text.size() != field.size();
        } else if (!nothing.match(text).hasMatch()) {
            return {};
        }
    }
    const int fewest = line.byBlanks && !areInBrackets ? 3 : 2; // "in m" may be words
    return units >= fewest ? fields : QStringList();
}

QString unitsMistake(const QStringList &units, const FieldOrder &order, const InputForm &form)
{
    std::array<int, componentsPerFrame> places = order.components;
    if (units.size() != order.fields && units.size() == componentsPerFrame) {
        for (int &place : places) {
            place = static_cast<int>(std::count_if(order.components.begin(), order.components.end(),
                                                   [place](int other) { return other < place; }));
        }
    } else if (units.size() != order.fields) {
        for (const QString &field : units) {
            QString mistake;
            for (int i = 0; i < componentsPerFrame; ++i) {
                mistake = mistakeAt(field, form, i);
                if (mistake.isEmpty())
                    break;
            }
            if (!mistake.isEmpty())
                return mistake;
        }
        return {};
    }
    for (int i = 0; i < componentsPerFrame; ++i) {
        const QString mistake = mistakeAt(units.at(places[static_cast<std::size_t>(i)]), form, i);
        if (!mistake.isEmpty())
            return mistake;
    }
    return {};
}

bool saysUnits(const QString &text)
{
    return !saidUnits(text).isEmpty();
}

QString saidUnitMistake(const QString &text, const FieldOrder &order, const InputForm &form)
{
    for (const SaidUnit &said : saidUnits(text)) {
        for (int i = 0; i < componentsPerFrame; ++i) {
            if (order.hasUnit[static_cast<std::size_t>(i)] || !isAbout(said.said, form, i)
                || !measures(*said.unit, form, i) || mayBeInputUnit(*said.unit, form, i))
                continue;
            return QStringLiteral("the line says %1, but %2 is read in %3%4")
                .arg(quoted(said.words), QLatin1String(columnOf(form.frame, i).label),
                     form.unitText(i), lengthUnitHint(form, *said.unit));
        }
    }
    return {};
}

QString unitFieldMistake(const SplitLine &line, const FieldOrder &order, const InputForm &form)
{
    for (const int field : order.units) {
        const QString &text = line.fields.at(field);
        const HeadingUnit *unit = unitOfField(text);
        if (unit == nullptr)
            unit = unitWithin(text);
        if (unit == nullptr)
            continue;
        for (int i = 0; i < componentsPerFrame; ++i) {
            if (!measures(*unit, form, i) || isInputUnit(form, i, *unit)
                || unit->kind == UnitKind::TypedAngle)
                continue;
            return QStringLiteral("the line's unit is %1, but %2 is read in %3%4")
                .arg(quoted(line.fields.at(field)), QLatin1String(columnOf(form.frame, i).label),
                     form.unitText(i), lengthUnitHint(form, *unit));
        }
    }
    return {};
}

} // namespace KelStd::positions
