#pragma once

#include <cli/terminal/ExitStatus.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// Where a fit's page for the client goes: what --report says.
class ReportTarget
{
public:
    static void addOption(CommandLine &line);

    /// Takes --report and --force; false with the mistake.
    bool takeOptions(const CommandLine &line, QString &mistake);

    bool isNamed() const { return !m_file.isEmpty(); }

    /// Whether its place is free: it is none of the files that the command reads and writes
    /// besides, as they were given, and may be written as far as can be told. Otherwise how the
    /// command ends, after a report. To be asked before anything is stored.
    std::optional<ExitStatus> refusal(const QStringList &others, Console &console) const;

    /// Writes the page, whole or not at all. `isQuiet`: that it was written is no output, but is
    /// told where output fails.
    ExitStatus write(const QByteArray &page, bool isQuiet, Console &console) const;

private:
    QString m_file;
    bool m_isForced = false;
};

} // namespace KelStd::cli
