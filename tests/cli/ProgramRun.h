#pragma once

#include "support/Mentions.h"
#include "support/TemporaryHome.h"

#include <QtCore/QDir>
#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace KelStd::test {

/// How one run of the program ended, and what it wrote.
struct ProgramResult
{
    int status = -1; ///< -1: it did not start, did not end, or crashed
    QString out;
    QString err;

    QStringList outLines() const;
    QStringList errLines() const;
};

/// The program, run as a user runs it, with a home directory of its own in which PROJ is prepared.
class ProgramRun
{
public:
    ProgramRun();

    const TemporaryHome &home() const { return m_home; }

    /// Sets, or with a null text removes, a variable of the program's environment.
    void setVariable(const QString &name, const QString &value);

    /// Does something in the new process before the program starts: changes its streams.
    void beforeStart(std::function<void()> action) { m_beforeStart = std::move(action); }

    /// A file in the home directory; returns its path.
    QString file(const QString &name, const QByteArray &bytes) const;

    ProgramResult run(const QStringList &arguments, const QByteArray &input = {}) const;

    /// Runs `kelstd convert` with this system of the test data on `input`.
    ProgramResult convert(const QString &system, const QByteArray &input,
                          const QStringList &options = {}) const;

    /// A process that is set up but not started.
    std::unique_ptr<QProcess> process(const QStringList &arguments) const;

private:
    TemporaryHome m_home;
    QProcessEnvironment m_environment;
    std::function<void()> m_beforeStart;
};

/// A document of the test data with texts replaced, each of which must be there.
QByteArray editedSystem(const QString &system, const QMap<QString, QString> &replacements);

/// The lines of CSV output without names that need quoting, by the names in the header.
QList<QMap<QString, QString>> csvRows(const QString &csv);

/// The number in a column of a row.
double numberIn(const QMap<QString, QString> &row, const QString &column);

} // namespace KelStd::test
