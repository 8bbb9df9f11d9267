#include <cli/library/UnknownName.h>

#include <cli/library/DirectoryOption.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/RecordNames.h>

namespace KelStd::cli {

QString unknownName(const QString &name, const QList<RecordKind> &kinds, const CommandLine &line)
{
    QStringList known;
    for (const RecordKind kind : kinds)
        known += library::namesOf(kind);
    known.removeDuplicates();
    const bool isSystem = kinds == QList<RecordKind>{RecordKind::Custom, RecordKind::Standard};
    const QString title = kinds.size() == 1 ? library::titleOf(kinds.first())
                          : isSystem        ? QStringLiteral("system")
                                            : QStringLiteral("entry");
    QStringList similar;
    for (const QString &each : library::similarNames(name, known))
        similar += inQuotes(each);
    return QStringLiteral("the library has no %1 %2; %3'kelstd library list'%4 lists them")
        .arg(title, inQuotes(name),
             similar.isEmpty()
                 ? QString()
                 : QStringLiteral("did you mean %1? ").arg(similar.join(QLatin1String(" or "))),
             namesLibrary(line) ? QStringLiteral(" with the same --dir") : QString());
}

} // namespace KelStd::cli
