#include <cli/library/UnknownName.h>

#include <cli/library/DirectoryOption.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/RecordNames.h>
#include <KelStd/library/SystemLookup.h>
#include <KelStd/text/NearNames.h>

#include <QtCore/QMap>

namespace KelStd::cli {

QString unknownName(const QString &name, const QList<RecordKind> &kinds, const CommandLine &line,
                    const QList<QPair<QString, QString>> &elsewhere)
{
    QStringList known;
    for (const RecordKind kind : kinds)
        known += library::namesOf(kind);
    known.removeDuplicates();
    const bool isSystem = kinds == library::systemKinds();
    const QString title = kinds.size() == 1 ? library::titleOf(kinds.first())
                          : isSystem        ? QStringLiteral("system")
                                            : QStringLiteral("entry");
    QMap<QString, QString> called;
    for (const QString &each : known)
        called.insert(each, inQuotes(each));
    for (const auto &other : elsewhere) {
        if (!called.contains(other.first))
            called.insert(other.first, other.second);
        known += other.first;
    }
    QStringList similar;
    for (const QString &each : library::similarNames(name, known))
        similar += called.value(each);
    return QStringLiteral("the library has no %1 %2; %3'kelstd library list'%4 lists them")
        .arg(title, inQuotes(name),
             similar.isEmpty() ? QString() : hintAt(similar) + QLatin1Char(' '),
             namesLibrary(line) ? QStringLiteral(" with the same --dir") : QString());
}

} // namespace KelStd::cli
