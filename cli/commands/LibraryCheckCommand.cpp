#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/systems/ConfiguredDisplay.h>
#include <cli/systems/SystemFile.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/library/OfferedNames.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>

#include <QtCore/QFileInfo>
#include <QtCore/QMap>
#include <QtCore/QSet>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// What was found in one place, printed below the place's own line.
class Findings
{
public:
    explicit Findings(Console &console) : m_console(console) {}

    /// Loading passes over it.
    void skipped(const QString &what, const QString &reason)
    {
        add(what, QStringLiteral("skipped: ") + reason);
        ++m_skipped;
    }
    /// It is loaded and cannot be used as it is.
    void problem(const QString &what, const QString &reason)
    {
        add(what, QStringLiteral("problem: ") + reason);
        ++m_problems;
    }
    /// Reading takes it otherwise than it is written.
    void misunderstood(const QString &what, const QList<io::DocumentFinding> &found)
    {
        for (const io::DocumentFinding &each : found)
            problem(what, io::describedFinding(each));
    }
    /// Nothing is wrong, but worth knowing.
    void note(const QString &what, const QString &text)
    {
        add(what, QStringLiteral("note: ") + text);
        ++m_notes;
    }

    /// Prints a place and what was found there since the last one.
    void print(const QString &place, const QString &state)
    {
        constexpr int placeWidth = 13;
        m_console.print(place.leftJustified(placeWidth) + state);
        std::stable_sort(m_pending.begin(), m_pending.end(),
                         [](const auto &a, const auto &b) { return a.first < b.first; });
        QString last;
        for (const auto &[what, text] : m_pending) {
            if (what != last)
                m_console.print(QLatin1String("  ") + shown(what));
            last = what;
            printWrapped(text);
        }
        m_pending.clear();
    }

    ExitStatus finish()
    {
        m_console.print({});
        m_console.print(m_skipped + m_problems + m_notes == 0
                            ? QStringLiteral("Everything is loaded.")
                            : QStringLiteral("skipped: %1, problems: %2, notes: %3")
                                  .arg(m_skipped)
                                  .arg(m_problems)
                                  .arg(m_notes));
        return m_skipped + m_problems == 0 ? ExitStatus::Success : ExitStatus::SomeFailed;
    }

private:
    void add(const QString &what, const QString &text) { m_pending.append({what, text}); }

    void printWrapped(const QString &text)
    {
        constexpr int lineWidth = 80;
        const QString indent(4, QLatin1Char(' '));
        QString line = indent;
        for (const QString &word : shown(text).split(QLatin1Char(' '))) {
            if (line.size() + 1 + word.size() > lineWidth && line != indent) {
                m_console.print(line);
                line = indent + QLatin1String("  ");
            }
            line += (line.endsWith(QLatin1Char(' ')) ? QString() : QStringLiteral(" ")) + word;
        }
        m_console.print(line);
    }

    Console &m_console;
    QList<QPair<QString, QString>> m_pending;
    int m_skipped = 0;
    int m_problems = 0;
    int m_notes = 0;
};

/// Looks at one directory as loading does: in the same order, with the same readers.
class DirectoryCheck
{
public:
    DirectoryCheck(const LibraryDirectory &library, RecordKind kind, bool hasProj,
                   Findings &findings)
        : m_library(library), m_directory(library.path(library::placeOf(kind))), m_kind(kind),
          m_hasProj(hasProj), m_findings(findings)
    {}

