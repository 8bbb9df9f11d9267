#pragma once

#include <cli/run/BlockResult.h>
#include <cli/run/OutputSink.h>
#include <cli/run/PositionJob.h>
#include <cli/run/RejectsFile.h>
#include <cli/terminal/ExitStatus.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

class Console;
class ProgressBar;

/// What a run over positions prints, reports and keeps, in the order of its input: results are
/// given to it one behind the other.
class RunOutput
{
public:
    /// How a run ends.
    enum class End
    {
        Done,
        Stopped, ///< as it was told to
        InputFailed,
        BadHeader,
        OutputFailed
    };

    RunOutput(PositionJob &job, Console &console) : m_job(job), m_console(console) {}

    /// What messages call the input, and one of what it consists of: "line". Of an input before
    /// is said what is to be said of it.
    void setInput(const QString &name, const QString &item);

    /// Where what failed goes.
    void setRejects(RejectsFile &rejects) { m_rejects = &rejects; }
    /// Where what is printed goes instead of standard output.
    void setSink(OutputSink &sink) { m_sink = &sink; }
    /// Whether the file is written although the run does not come to its end, with what came
    /// before.
    void setLive(bool isLive) { m_isLive = isLive; }
    bool keepsRejects() const { return m_rejects != nullptr; }

    /// What shows how far the run is; null for nothing.
    void setProgress(ProgressBar *progress) { m_progress = progress; }

    /// What stands above the first position, and above rejected lines.
    void setHeading(const QByteArray &heading) { m_heading = heading; }
    void setHeaderLine(const QByteArray &line) { m_headerLine = line; }

    /// Prints what became of the positions that come next; false when nothing can be printed any
    /// more.
    bool take(const BlockResult &result);

    qint64 lastLine() const { return m_lastLine; }

    /// Whether the input has had no position, not even one that failed.
    bool isWithoutPositions() const { return m_taken + m_failed == m_before; }

    /// Ends the output and says how many failed. `error`: of an input that failed. `remarks`: to be
    /// said besides.
    ExitStatus finish(End end, const QString &error, const QStringList &remarks = {});

private:
    void reportMarks(const BlockResult &result);
    void reportRemarks();
    void print(const char *bytes, qint64 size);
    void write(const QByteArray &bytes);
    void printHeading();
    void reportSinkFailure();
    void reportUnwritten();
    bool finishSink();
    ExitStatus finishPartly(ExitStatus status);
    ExitStatus finishBadHeader();
    ExitStatus outputFailed();
    ExitStatus finishRejects(ExitStatus status);

    PositionJob &m_job;
    Console &m_console;
    QString m_inputName;
    QString m_item = QStringLiteral("line");
    RejectsFile *m_rejects = nullptr;
    OutputSink *m_sink = nullptr;
    ProgressBar *m_progress = nullptr;
    QByteArray m_heading;
    QByteArray m_headerLine; ///< of the input
    QByteArray m_passed;     ///< the lines of the input that are passed over
    bool m_isLive = false;
    bool m_hasHeading = false;
    bool m_hasPosition = false;
    bool m_hasOtherEncoding = false; ///< what was said of this input
    qint64 m_firstWithComma = 0;     ///< decimal commas, and points, of this input
    qint64 m_firstWithPoint = 0;
    qint64 m_taken = 0;
    qint64 m_takenBefore = 0; ///< of the inputs before
    qint64 m_failed = 0;
    qint64 m_before = 0; ///< positions of the inputs before, those that failed, too
    qint64 m_lastLine = 0;
    qint64 m_doneBytes = 0;
    Notices m_notices;
};

} // namespace KelStd::cli
