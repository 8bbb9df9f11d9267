#include <KelStd/positions/SaidUnits.h>

#include <QtCore/QStringList>

#include <algorithm>
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

/// What of a position the word speaks of; nothing when it speaks of something else.
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
const NamedUnit *unitAt(const QVector<Word> &words, int position, int &next)
{
    constexpr int maxWords = 3; // "us survey feet"
    for (int count = std::min(maxWords, static_cast<int>(words.size()) - position); count > 0;
         --count) {
        QStringList parts;
        for (int i = position; i < position + count; ++i)
            parts += words.at(i).lower();
        const QString name = parts.join(QLatin1Char('_'));
        const NamedUnit *unit = unitNamed(name);
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
const NamedUnit *unitBehind(const QVector<Word> &words, int subject, int &next)
{
    constexpr int maxFillers = 8;
    bool isIn = isUnitsWord(words.at(subject).lower());
    for (int i = subject + 1; i < words.size() && i <= subject + maxFillers; ++i) {
        const QString word = words.at(i).lower();
        const bool isInBrackets = !isIn && i == subject + 1 && words.at(i).isBehindBracket;
        if (isIn || isInBrackets) {
            if (const NamedUnit *unit = unitAt(words, i, next)) {
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

} // namespace

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
    const NamedUnit *whole = unitAt(words, beginsIn ? 1 : 0, next);
    const bool isOften =
        whole != nullptr && !isAmong(QLatin1String(whole->symbol), "in yd mi links chains fathoms");
    if (isOften && next == words.size())
        said += {Said::All, whole, joined(words, 0, next)};
    for (int i = 0; i < words.size(); ++i) {
        const auto subject = subjectOf(words.at(i).lower());
        if (!subject || !isOfPositions(words, i))
            continue;
        const NamedUnit *unit = unitBehind(words, i, next);
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

const NamedUnit *unitWithin(const QString &text)
{
    const QVector<Word> words = wordsOf(text);
    const NamedUnit *unit = nullptr;
    int next = 0;
    for (int i = 0; unit == nullptr && i < words.size(); ++i)
        unit = unitAt(words, i, next);
    return unit;
}

} // namespace KelStd::positions
