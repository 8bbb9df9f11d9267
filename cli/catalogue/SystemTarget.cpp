#include <cli/catalogue/SystemTarget.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryOptions.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/terminal/WithoutRaising.h>

#include <KelStd/io/SystemDocument.h>
#include <KelStd/library/LibraryLock.h>
#include <KelStd/library/LibraryRecord.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

const QString outputOption = QStringLiteral("output");
const QString forceOption = QStringLiteral("force");
const QString addOption = QStringLiteral("add");
const QString asOption = QStringLiteral("as");

ExitStatus fail(const QString &reason, ExitStatus status, Console &console)
{
    console.report(reason);
    return status;
}

void sayDone(const QString &text, bool isQuiet, Console &console)
{
    if (isQuiet)
        console.noteChange(text);
    else
        console.printChange(text);
}

/// `io::writeSystem`, with what it raises as the reason.
bool write(const Coord &coord, const SystemOrigin &origin, const QString &file, QString &reason)
{
    io::DocumentFailure failure;
    bool isWritten = false;
    if (!withoutRaising([&] { isWritten = io::writeSystem(coord, origin, file, failure); }, reason))
        return false;
    if (!isWritten)
        reason = io::describedFailure(failure);
    return isWritten;
}

} // namespace

void SystemTarget::addOptions(CommandLine &line)
{
    line.addOption({{QStringLiteral("o"), outputOption},
                    QStringLiteral("The file to write the document to."),
                    QStringLiteral("FILE")});
    line.addOption({forceOption, QStringLiteral("Replace a file that exists.")});
    line.addOption({addOption, QStringLiteral("Add the system to a library, as a custom\none.")});
    line.addOption({asOption, QStringLiteral("Add it under this name, which becomes its\nown."),
                    QStringLiteral("NAME")});
    addDirectoryOption(line);
}

bool SystemTarget::takeOptions(const CommandLine &line, QString &mistake)
{
    m_file = onDisk(line.value(outputOption));
    m_isForced = line.isSet(forceOption);
    m_addsToLibrary = line.isSet(addOption);
    m_name = library::withoutMarks(line.value(asOption));
    if (line.isSet(outputOption) && m_addsToLibrary)
        mistake = QStringLiteral("give one of -o and --add");
    else if (line.isSet(outputOption) && m_file.isEmpty())
        mistake = QStringLiteral("-o has no file's name");
    else if (m_file == QLatin1String("-"))
        mistake = QStringLiteral("-o is for a file; without it the document goes to standard "
                                 "output");
    else if (line.isSet(asOption) && !m_addsToLibrary)
        mistake = QStringLiteral("--as goes with --add");
    else if (line.isSet(asOption))
        mistake = library::nameFault(m_name);
    return mistake.isEmpty();
}

std::optional<ExitStatus> SystemTarget::refusal(const QString &source, Console &console) const
{
    if (m_file.isEmpty())
        return std::nullopt;
    if (streams::areSameFile(m_file, onDisk(source))) {
        return fail(QStringLiteral("cannot write %1: it is the source").arg(m_file),
                    ExitStatus::Usage, console);
    }
    if (QFileInfo(m_file).isDir()) {
        return fail(QStringLiteral("cannot write %1: it is a directory").arg(m_file),
                    ExitStatus::Environment, console);
    }
    if (QFileInfo::exists(m_file) && !m_isForced) {
        return fail(QStringLiteral("%1 exists; --force replaces it").arg(m_file), ExitStatus::Usage,
                    console);
    }
    return std::nullopt;
}

ExitStatus SystemTarget::put(const Coord &coord, const SystemOrigin &origin,
                             const CommandLine &line, bool isQuiet, Console &console) const
{
    return m_addsToLibrary ? addToLibrary(coord, origin, line, isQuiet, console)
                           : writeFile(coord, origin, isQuiet, console);
}

ExitStatus SystemTarget::print(const Coord &coord, const SystemOrigin &origin, Console &console)
{
    QByteArray bytes;
    QString reason;
    io::DocumentFailure failure;
    bool isMade = false;
    const auto make = [&] { isMade = io::systemDocument(coord, origin, bytes, failure); };
    if (!withoutRaising(make, reason) || !isMade) {
        return fail(QStringLiteral("cannot write the document: %1")
                        .arg(reason.isEmpty() ? io::describedFailure(failure) : reason),
                    ExitStatus::Environment, console);
    }
    console.write(bytes);
    return ExitStatus::Success;
}

ExitStatus SystemTarget::writeFile(const Coord &coord, const SystemOrigin &origin, bool isQuiet,
                                   Console &console) const
{
    QString reason;
    if (!write(coord, origin, m_file, reason)) {
        return fail(QStringLiteral("cannot write %1: %2").arg(m_file, reason),
                    ExitStatus::Environment, console);
    }
    sayDone(QStringLiteral("Wrote %1: %2").arg(m_file, shown(coord.coord_name)), isQuiet, console);
    return ExitStatus::Success;
}

ExitStatus SystemTarget::addToLibrary(const Coord &given, const SystemOrigin &origin,
                                      const CommandLine &line, bool isQuiet, Console &console) const
{
    Coord coord = given;
    if (!m_name.isEmpty())
        coord.coord_name = m_name;
    const QString name = coord.coord_name;
    QString fault = library::nameFault(name);
    if (fault.isEmpty())
        fault = library::codeNameFault(name, origin);
    if (!fault.isEmpty()) {
        return fail(QStringLiteral("%1; give it another one with --as").arg(fault),
                    ExitStatus::SomeFailed, console);
    }
    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    LibraryLock lock(*library);
    if (const auto failure = lock.acquire())
        return fail(failure.text, ExitStatus::Environment, console);
    if (!loadRecords(*library, console))
        return ExitStatus::Environment;
    if (const auto taken = library::keyTaking(RecordKind::Custom, name)) {
        return fail(QStringLiteral("the name %1 is taken by the %2 %3; give it another one with "
                                   "--as")
                        .arg(inQuotes(name), library::titleOf(taken->kind), inQuotes(taken->name)),
                    ExitStatus::SomeFailed, console);
    }
    const QString file = library::recordFile(*library, RecordKind::Custom, name);
    if (QFileInfo::exists(file) || QFileInfo(file).isSymLink()) {
        return fail(QStringLiteral("%1 exists and is kept; give the system another name with --as")
                        .arg(file),
                    ExitStatus::SomeFailed, console);
    }
    const QString directory = library->path(library::placeOf(RecordKind::Custom));
    if (!QDir().mkpath(directory)) {
        return fail(QStringLiteral("cannot create %1").arg(directory), ExitStatus::Environment,
                    console);
    }
    // As the databases name systems: "Amersfoort / RD New".
    StandardLibrary::getInstance().setSafeFileNames(true);
    QString reason;
    bool isAdded = false;
    if (!withoutRaising([&] { isAdded = library::addRecord(name, coord, origin); }, reason)
        || !isAdded) {
        return fail(reason.isEmpty() ? StandardLibrary::getInstance().lastFailure().text : reason,
                    ExitStatus::Environment, console);
    }
    sayDone(QStringLiteral("added the custom system %1: %2").arg(inQuotes(name), file), isQuiet,
            console);
    return ExitStatus::Success;
}

} // namespace KelStd::cli