    /// Returns the names that loading finds.
    QSet<QString> run()
    {
        const QString place = library::placeName(library::placeOf(m_kind));
        if (!m_directory.exists()) {
            m_findings.print(place, QStringLiteral("there is no such directory"));
            return {};
        }
        if (!library::isListable(m_directory.absolutePath())) {
            m_findings.skipped(place, QStringLiteral("the directory cannot be read"));
            m_findings.print(place, QStringLiteral("not read"));
            return {};
        }
        const QStringList documents = library::documentsOf(m_library, m_kind);
        passOverOthers(documents);
        int read = 0;
        for (const QString &fileName : documents)
            read += readDocument(fileName) ? 1 : 0;
        for (auto file = m_fileOf.constBegin(); file != m_fileOf.constEnd(); ++file)
            examine(file.key(), file.value());
        m_findings.print(place,
                         QStringLiteral("%1 of %2 documents read").arg(read).arg(documents.size()));
        const QStringList names = m_fileOf.keys();
        return {names.cbegin(), names.cend()};
    }

private:
    void passOverOthers(const QStringList &documents)
    {
        const QStringList entries = m_directory.entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        for (const QString &entry : entries) {
            if (documents.contains(entry))
                continue;
            const QFileInfo info(m_directory.absolutePath() + QLatin1Char('/') + entry);
            m_findings.skipped(entry, info.isDir() ? QStringLiteral("it is a directory")
                                      : info.isSymLink() && !info.exists()
                                          ? QStringLiteral("it is a link to nothing")
                                      : !info.isFile() ? QStringLiteral("it is no regular file")
                                      : info.isHidden()
                                          ? QStringLiteral("it is hidden")
                                          : QStringLiteral("its name does not end in .xml"));
        }
    }

    bool readDocument(const QString &fileName)
    {
        const QString path = library::documentPath(m_library, m_kind, fileName);
        io::DocumentFailure failure;
        QList<io::DocumentFinding> found;
        const auto records = library::reviewRecords(path, m_kind, found, failure);
        if (!records) {
            m_findings.skipped(fileName, io::describedFailure(failure));
            return false;
        }
        m_findings.misunderstood(fileName, found);
        if (records->isEmpty())
            m_findings.note(fileName,
                            QStringLiteral("it holds no %1").arg(library::titleOf(m_kind)));
        QSet<QString> seen;
        for (const LibraryRecord &record : *records) {
            const QString name = library::nameOf(record);
            if (seen.contains(name)) {
                m_findings.skipped(fileName, QStringLiteral("of several records called %1 the last "
                                                            "one stays")
                                                 .arg(inQuotes(name)));
            } else {
                take(name, fileName, records->size() > 1);
            }
            seen.insert(name);
        }
        if (m_hasProj && !records->isEmpty()
            && std::holds_alternative<Coord>(records->constFirst()))
            tryDefinitions(fileName, std::get<Coord>(records->constFirst()));
        return true;
    }

    void take(const QString &name, const QString &fileName, bool hasOthers)
    {
        const QString before = m_fileOf.value(name);
        if (!before.isEmpty()) {
            m_findings.skipped(before, QStringLiteral("%1 holds %2, too, and is listed after it by "
                                                      "the file system, which may change")
                                           .arg(fileName, inQuotes(name)));
        }
        m_fileOf.insert(name, fileName);
        if (hasOthers)
            m_shared.insert(fileName);
    }

    void tryDefinitions(const QString &fileName, const Coord &coord)
    {
        QString reason;
        const auto definitions = definitionsOf(coord, reason);
        if (!definitions || !acceptedByProj(*definitions, reason))
            m_findings.problem(fileName, reason);
    }

    /// Whether the program could change the entry; the standard systems are never changed.
    void examine(const QString &name, const QString &fileName)
    {
        if (m_kind == RecordKind::Standard)
            return;
        if (name.trimmed().isEmpty()) {
            m_findings.note(fileName, QStringLiteral("its record has no name; it cannot be "
                                                     "replaced or removed"));
        } else if (m_shared.contains(fileName)) {
            if (!m_notedAsShared.contains(fileName)) {
                m_findings.note(fileName, QStringLiteral("it holds several records, which cannot "
                                                         "be replaced or removed one by one"));
            }
            m_notedAsShared.insert(fileName);
        } else if (fileName != library::safeFileName(name)) {
            m_findings.note(fileName, QStringLiteral("it holds %1: replacing or removing that "
                                                     "looks for another file name and fails")
                                          .arg(inQuotes(name)));
        }
    }

    const LibraryDirectory &m_library;
    QDir m_directory;
    RecordKind m_kind;
    bool m_hasProj;
    Findings &m_findings;
    QMap<QString, QString> m_fileOf; ///< the file that each name is loaded from
    QSet<QString> m_shared;          ///< files with several records
    QSet<QString> m_notedAsShared;
};

