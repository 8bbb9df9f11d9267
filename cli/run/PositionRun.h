#pragma once

#include <cli/run/BlockWork.h>
#include <cli/run/Input.h>
#include <cli/run/LineBlocks.h>
#include <cli/run/RunOutput.h>

#include <KelStd/positions/PositionParser.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstddef>
#include <optional>
#include <vector>

namespace KelStd::cli {

/// A run over the lines of inputs, one behind the other, of any length in the same memory: each is
/// taken in turn, what cannot be read or taken is reported as INPUT:LINE: reason, and the run goes
/// on. The output and the reports stand in the order of the input, however many threads work.
///
/// Told to stop, it prints what it has read and leaves whole lines.
class PositionRun
{
public:
    /// `inputs`: one at least. Each has its own headings, read by a copy of the `parser`. What they
    /// have besides positions must be the same in all.
    PositionRun(std::vector<Input *> inputs, positions::PositionParser parser, PositionJob &job,
                Console &console)
        : m_inputs(std::move(inputs)), m_job(job), m_console(console), m_output(job, console),
          m_parser(std::move(parser))
    {}

    /// On how many threads positions are taken.
    void setThreads(std::size_t threads) { m_threads = threads; }

    /// Where the lines go that failed.
    void setRejects(RejectsFile &rejects) { m_output.setRejects(rejects); }

    /// Where what is printed goes instead of standard output.
    void setSink(OutputSink &sink) { m_output.setSink(sink); }

    /// To the end of the last input, or until nothing can be printed any more.
    ExitStatus run();

private:
    /// Nothing: the run goes on.
    using State = std::optional<RunOutput::End>;

    RunOutput::End runOver();
    void reportNotes(const positions::PositionParser &parser);
    State readOrder(BlockWork &work);
    State takeEnd(BlockWork &work);
    State readRest(const positions::PositionParser &parser);
    State next(LineBlock &block);
    State take(const BlockResult &result);
    QStringList remarks() const;
    QStringList remarkOnHeights() const;
    Input &input() const { return *m_inputs[m_current]; }

    std::vector<Input *> m_inputs;
    std::size_t m_current = 0;
    std::optional<LineBlocks> m_blocks;               ///< of the current input
    std::optional<positions::InputColumns> m_columns; ///< of the inputs before
    QStringList m_notes;                              ///< that were said
    PositionJob &m_job;
    Console &m_console;
    RunOutput m_output;
    positions::PositionParser m_parser;
    std::size_t m_threads = 1;
    bool m_fillsHeights = false; ///< one of the inputs has heights beside a given one
    qint64 m_heightsTaken = 0;   ///< that were given
};

} // namespace KelStd::cli
