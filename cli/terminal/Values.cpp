#include <cli/terminal/Values.h>

#include <QtCore/QRegularExpression>

namespace KelStd::cli {

Values Values::ofWords(const QStringList &words)
{
    QList<Proposal> proposals;
    for (const QString &word : words)
        proposals.append({word, QString()});
    return ofSource([proposals](const TypedLine &) { return proposals; });
}

Values Values::namedIn(const QString &valueName)
{
    static const QRegularExpression words(QStringLiteral("\\A[a-z]+(\\|[a-z]+)+\\z"));
    static const QRegularExpression file(QStringLiteral("FILE|INPUT|\\.g(gf|tx)\\b"));
    if (words.match(valueName).hasMatch())
        return ofWords(valueName.split(QLatin1Char('|')));
    return file.match(valueName).hasMatch() ? ofFiles() : anything();
}

} // namespace KelStd::cli
