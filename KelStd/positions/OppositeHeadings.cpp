#include <KelStd/positions/OppositeHeadings.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <algorithm>
#include <array>

namespace KelStd::positions {

namespace {

enum class Axis
{
    North,
    East,
    Up
};

struct Direction
{
    Axis axis = Axis::Up;
    bool isForward = false; ///< north, east or up
    /// Whether it names a component: "southing" heads no easting, but a height may be that of the
    /// south wall.
    bool namesComponent = false;
};

struct DirectionRow
{
    const char16_t *words; ///< as `normalisedHeading` writes them, with blanks between
    Direction direction;
};

constexpr DirectionRow directionRows[] = {
    {u"north northern northward northwards northing northings nord n\u00F6rdlich n\u00F6rdliche "
     u"noord norte kuzey nordwert",
     {Axis::North, true, false}},
    {u"south southern southward southwards s\u00FCd sued sud s\u00FCdlich s\u00FCdliche suedlich "
     u"suedliche s\u00FCdbreite suedbreite sur zuid zuiderbreedte g\u00FCney guney sul syd "
     u"s\u00F8r po\u0142udnie poludnie",
     {Axis::North, false, false}},
    {u"southing southings s\u00FCdwert suedwert", {Axis::North, false, true}},
    {u"east eastern eastward eastwards easting eastings ost \u00F6stlich \u00F6stliche oost est "
     u"este leste do\u011Fu dogu ostwert",
     {Axis::East, true, false}},
    {u"west western westward westwards westlich westliche westl\u00E4nge westlaenge "
     u"westerlengte ouest oeste ovest bat\u0131 bati v\u00E4st vest zach\u00F3d zachod",
     {Axis::East, false, false}},
    {u"westing westings westwert", {Axis::East, false, true}},
    {u"up upward upwards", {Axis::Up, true, false}},
    {u"down downward downwards", {Axis::Up, false, false}},
};

/// What words of depth have in common: "Wassertiefe", "derinli\u011Fi".
constexpr char16_t partsOfDepth[] =
    u"depth tiefe teufe derinli profondeur profondit profundidad diepte djup dybde dybd "
    u"g\u0142\u0119boko\u015B\u0107 glebokosc";

const Direction *directionOf(const QString &word)
{
    static const QHash<QString, const Direction *> directions = [] {
        QHash<QString, const Direction *> all;
        for (const DirectionRow &row : directionRows) {
            for (const QString &each : QString::fromUtf16(row.words).split(QLatin1Char(' ')))
                all.insert(each, &row.direction);
        }
        return all;
    }();
    static const QStringList depths = QString::fromUtf16(partsOfDepth).split(QLatin1Char(' '));
    static const Direction down{Axis::Up, false, true};
    if (const Direction *const found = directions.value(word))
        return found;
    const bool isDepth = std::any_of(depths.cbegin(), depths.cend(),
                                     [&word](const QString &part) { return word.contains(part); });
    return isDepth ? &down : nullptr;
}

const Direction *directionOfLetter(const QString &word)
{
    static const QHash<QString, Direction> letters = {
        {QStringLiteral("n"), {Axis::North, true, false}},
        {QStringLiteral("s"), {Axis::North, false, false}},
        {QStringLiteral("e"), {Axis::East, true, false}},
        {QStringLiteral("w"), {Axis::East, false, false}}};
    const auto found = letters.constFind(word);
    return found != letters.constEnd() ? &*found : nullptr;
}

/// A part of a heading in which a sign belongs to the direction beside it: "W+" of "lon (W+, E-)".
struct Clause
{
    QString text;
    bool isInBrackets = false;
};

QVector<Clause> clausesOf(const QString &text)
{
    QVector<Clause> clauses(1);
    for (const QChar c : text) {
        const bool opens = c == QLatin1Char('(') || c == QLatin1Char('[');
        const bool closes = c == QLatin1Char(')') || c == QLatin1Char(']');
        if (opens || closes)
            clauses.append({QString(), opens});
        else if (c == QLatin1Char(',') || c == QLatin1Char(';') || c == QLatin1Char('/'))
            clauses.append({QString(), clauses.last().isInBrackets});
        else
            clauses.last().text += c;
    }
    return clauses;
}

enum class Sign
{
    None,
    Plus,
    Minus
};

Sign signIn(const QString &clause)
{
    // A hyphen between words is no sign.
    static const QRegularExpression minus(
        QStringLiteral("\\b(?:negative|neg|minus)\\b|(?:\\A|\\s)[-\u2212](?=\\w)|[-\u2212]\\s*\\z"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression plus(QStringLiteral("\\b(?:positive|pos|plus)\\b|\\+"),
                                         QRegularExpression::CaseInsensitiveOption);
    const bool hasMinus = minus.match(clause).hasMatch();
    const bool hasPlus = plus.match(clause).hasMatch();
    if (hasMinus == hasPlus)
        return Sign::None;
    return hasMinus ? Sign::Minus : Sign::Plus;
}

/// Whether a letter may be a direction there: the last word before frame and unit, or the one in
/// front of the word for the component.
bool mayBeDirection(const QString &letter, const Heading &heading, const InputForm &form,
                    int component)
{
    for (const QString &text : {heading.whole, heading.word}) {
        const QStringList words = text.split(QLatin1Char('_'));
        if (words.last() == letter
            || (words.size() == 2 && words.first() == letter
                && componentHeaded(form, headingOf(words.last())) == component))
            return true;
    }
    return false;
}

Axis axisOf(const InputForm &form, int component)
{
    if (component == componentsPerFrame - 1)
        return Axis::Up;
    const int northward = form.frame == Frame::LocalProjected ? 0 : 1;
    return component == northward ? Axis::North : Axis::East;
}

/// Whether the plane or the geographic frame counts southwards or westwards.
bool isBackward(const InputForm &form, Axis axis)
{
    if (axis == Axis::Up || form.frame == Frame::Wgs84Geographic)
        return false;
    return countsBackwards(columnOf(Frame::LocalGeographic, axis == Axis::North ? 1 : 0),
                           form.localAxes);
}

QString wayOf(Axis axis, bool isForward)
{
    switch (axis) {
    case Axis::North:
        return isForward ? QStringLiteral("northwards") : QStringLiteral("southwards");
    case Axis::East: return isForward ? QStringLiteral("eastwards") : QStringLiteral("westwards");
    case Axis::Up: break;
    }
    return QStringLiteral("upwards");
}

/// The columns of a plane are called northing and easting whichever way they count.
bool isOwnWord(const Direction &direction, const InputForm &form)
{
    return form.frame == Frame::LocalProjected && direction.isForward;
}

} // namespace

QString otherWayIn(const Heading &heading, const InputForm &form, int component)
{
    if (form.frame == Frame::Wgs84Cartesian)
        return {};
    static const QRegularExpression camelCase(QStringLiteral("(?<=[a-z])(?=[A-Z])"));
    static const QRegularExpression plural(QStringLiteral("(?<=\\p{L})\\(s\\)"));
    QString text = heading.text;
    text.replace(camelCase, QStringLiteral("_"));
    text.remove(plural);
    const Heading split = headingOf(text);
    const Axis axis = axisOf(form, component);
    const bool isForward = !isBackward(form, axis);

    struct Found
    {
        QString other; ///< counts the other way
        bool hasSign = false;
        bool isThisWay = false;
    };
    std::array<Found, 2> found; // words, letters
    for (const Clause &clause : clausesOf(text)) {
        const Sign sign = signIn(clause.text);
        for (const QString &word : normalisedHeading(clause.text).split(QLatin1Char('_'))) {
            const bool isLetter = word.size() == 1;
            const Direction *const direction =
                isLetter ? directionOfLetter(word) : directionOf(word);
            if (direction == nullptr
                || (isLetter && !clause.isInBrackets
                    && !mayBeDirection(word, split, form, component)))
                continue;
            if (direction->axis != axis) {
                if (direction->namesComponent)
                    return QStringLiteral("says %1").arg(quoted(word));
                continue;
            }
            Found &kind = found[isLetter ? 1 : 0];
            const bool isThisWay = (direction->isForward == isForward) != (sign == Sign::Minus);
            if (isThisWay || (isOwnWord(*direction, form) && sign != Sign::Minus)) {
                kind.isThisWay = true;
            } else {
                if (kind.other.isEmpty()) {
                    kind.other = (isLetter ? word.toUpper() : word)
                                 + QLatin1String(sign == Sign::Minus ? " negative" : "");
                }
                kind.hasSign = kind.hasSign || sign != Sign::None;
            }
        }
    }
    for (const Found &kind : found) {
        if (!kind.other.isEmpty() && (kind.hasSign || !kind.isThisWay)) {
            return QStringLiteral("says %1, but %2 is read %3")
                .arg(quoted(kind.other), QLatin1String(columnOf(form.frame, component).label),
                     wayOf(axis, isForward));
        }
    }
    return {};
}

} // namespace KelStd::positions
