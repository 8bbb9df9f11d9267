#include <cli/site/ReportTarget.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/terminal/WholeFile.h>

#include <QtCore/QFileInfo>

#include <algorithm>

namespace KelStd::cli {

namespace {

const QString reportOption = QStringLiteral("report");

std::optional<ExitStatus> refuse(const QString &reason, ExitStatus status, Console &console)
{
    console.report(reason);
    return status;
}

} // namespace

void ReportTarget::addOption(CommandLine &line)
{
    line.addOption({reportOption,
                    QStringLiteral("Write a page for the client, with a plan of the\n"
                                   "site."),
                    QStringLiteral("FILE.html")});
}

bool ReportTarget::takeOptions(const CommandLine &line, QString &mistake)
{
    m_file = onDisk(line.value(reportOption));
    m_isForced = line.isSet(QStringLiteral("force"));
    if (line.isSet(reportOption) && (m_file.isEmpty() || m_file == QLatin1String("-")))
        mistake = QStringLiteral("--report has no file's name");
    return mistake.isEmpty();
}

std::optional<ExitStatus> ReportTarget::refusal(const QStringList &others, Console &console) const
{
    if (!isNamed())
        return std::nullopt;
    const bool isOther = std::any_of(others.begin(), others.end(), [this](const QString &other) {
        return !other.isEmpty()
               && (placeOf(onDisk(other)) == placeOf(m_file)
                   || streams::areSameFile(m_file, onDisk(other)));
    });
    const QString cannot = QStringLiteral("cannot write %1: ").arg(m_file);
    if (isOther) {
        return refuse(cannot + QStringLiteral("it is another file of this command"),
                      ExitStatus::Usage, console);
    }
    const QFileInfo place(placeOf(m_file));
    if (place.isDir())
        return refuse(cannot + QStringLiteral("it is a directory"), ExitStatus::Environment,
                      console);
    if (place.exists() && !place.isFile()) {
        return refuse(cannot + QStringLiteral("it is no regular file"), ExitStatus::Environment,
                      console);
    }
    if (place.exists() && !m_isForced) {
        return refuse(QStringLiteral("%1 exists; --force replaces it").arg(m_file),
                      ExitStatus::Usage, console);
    }
    const QFileInfo folder(place.absolutePath());
    if (!folder.isDir()) {
        return refuse(cannot + QStringLiteral("there is no directory %1").arg(folder.filePath()),
                      ExitStatus::Environment, console);
    }
    if (!folder.isWritable()) {
        return refuse(cannot + QStringLiteral("%1 may not be written to").arg(folder.filePath()),
                      ExitStatus::Environment, console);
    }
    return std::nullopt;
}

ExitStatus ReportTarget::write(const QByteArray &page, bool isQuiet, Console &console) const
{
    if (!writeWholeFile(m_file, page, console))
        return ExitStatus::Environment;
    const QString done = QStringLiteral("Wrote %1: the report").arg(m_file);
    if (isQuiet)
        console.noteChange(done);
    else
        console.printChange(done);
    return ExitStatus::Success;
}

} // namespace KelStd::cli