void checkBase(const LibraryDirectory &library, Findings &findings)
{
    const QString place = library::placeName(LibraryPlace::Base);
    const QString path = library.path(LibraryPlace::Base);
    if (!QFileInfo::exists(path)) {
        findings.print(place, QStringLiteral("there is no such file; the base system stays as it "
                                             "is"));
        return;
    }
    io::DocumentFailure failure;
    QList<io::DocumentFinding> found;
    const auto records = library::reviewRecords(path, RecordKind::Custom, found, failure);
    if (records)
        findings.misunderstood(place, found);
    else
        findings.skipped(place, io::describedFailure(failure));
    findings.print(
        place,
        records ? QStringLiteral("read: %1").arg(inQuotes(library::nameOf(records->constFirst())))
                : QStringLiteral("not read; the base system stays as it is"));
}

void checkOffered(const LibraryDirectory &library, const QSet<QString> &systems, Findings &findings)
{
    const QString place = library::placeName(LibraryPlace::Offered);
    const QString path = library.path(LibraryPlace::Offered);
    if (!QFileInfo::exists(path)) {
        findings.print(place, QStringLiteral("there is no such file; no system is offered"));
        return;
    }
    QList<QPair<QString, QString>> names;
    io::DocumentFailure failure = library::fileFailure(path);
    if (failure || !library::readOfferedNames(path, names, failure)) {
        findings.skipped(place, io::describedFailure(failure));
        findings.print(place, QStringLiteral("not read"));
        return;
    }
    int known = 0;
    for (const auto &[name, shownName] : names) {
        if (systems.contains(name))
            ++known;
        else
            findings.skipped(inQuotes(name), QStringLiteral("it is offered, but the library has no "
                                                            "such system"));
    }
    findings.print(place,
                   QStringLiteral("%1 of %2 names are systems").arg(known).arg(names.size()));
}

void checkDisplay(const LibraryDirectory &library, Findings &findings)
{
    const QString place = library::placeName(LibraryPlace::Display);
    const QString path = library.path(LibraryPlace::Display);
    if (!QFileInfo::exists(path)) {
        findings.print(place, QStringLiteral("there is no such file; the defaults stay"));
        return;
    }
    const DisplayFile file = readDisplayFile(path);
    if (!file.config)
        findings.skipped(place, file.fault);
    else if (!file.fault.isEmpty())
        findings.problem(place, file.fault);
    findings.print(place, file.config ? QStringLiteral("read") : QStringLiteral("not read"));
}

} // namespace

ExitStatus runLibraryCheck(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS]"),
                     QStringLiteral("Reads every file of a library's seven places and tells which "
                                    "of them loading\nskips, and why; and which systems PROJ "
                                    "refuses. No file of a library is changed."),
                     QStringLiteral("Without --dir, a home directory without a library gets one "
                                    "first, as with every\ncommand that reads it.\n\n"
                                    "Exit status: 0 everything is loaded, 1 something is skipped "
                                    "or has a problem,\n2 usage, 3 there is no library."));
    line.setExamples(QStringLiteral("kelstd library check"),
                     QStringLiteral("kelstd library check --dir team"));
    addDirectoryOption(line);
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    const ProjEnvironment environment;
    if (!environment.isReady()) {
        console.report(QStringLiteral("note: PROJ is not ready ('kelstd doctor' tells why), so "
                                      "that no definition is tried"));
    }

    console.print(library->path());
    Findings findings(console);
    checkBase(*library, findings);
    QSet<QString> systems;
    for (const RecordKind kind : {RecordKind::Ellipsoid, RecordKind::Projection, RecordKind::Custom,
                                  RecordKind::Standard}) {
        const auto names = DirectoryCheck(*library, kind, environment.isReady(), findings).run();
        if (kind == RecordKind::Custom || kind == RecordKind::Standard)
            systems += names;
    }
    checkOffered(*library, systems, findings);
    checkDisplay(*library, findings);
    return findings.finish();
}

} // namespace KelStd::cli
