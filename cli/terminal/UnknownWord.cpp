#include <cli/terminal/UnknownWord.h>

#include <KelStd/text/NearNames.h>

namespace KelStd::cli {

QString unknownWord(const QString &option, const QString &word, const QString &kind,
                    const QStringList &words)
{
    const QString hint = hintAt(nearNames(word, words));
    const QString there =
        hint.isEmpty() ? QStringLiteral("there are") : hint + QStringLiteral(" There are");
    return QStringLiteral("--%1 '%2' is no %3; ").arg(option, word, kind) + there + QLatin1Char(' ')
           + words.join(QLatin1String(", "));
}

QString nearHint(const QString &given, const QStringList &known)
{
    QStringList quoted;
    for (const QString &name : nearNames(given, known))
        quoted += QLatin1Char('\'') + name + QLatin1Char('\'');
    return quoted.isEmpty() ? QString() : QLatin1String("; ") + hintAt(quoted);
}

} // namespace KelStd::cli
