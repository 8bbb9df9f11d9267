#pragma once

#include <cli/run/RecordSource.h>
#include <cli/run/RunOutput.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace KelStd::cli {

/// A run over the records of a source; in all else as `PositionRun`, which is one over lines.
class RecordRun
{
public:
    RecordRun(RecordSource &source, PositionJob &job, Console &console)
        : m_source(source), m_job(job), m_console(console), m_output(job, console)
    {
        setInput(source.displayName());
    }

    /// On how many threads positions are taken.
    void setThreads(std::size_t threads) { m_threads = threads; }

    /// Where the records go that failed.
    void setRejects(RejectsFile &rejects) { m_output.setRejects(rejects); }

    /// Where what is printed goes instead of standard output.
    void setSink(OutputSink &sink) { m_output.setSink(sink); }

    /// To the end of the source, or until nothing can be printed any more.
    ExitStatus run();

private:
    /// Nothing: the run goes on.
    using State = std::optional<RunOutput::End>;

    struct RecordBlock
    {
        QString inputName;
        std::vector<SourceRecord> records; ///< of one input
        qint64 bytes = 0;                  ///< by how much the source went on
    };

    void setInput(const QString &name);
    State runOver();
    State next(RecordBlock &block);
    State take(const BlockResult &result);
    static BlockResult resultOf(ResultMaker &maker, const RecordBlock &block);

    RecordSource &m_source;
    PositionJob &m_job;
    Console &m_console;
    RunOutput m_output;
    std::size_t m_threads = 1;
    qint64 m_done = 0;
    QString m_inputName;                ///< of what is reported
    QString m_readName;                 ///< of what is read
    std::optional<SourceRecord> m_held; ///< the first of another input
};

} // namespace KelStd::cli
