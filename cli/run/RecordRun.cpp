#include <cli/run/RecordRun.h>

#include <cli/run/OrderedWorkers.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ProgressBar.h>
#include <cli/terminal/StandardStreams.h>

#include <algorithm>
#include <string_view>

namespace KelStd::cli {

namespace {

constexpr std::size_t maxRecords = 1024; // of a block

/// Of nothing for a null array.
std::string_view viewOf(const QByteArray &bytes)
{
    if (bytes.isNull())
        return {};
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

void look(const std::vector<QByteArray> &texts, std::vector<std::string_view> &views)
{
    views.resize(texts.size());
    std::transform(texts.begin(), texts.end(), views.begin(), viewOf);
}

} // namespace

ExitStatus RecordRun::run()
{
    const QString mistake = m_job.mistakeIn(m_source.columns());
    if (!mistake.isEmpty()) {
        m_console.report(QStringLiteral("%1: %2").arg(m_source.displayName(), mistake));
        return ExitStatus::Usage;
    }
    const streams::StopRequests stop;
    m_source.endAt(&stop);
    m_output.setLive(m_source.isLive());
    std::optional<ProgressBar> progress;
    if (const auto size = m_source.size())
        m_output.setProgress(&progress.emplace(m_console, *size));
    m_output.setHeading(m_job.begin(m_source.columns()));
    m_output.setHeaderLine(m_source.headerLine());
    const State end = runOver();
    m_output.setProgress(nullptr);
    progress.reset();
    if (*end == RunOutput::End::InputFailed)
        setInput(m_source.displayName());
    const ExitStatus status = m_output.finish(*end, m_source.errorText(), m_source.remarks());
    m_console.flush(); // while no request to stop can end the program in the middle of a line
    m_source.endAt(nullptr);
    return status;
}

/// What is reported from now on is of that input.
void RecordRun::setInput(const QString &name)
{
    if (name.isEmpty() || name == m_inputName)
        return;
    m_inputName = name;
    m_output.setInput(name, m_source.item());
}

RecordRun::State RecordRun::runOver()
{
    OrderedWorkers<RecordBlock, BlockResult> workers(m_threads, [this] {
        const auto maker = std::make_shared<ResultMaker>(m_job, m_output.keepsRejects());
        return [maker](const RecordBlock &block) { return resultOf(*maker, block); };
    });
    State atEnd;
    while (!atEnd) {
        // What comes slowly is printed before the next one.
        const bool mustWait = !m_source.isReady();
        State end;
        while (!end && !workers.isEmpty() && (mustWait || workers.isFull()))
            end = take(workers.take());
        if (end)
            return end;
        m_console.flushUnless(!mustWait);
        RecordBlock block;
        atEnd = next(block);
        if (!block.records.empty())
            workers.add(std::move(block));
    }
    State end;
    while (!end && !workers.isEmpty())
        end = take(workers.take());
    return end ? end : atEnd;
}

/// Waits for one record, and takes those of the same input behind it that are ready.
RecordRun::State RecordRun::next(RecordBlock &block)
{
    State end;
    if (m_held) {
        block.inputName = m_held->inputName;
        block.records.push_back(std::move(*m_held));
        m_held.reset();
    }
    while (!end && block.records.size() < maxRecords
           && (block.records.empty() || m_source.isReady())) {
        SourceRecord record;
        const RecordSource::Result result = m_source.next(record);
        if (result == RecordSource::Result::Record) {
            if (block.records.empty())
                block.inputName = record.inputName;
            if (record.inputName != block.inputName) {
                m_held = std::move(record);
                break;
            }
            block.records.push_back(std::move(record));
        } else if (result == RecordSource::Result::Error) {
            end = RunOutput::End::InputFailed;
        } else {
            end = m_source.isStopped() ? RunOutput::End::Stopped : RunOutput::End::Done;
        }
    }
    // What is done is counted anew for each input.
    const bool isOther = !block.records.empty() && block.inputName != m_readName;
    block.bytes = m_source.done() - (isOther ? 0 : m_done);
    if (isOther)
        m_readName = block.inputName;
    m_done = m_source.done();
    return end;
}

BlockResult RecordRun::resultOf(ResultMaker &maker, const RecordBlock &block)
{
    BlockResult result;
    result.inputName = block.inputName;
    result.inputBytes = block.bytes;
    std::vector<std::string_view> carried;
    std::vector<std::string_view> extras;
    for (const SourceRecord &record : block.records) {
        result.lastLine = record.number;
        if (!record.failure.isEmpty()) {
            maker.fail(result, record.number, viewOf(record.source), record.failure);
            continue;
        }
        look(record.carried, carried);
        look(record.extras, extras);
        maker.take(
            result,
            {record.position, viewOf(record.name), carried, extras, viewOf(record.heightReference)},
            record.number, viewOf(record.source));
    }
    return result;
}

RecordRun::State RecordRun::take(const BlockResult &result)
{
    setInput(result.inputName);
    return m_output.take(result) ? State() : RunOutput::End::OutputFailed;
}

} // namespace KelStd::cli
