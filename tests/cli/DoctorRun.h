#pragma once

#include "cli/ProgramRun.h"

namespace KelStd::test {

/// `kelstd doctor` in a home and with a program directory that a test spoils.
class DoctorTest : public testing::Test
{
protected:
    ProgramResult doctor(const QStringList &options = {}) const
    {
        return m_program.run(QStringList(QStringLiteral("doctor")) + options);
    }

    /// The mark before what was looked at, "ok", "problem" or "-"; empty when it was not.
    static QString markOf(const ProgramResult &result, const char *label)
    {
        for (const QString &line : result.outLines()) {
            if (line.mid(9).startsWith(QLatin1String(label)))
                return line.left(9).trimmed();
        }
        return {};
    }

    /// The line below a problem, without its arrow.
    static QString adviceOn(const ProgramResult &result, const char *label)
    {
        const QStringList lines = result.outLines();
        for (int i = 0; i + 1 < lines.size(); ++i) {
            if (lines.at(i).mid(9).startsWith(QLatin1String(label)))
                return lines.at(i + 1).section(QLatin1String("-> "), 1);
        }
        return {};
    }

    QString privateFile(const char *name) const
    {
        return m_program.home().path(QLatin1String("proj/") + QLatin1String(name));
    }

    /// An empty program directory instead of the build's; returns its path.
    QString ownProgramDirectory()
    {
        const QString path = m_program.home().path(QStringLiteral("program"));
        QDir().mkpath(path + QLatin1String("/proj"));
        m_program.setVariable(QStringLiteral("KELSTD_BIN_DIR"), path);
        return path;
    }

    ProgramRun m_program;
};

inline constexpr const char *examined[] = {
    "home directory",  "program directory",      "unpacking program",
    "PROJ archive",    "private PROJ directory", "marker",
    "PROJ library",    "PROJ database",          "PROJ release",
    "test conversion", "geoid models",           "datum-shift grids"};

} // namespace KelStd::test
