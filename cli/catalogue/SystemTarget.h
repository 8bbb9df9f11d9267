#pragma once

#include <cli/terminal/ExitStatus.h>

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// Where a command puts a coordinate system that it makes: into a file (-o), among the custom
/// systems of a library (--add), or nowhere in particular.
class SystemTarget
{
public:
    /// Adds the options -o, --force, --add, --as and --dir.
    static void addOptions(CommandLine &line);

    /// Takes them; false with the mistake.
    bool takeOptions(const CommandLine &line, QString &mistake);

    /// Whether a file or a library was named.
    bool isNamed() const { return m_addsToLibrary || !m_file.isEmpty(); }

    /// Whether the place is free, as far as that is known before there is a system. Otherwise how
    /// the command ends, after a report. `source` is a file that must not be written over; it may
    /// be none.
    std::optional<ExitStatus> refusal(const QString &source, Console &console) const;

    /// Puts the system there, whole or not at all, and prints that it did. With `isQuiet` standard
    /// output is left to something else.
    ExitStatus put(const Coord &coord, const SystemOrigin &origin, const CommandLine &line,
                   bool isQuiet, Console &console) const;

    /// Prints the document to standard output.
    static ExitStatus print(const Coord &coord, const SystemOrigin &origin, Console &console);

private:
    ExitStatus writeFile(const Coord &coord, const SystemOrigin &origin, bool isQuiet,
                         Console &console) const;
    ExitStatus addToLibrary(const Coord &coord, const SystemOrigin &origin, const CommandLine &line,
                            bool isQuiet, Console &console) const;

    QString m_file;
    QString m_name; ///< of --as
    bool m_isForced = false;
    bool m_addsToLibrary = false;
};

} // namespace KelStd::cli
