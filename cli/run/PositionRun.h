#pragma once

#include <cli/run/BlockWork.h>
#include <cli/run/Input.h>
#include <cli/run/LineBlocks.h>
#include <cli/run/PositionJob.h>
#include <cli/run/RejectsFile.h>
#include <cli/terminal/ExitStatus.h>

#include <KelStd/positions/PositionParser.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <cstddef>

namespace KelStd::cli {

class Console;
class ProgressBar;

/// A run over the positions of an input, of any length in the same memory: each is taken in turn,
/// what cannot be read or taken is reported as INPUT:LINE: reason, and the run goes on. The output
/// and the reports stand in the order of the input, however many threads work.
///
/// Told to stop, it prints what it has read and leaves whole lines.
class PositionRun
{
public:
    PositionRun(Input &input, positions::PositionParser parser, PositionJob &job, Console &console)
        : m_input(input), m_blocks(input), m_job(job), m_console(console),
          m_parser(std::move(parser))
    {}

    /// On how many threads positions are taken.
    void setThreads(std::size_t threads) { m_threads = threads; }

    /// Where the lines go that failed.
    void setRejects(RejectsFile &rejects) { m_rejects = &rejects; }

    /// To the end of the input, or until nothing can be printed any more.
    ExitStatus run();

private:
    enum class State
    {
        GoesOn,
        AtEnd,
        Stopped, ///< as it was told to
        InputFailed,
        BadHeader,
        OutputFailed
    };

    State readOrder(BlockWork &work);
    State takeEnd(BlockWork &work);
    State readRest(const positions::PositionParser &parser);
    State next(LineBlock &block);
    State take(const BlockResult &result);
    void reportRemarks();
    void print(const char *bytes, int size);
    void printHeading();
    ExitStatus finish(State state);
    ExitStatus outputFailed();
    ExitStatus finishRejects(ExitStatus status);

    Input &m_input;
    LineBlocks m_blocks;
    PositionJob &m_job;
    Console &m_console;
    positions::PositionParser m_parser;
    std::size_t m_threads = 1;
    RejectsFile *m_rejects = nullptr;
    ProgressBar *m_progress = nullptr;
    QByteArray m_heading;
    QByteArray m_headerLine; ///< of the input
    bool m_hasHeading = false;
    bool m_hasPosition = false;
    qint64 m_taken = 0;
    qint64 m_failed = 0;
    qint64 m_lastLine = 0;
    qint64 m_doneBytes = 0;
    Notices m_notices;
};

} // namespace KelStd::cli
