#include <KelStd/text/NearNames.h>

#include <QtCore/QVector>

#include <algorithm>
#include <optional>

namespace KelStd {

namespace {

// Nobody types more, and the time of a comparison grows with the product of two lengths.
constexpr int maxLength = 200;

/// How far a name lies from what was given; the smaller the nearer.
enum Distance
{
    Same = 0,
    OfAllWords = 100,
    Continued = 300,
    Mistyped = 400
};

/// The letters and digits of a text, small and without accents, in words: a digit beside a letter
/// begins another one.
QStringList wordsOf(const QString &text)
{
    QStringList words;
    QString word;
    const auto end = [&] {
        if (!word.isEmpty())
            words += word;
        word.clear();
    };
    for (const QChar c : text.left(maxLength).normalized(QString::NormalizationForm_KD)) {
        if (c.isMark())
            continue;
        if (!c.isLetterOrNumber() || (!word.isEmpty() && c.isDigit() != word.back().isDigit()))
            end();
        if (c.isLetterOrNumber())
            word += c.toCaseFolded();
    }
    end();
    return words;
}

bool isNumber(const QString &word)
{
    return word.front().isDigit();
}

/// The letters of one text that have to be added, removed, changed or exchanged with the next one
/// to make the other (optimal string alignment); `max` + 1 for more than `max`.
int editDistance(const QString &left, const QString &right, int max)
{
    if (std::abs(left.size() - right.size()) > max)
        return max + 1;
    QVector<int> before;
    QVector<int> above(right.size() + 1);
    for (int i = 0; i < above.size(); ++i)
        above[i] = i;
    for (int i = 0; i < left.size(); ++i) {
        QVector<int> row(above.size());
        row[0] = i + 1;
        for (int j = 0; j < right.size(); ++j) {
            const int changed = above[j] + (left.at(i) == right.at(j) ? 0 : 1);
            row[j + 1] = std::min({changed, above[j + 1] + 1, row[j] + 1});
            if (i > 0 && j > 0 && left.at(i) == right.at(j - 1) && left.at(i - 1) == right.at(j))
                row[j + 1] = std::min(row[j + 1], before[j - 1] + 1);
        }
        before = std::move(above);
        above = std::move(row);
    }
    return std::min(above.last(), max + 1);
}

int allowedErrors(const QString &text)
{
    constexpr int maxErrors = 3;
    constexpr int lettersPerError = 4;
    return text.size() <= 2
               ? 0
               : std::min(maxErrors, static_cast<int>(text.size() + 2) / lettersPerError);
}

/// What it costs to take `given` for `word`; nothing where it is too unlike.
std::optional<int> costOf(const QString &given, const QString &word)
{
    constexpr int begun = 4;
    constexpr int perError = 20;
    if (given == word)
        return 0;
    if (isNumber(given) || isNumber(word))
        return std::nullopt;
    if (word.startsWith(given))
        return begun;
    const int max = allowedErrors(given);
    const int errors = editDistance(given, word, max);
    return errors <= max ? std::optional(perError * errors) : std::nullopt;
}

/// The cost of finding every given word in the name, each in a word of its own; nothing where one
/// is missing. `hasErrors` becomes whether one of them was mistyped.
std::optional<int> costOfWords(const QStringList &given, QStringList words, bool &hasErrors)
{
    constexpr int begunAtMost = 4;
    int cost = 0;
    for (const QString &wanted : given) {
        int best = -1;
        int least = 0;
        for (int i = 0; i < words.size(); ++i) {
            const auto each = costOf(wanted, words.at(i));
            if (each && (best < 0 || *each < least)) {
                best = i;
                least = *each;
            }
        }
        if (best < 0)
            return std::nullopt;
        hasErrors = hasErrors || least > begunAtMost;
        cost += least;
        words.removeAt(best);
    }
    // Numbers that are left belong to a word: "WGS 84" is no longer than "Carthage".
    return cost
           + static_cast<int>(std::count_if(words.cbegin(), words.cend(),
                                            [](const QString &word) { return !isNumber(word); }));
}

QString digitsOf(const QStringList &words)
{
    QString digits;
    for (const QString &word : words)
        digits += isNumber(word) ? word + QLatin1Char(' ') : QString();
    return digits;
}

/// Nothing for a name that the given one is not near to.
std::optional<int> distance(const QStringList &given, const QString &name)
{
    const QStringList words = wordsOf(name);
    const QString left = given.join(QString());
    const QString right = words.join(QString());
    if (left == right)
        return Same;
    std::optional<int> nearest;
    bool hasErrors = false;
    constexpr int scattered = 2;
    if (const auto cost = costOfWords(given, words, hasErrors)) {
        nearest =
            (hasErrors ? Mistyped : OfAllWords) + *cost + (right.contains(left) ? 0 : scattered);
    }
    if (!nearest && right.contains(left) && left.size() > 2)
        nearest = Continued + right.size() - left.size();
    const int max = allowedErrors(left);
    const int errors = editDistance(left, right, max);
    if (errors <= max && digitsOf(given) == digitsOf(words)) {
        constexpr int perError = 20;
        const int mistyped = Mistyped + perError * errors;
        nearest = std::min(nearest.value_or(mistyped), mistyped);
    }
    return nearest;
}

} // namespace

QStringList nearNames(const QString &given, const QStringList &known, int max)
{
    struct Near
    {
        int distance;
        QString name;
    };
    const QStringList words = wordsOf(given);
    if (words.isEmpty() || given.size() > maxLength)
        return {};
    QVector<Near> found;
    for (const QString &name : known) {
        if (const auto far = distance(words, name))
            found += {*far, name};
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Near &a, const Near &b) { return a.distance < b.distance; });
    QStringList names;
    for (const Near &near : found) {
        const bool isWorse = found.first().distance == Same && near.distance != Same;
        if (names.size() < max && !isWorse && !names.contains(near.name))
            names += near.name;
    }
    return names;
}

QString hintAt(const QStringList &names)
{
    if (names.isEmpty())
        return {};
    QString list = names.mid(0, names.size() - 1).join(QLatin1String(", "));
    if (names.size() > 1)
        list += QLatin1Char(' ') + QStringLiteral("or") + QLatin1Char(' ');
    return QStringLiteral("did you mean %1?").arg(list + names.last());
}

} // namespace KelStd
