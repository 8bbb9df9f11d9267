#include <KelStd/positions/OppositeHeadings.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <algorithm>

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
     u"suedliche s\u00FCdbreite suedbreite sur zuid zuiderbreedte southlat southlatitude "
     u"g\u00FCney guney sul syd "
     u"s\u00F8r po\u0142udnie poludnie",
     {Axis::North, false, false}},
    {u"southing southings s\u00FCdwert suedwert", {Axis::North, false, true}},
    {u"east eastern eastward eastwards easting eastings ost \u00F6stlich \u00F6stliche oost est "
     u"este leste do\u011Fu dogu ostwert",
     {Axis::East, true, false}},
    {u"west western westward westwards westlich westliche westl\u00E4nge westlaenge "
     u"westerlengte westlon westlong westlongitude lonw longw ouest oeste ovest bat\u0131 bati "
     u"v\u00E4st vest zach\u00F3d zachod",
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
        {QStringLiteral("w"), {Axis::East, false, false}},
        // west in Romance languages
        {QStringLiteral("o"), {Axis::East, false, false}}};
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

Sign signIn(QString clause)
{
    clause.replace(QLatin1Char('_'), QLatin1Char(' '));
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

/// Whether the letter O is that of Ost or oost, or none of a direction, as in a plane.
bool isOtherO(const QString &text, const InputForm &form)
{
    static const QRegularExpression germanic(QStringLiteral("l\u00E4nge|laenge|lengte"),
                                             QRegularExpression::CaseInsensitiveOption);
    return form.frame == Frame::LocalProjected || germanic.match(text).hasMatch();
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

bool isNumber(const QString &word)
{
    return std::all_of(word.cbegin(), word.cend(), [](QChar c) { return c.isDigit(); });
}

/// The direction that a word or letter of a clause names; null for none.
const Direction *directionAt(const QStringList &words, int index)
{
    // "UTM 34 S" is the half of the earth in which a zone lies.
    if (index > 0 && isNumber(words.at(index - 1)))
        return nullptr;
    const QString &word = words.at(index);
    return word.size() == 1 ? directionOfLetter(word) : directionOf(word);
}

/// Whether nothing but other letters and a unit stand behind the word.
bool endsClause(const QStringList &words, int index)
{
    return std::all_of(words.cbegin() + index + 1, words.cend(), [](const QString &word) {
        return word.size() == 1 || unitNamed(word) != nullptr;
    });
}

/// The columns of a plane are called northing and easting whichever way they count.
bool isOwnWord(const Direction &direction, const InputForm &form)
{
    return form.frame == Frame::LocalProjected && direction.isForward;
}

/// What a heading says of the direction in which a component counts.
class SaidDirections
{
public:
    SaidDirections(const Heading &heading, const InputForm &form, int component)
        : m_form(form), m_component(component), m_axis(axisOf(form, component)),
          m_isForward(!isBackward(form, m_axis)), m_text(withWordsApart(heading.text))
    {
        static const QRegularExpression plural(QStringLiteral("(?<=\\p{L})\\(s\\)"));
        m_text.remove(plural);
        m_heading = headingOf(m_text);
        for (const Clause &clause : clausesOf(m_text))
            take(clause);
    }

    QString otherWay() const
    {
        if (!m_otherComponent.isEmpty())
            return QStringLiteral("says %1").arg(quoted(m_otherComponent));
        for (const Found &kind : {m_words, m_letters}) {
            if (kind.counts()) {
                return QStringLiteral("says %1, but %2 is read %3")
                    .arg(quoted(kind.other),
                         QLatin1String(columnOf(m_form.frame, m_component).label),
                         wayOf(m_axis, m_isForward));
            }
        }
        return {};
    }

private:
    struct Found
    {
        QString other; ///< counts the other way
        bool isSure = false;
        bool isThisWay = false; ///< beside another word that says so

        bool counts() const { return !other.isEmpty() && (isSure || !isThisWay); }
    };

    void take(const Clause &clause)
    {
        const Sign sign = signIn(clause.text);
        const QStringList words = normalisedHeading(clause.text).split(QLatin1Char('_'));
        for (int i = 0; i < words.size(); ++i) {
            const Direction *const direction = directionAt(words, i);
            if (direction == nullptr || !mayBeMeant(clause, words, i, *direction))
                continue;
            if (direction->axis == m_axis)
                take(words.at(i), *direction, sign);
            else if (direction->namesComponent)
                m_otherComponent = words.at(i);
        }
    }

    /// Of letters only some are directions.
    bool mayBeMeant(const Clause &clause, const QStringList &words, int index,
                    const Direction &direction) const
    {
        const QString &word = words.at(index);
        if (word.size() > 1)
            return true;
        if (word == QLatin1String("o") && isOtherO(m_text, m_form))
            return false;
        const bool isForward = direction.isForward == m_isForward; // refuses nothing
        return (endsClause(words, index) && (clause.isInBrackets || isForward))
               || mayBeDirection(word, m_heading, m_form, m_component);
    }

    void take(const QString &word, const Direction &direction, Sign sign)
    {
        const bool isLetter = word.size() == 1;
        Found &kind = isLetter ? m_letters : m_words;
        const bool isThisWay = (direction.isForward == m_isForward) != (sign == Sign::Minus);
        if (isThisWay || (isOwnWord(direction, m_form) && sign != Sign::Minus)) {
            kind.isThisWay = true;
            return;
        }
        // "South zone northing" is another thing than "Northing south".
        const bool isLast = !isLetter && m_heading.whole.split(QLatin1Char('_')).last() == word
                            && !m_text.contains(QLatin1Char('/'));
        kind.isSure = kind.isSure || isLast || sign != Sign::None;
        if (kind.other.isEmpty()) {
            kind.other = (isLetter ? word.toUpper() : word)
                         + QLatin1String(sign == Sign::Minus ? " negative" : "");
        }
    }

    const InputForm &m_form;
    int m_component;
    Axis m_axis;
    bool m_isForward;
    QString m_text;
    Heading m_heading;
    QString m_otherComponent;
    Found m_words;
    Found m_letters;
};

} // namespace

QString otherWayIn(const Heading &heading, const InputForm &form, int component)
{
    return form.frame == Frame::Wgs84Cartesian
               ? QString()
               : SaidDirections(heading, form, component).otherWay();
}

} // namespace KelStd::positions
