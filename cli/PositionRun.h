#pragma once

#include <cli/ExitStatus.h>
#include <cli/PositionReader.h>

#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace KelStd::cli {

class Console;

/// A run over the positions of an input: each is taken in turn, what cannot be read or taken is
/// reported as INPUT:LINE: reason, and the run goes on.
class PositionRun
{
public:
    /// To the end of the input, or until nothing can be printed any more.
    ExitStatus run();

protected:
    PositionRun(LineReader &lines, const PositionReader &reader, Console &console)
        : m_lines(lines), m_reader(reader), m_console(console)
    {}
    ~PositionRun() = default;
    PositionRun(const PositionRun &) = delete;
    PositionRun &operator=(const PositionRun &) = delete;

    /// Takes the position that was read: calls `begin` and prints, or fails with a `reason`.
    virtual bool take(const PositionReader &read, QString &reason) = 0;

    /// Prints what stands above all positions.
    virtual void printHeading(bool hasNames) = 0;

    /// Prints the heading unless it is there.
    void begin();

    /// Reports something of the line that was read last.
    void report(const QString &text);

private:
    ExitStatus finish();
    void fail(const QString &reason);

    LineReader &m_lines;
    PositionReader m_reader;
    Console &m_console;
    bool m_hasBegun = false;
    qint64 m_taken = 0;
    qint64 m_failed = 0;
};

} // namespace KelStd::cli
