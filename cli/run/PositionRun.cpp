#include <cli/run/PositionRun.h>

#include <cli/run/OrderedWorkers.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ProgressBar.h>
#include <cli/terminal/StandardStreams.h>

namespace KelStd::cli {

ExitStatus PositionRun::run()
{
    const streams::StopRequests stop;
    RunOutput::End end = RunOutput::End::Done;
    QStringList skipped;
    for (m_current = 0; m_current < m_inputs.size(); ++m_current) {
        input().endAt(&stop);
        m_blocks.emplace(input());
        m_blocks->joinQuotedFields(m_parser.skippedLines());
        m_output.setInput(input().displayName(), QStringLiteral("line"));
        end = runOver();
        skipped += remarks();
        if (end != RunOutput::End::Done)
            break;
    }
    skipped += remarkOnHeights();
    const ExitStatus status = m_output.finish(end, m_blocks->errorText(), skipped);
    m_console.flush(); // while no request to stop can end the program in the middle of a line
    for (Input *each : m_inputs)
        each->endAt(nullptr);
    return status;
}

/// Takes the current input.
RunOutput::End PositionRun::runOver()
{
    std::optional<ProgressBar> progress;
    if (const auto size = input().size())
        m_output.setProgress(&progress.emplace(m_console, *size));
    BlockWork first(m_parser, m_job, m_output.keepsRejects());
    first.setColumns(m_columns);
    State end = readOrder(first);
    if (end == RunOutput::End::Done && !first.parser().knowsOrder())
        end = takeEnd(first);
    else if (!first.parser().knowsOrder() && !m_columns && m_job.mistakeIn({}).isEmpty())
        m_output.setHeading(m_job.begin({}));
    m_columns = first.columns();
    m_fillsHeights = m_fillsHeights || first.parser().fillsHeights();
    if (!end)
        end = readRest(first.parser());
    m_output.setProgress(nullptr);
    return *end;
}

/// Says what was not yet said of another input.
void PositionRun::reportNotes(const positions::PositionParser &parser)
{
    for (const QString &note : parser.notes()) {
        if (!m_notes.contains(note))
            m_console.report(QStringLiteral("note: ") + note);
        m_notes += note;
    }
}

/// Reads blocks until a line has decided the order of the fields, which all others follow.
PositionRun::State PositionRun::readOrder(BlockWork &work)
{
    State end;
    while (!end && !work.parser().knowsOrder()) {
        m_console.flushUnless(m_blocks->isReady());
        LineBlock block;
        end = next(block);
        if (end)
            break;
        const BlockResult result = work(block);
        m_blocks->setShape(work.parser().shape(), work.parser().knowsOrder());
        if (!work.heading().isEmpty())
            m_output.setHeading(work.heading());
        m_output.setHeaderLine(work.parser().headerLine());
        reportNotes(work.parser());
        end = take(result);
    }
    return end;
}

/// What became of lines that wait for headings or a position, when none came.
PositionRun::State PositionRun::takeEnd(BlockWork &work)
{
    BlockResult result = work.finish();
    if (!work.heading().isEmpty())
        m_output.setHeading(work.heading());
    m_output.setHeaderLine(work.parser().headerLine());
    reportNotes(work.parser());
    result.lastLine = m_output.lastLine();
    const State end = take(result);
    return end ? end : RunOutput::End::Done;
}

PositionRun::State PositionRun::readRest(const positions::PositionParser &parser)
{
    OrderedWorkers<LineBlock, BlockResult> workers(m_threads, [&] {
        const auto work = std::make_shared<BlockWork>(parser, m_job, m_output.keepsRejects());
        return [work](const LineBlock &block) { return (*work)(block); };
    });
    State end;
    while (!end) {
        // Who types or pipes slowly sees what became of each line before the next one.
        const bool mustWait = !m_blocks->isReady();
        while (!end && !workers.isEmpty() && (mustWait || workers.isFull()))
            end = take(workers.take());
        if (end)
            return end;
        m_console.flushUnless(!mustWait);
        LineBlock block;
        end = next(block);
        if (!end)
            workers.add(std::move(block));
    }
    const State atEnd = end;
    end.reset();
    while (!end && !workers.isEmpty())
        end = take(workers.take());
    return end ? end : atEnd;
}

PositionRun::State PositionRun::next(LineBlock &block)
{
    switch (m_blocks->next(block)) {
    case LineBlocks::Result::Block: return {};
    case LineBlocks::Result::End:
        return input().isStopped() ? RunOutput::End::Stopped : RunOutput::End::Done;
    case LineBlocks::Result::Error: break;
    }
    return RunOutput::End::InputFailed;
}

/// Prints what became of the lines that come next.
PositionRun::State PositionRun::take(const BlockResult &result)
{
    m_heightsTaken += result.heightsTaken;
    const bool canGoOn = m_output.take(result);
    if (result.hasBadHeader)
        return RunOutput::End::BadHeader;
    return canGoOn ? State() : RunOutput::End::OutputFailed;
}

/// Of lists with a column of heights, for which a height was given all the same.
QStringList PositionRun::remarkOnHeights() const
{
    if (!m_fillsHeights)
        return {};
    if (m_heightsTaken == 0)
        return {QStringLiteral("warning: the height of --height is that of no position: all have "
                               "one of their own")};
    return {QStringLiteral("note: the height of --height is taken for %1 without one")
                .arg(m_heightsTaken == 1 ? QStringLiteral("1 position")
                                         : QStringLiteral("%1 positions").arg(m_heightsTaken))};
}

QStringList PositionRun::remarks() const
{
    if (input().isStopped() || !m_output.isWithoutPositions())
        return {};
    const QString name = input().displayName();
    const qint64 skipped = m_parser.skippedLines();
    if (skipped > 0 && m_output.lastLine() <= skipped) {
        return {QStringLiteral("warning: --skip %1 passes over all of %2: line %3 is its last")
                    .arg(skipped)
                    .arg(name)
                    .arg(m_output.lastLine())};
    }
    // A pipe may be empty, as in any other line of programs.
    return input().isFile(name) ? QStringList(QStringLiteral("note: %1 has no positions").arg(name))
                                : QStringList();
}

} // namespace KelStd::cli
