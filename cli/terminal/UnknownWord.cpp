#include <cli/terminal/UnknownWord.h>

#include <KelStd/text/NearNames.h>

namespace KelStd::cli {

namespace {

QString plainLetters(const QString &text)
{
    QString letters;
    for (const QChar c : text) {
        if (c.isLetterOrNumber())
            letters += c.toLower();
    }
    return letters;
}

QString quotedHint(const QStringList &near)
{
    QStringList quoted;
    for (const QString &name : near)
        quoted += QLatin1Char('\'') + name + QLatin1Char('\'');
    return quoted.isEmpty() ? QString() : QLatin1String("; ") + hintAt(quoted);
}

} // namespace

QString unknownWord(const QString &option, const QString &word, const QString &kind,
                    const QStringList &words)
{
    const QString hint = hintAt(nearNames(word, words));
    const QString there =
        hint.isEmpty() ? QStringLiteral("there are") : hint + QStringLiteral(" There are");
    return QStringLiteral("--%1 '%2' is no %3; ").arg(option, word, kind) + there + QLatin1Char(' ')
           + words.join(QLatin1String(", "));
}

QString nearUnitHint(const QString &given, const QStringList &known)
{
    QStringList same;
    for (const QString &unit : known) {
        if (plainLetters(unit) == plainLetters(given))
            same += unit;
    }
    return quotedHint(same);
}

QString nearHint(const QString &given, const QStringList &known)
{
    return quotedHint(nearNames(given, known));
}

} // namespace KelStd::cli
