#include <cli/run/PositionRun.h>

#include <cli/run/OrderedWorkers.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ProgressBar.h>
#include <cli/terminal/StandardStreams.h>

#include <optional>

namespace KelStd::cli {

ExitStatus PositionRun::run()
{
    const streams::StopRequests stop;
    m_input.endAt(&stop);
    std::optional<ProgressBar> progress;
    if (const auto size = m_input.size())
        m_progress = &progress.emplace(m_console, *size);

    BlockWork first(m_parser, m_job, m_rejects != nullptr);
    State state = readOrder(first);
    if (state == State::AtEnd && !first.parser().knowsOrder())
        state = takeEnd(first);
    else if (!first.parser().knowsOrder())
        m_heading = m_job.begin({});
    if (state == State::GoesOn)
        state = readRest(first.parser());
    m_progress = nullptr;
    progress.reset();
    const ExitStatus status = finish(state);
    m_console.flush(); // while no request to stop can end the program in the middle of a line
    m_input.endAt(nullptr);
    return status;
}

/// Reads blocks until a line has decided the order of the fields, which all others follow.
PositionRun::State PositionRun::readOrder(BlockWork &work)
{
    State state = State::GoesOn;
    while (state == State::GoesOn && !work.parser().knowsOrder()) {
        m_console.flushUnless(m_blocks.isReady());
        LineBlock block;
        state = next(block);
        if (state != State::GoesOn)
            break;
        const BlockResult result = work(block);
        m_heading = work.heading();
        m_headerLine = work.parser().headerLine();
        const QString note = work.parser().noteOnColumns();
        if (!note.isEmpty())
            m_console.report(QStringLiteral("note: ") + note);
        state = take(result);
    }
    return state;
}

/// What became of lines that wait for headings or a position, when none came.
PositionRun::State PositionRun::takeEnd(BlockWork &work)
{
    BlockResult result = work.finish();
    m_heading = work.heading();
    m_headerLine = work.parser().headerLine();
    result.lastLine = m_lastLine;
    const State state = take(result);
    return state == State::GoesOn ? State::AtEnd : state;
}

PositionRun::State PositionRun::readRest(const positions::PositionParser &parser)
{
    OrderedWorkers<LineBlock, BlockResult> workers(m_threads, [&] {
        const auto work = std::make_shared<BlockWork>(parser, m_job, m_rejects != nullptr);
        return [work](const LineBlock &block) { return (*work)(block); };
    });
    State state = State::GoesOn;
    while (state == State::GoesOn) {
        // Who types or pipes slowly sees what became of each line before the next one.
        const bool mustWait = !m_blocks.isReady();
        while (state == State::GoesOn && !workers.isEmpty() && (mustWait || workers.isFull()))
            state = take(workers.take());
        if (state != State::GoesOn)
            return state;
        m_console.flushUnless(!mustWait);
        LineBlock block;
        state = next(block);
        if (state == State::GoesOn)
            workers.add(std::move(block));
    }
    const State atEnd = state;
    state = State::GoesOn;
    while (state == State::GoesOn && !workers.isEmpty())
        state = take(workers.take());
    return state == State::GoesOn ? atEnd : state;
}

PositionRun::State PositionRun::next(LineBlock &block)
{
    switch (m_blocks.next(block)) {
    case LineBlocks::Result::Block: return State::GoesOn;
    case LineBlocks::Result::End: return m_input.isStopped() ? State::Stopped : State::AtEnd;
    case LineBlocks::Result::Error: break;
    }
    return State::InputFailed;
}

/// Prints what became of the lines that come next.
PositionRun::State PositionRun::take(const BlockResult &result)
{
    int printed = 0;
    for (const BlockResult::Message &message : result.messages) {
        print(result.output.constData() + printed, message.position - printed);
        printed = message.position;
        m_console.report(QStringLiteral("%1:%2: %3")
                             .arg(m_input.displayName())
                             .arg(message.line)
                             .arg(message.text));
    }
    print(result.output.constData() + printed, result.output.size() - printed);
    if (m_rejects != nullptr)
        m_rejects->write(m_headerLine, result.rejects);

    m_taken += result.taken;
    m_failed += result.failed;
    addNotices(m_notices, result.notices);
    m_lastLine = result.lastLine;
    m_doneBytes += result.inputBytes;
    if (m_progress != nullptr)
        m_progress->show(m_doneBytes);
    if (result.hasBadHeader)
        return State::BadHeader;
    return m_console.canPrint() ? State::GoesOn : State::OutputFailed;
}

/// What is said once of all positions.
void PositionRun::reportRemarks()
{
    for (const QString &remark : m_job.remarks(m_notices, m_taken, m_input.displayName()))
        m_console.report(remark);
}

void PositionRun::print(const char *bytes, int size)
{
    if (size == 0)
        return;
    printHeading();
    // No separator stands before the first position.
    const int skipped = m_hasPosition ? 0 : m_job.separator().size();
    m_hasPosition = true;
    m_console.write(QByteArray::fromRawData(bytes + skipped, size - skipped));
}

void PositionRun::printHeading()
{
    if (!m_hasHeading)
        m_console.write(m_heading);
    m_hasHeading = true;
}

ExitStatus PositionRun::finish(State state)
{
    switch (state) {
    case State::OutputFailed: return outputFailed();
    case State::BadHeader:
        if (m_hasHeading)
            m_console.write(m_job.ending());
        // Where no line was taken, the rejected lines of an earlier run are kept.
        if (m_taken + m_failed == 0)
            return ExitStatus::Usage;
        reportRemarks();
        m_console.report(QStringLiteral("the run ended there: %1 of %2 positions before it failed")
                             .arg(m_failed)
                             .arg(m_taken + m_failed));
        return finishRejects(ExitStatus::Usage);
    case State::InputFailed:
        if (m_hasHeading)
            m_console.write(m_job.ending());
        reportRemarks();
        m_console.report(
            QStringLiteral("cannot read %1: %2").arg(m_input.displayName(), m_blocks.errorText()));
        return finishRejects(ExitStatus::Environment);
    case State::GoesOn:
    case State::AtEnd:
    case State::Stopped: break;
    }
    printHeading();
    m_console.write(m_job.ending());
    reportRemarks();
    if (state == State::Stopped) {
        m_console.report(QStringLiteral("stopped behind line %1 of %2")
                             .arg(m_lastLine)
                             .arg(m_input.displayName()));
        return finishRejects(ExitStatus::Stopped);
    }
    if (m_parser.skippedLines() > 0 && m_lastLine <= m_parser.skippedLines()) {
        m_console.report(
            QStringLiteral("warning: --skip %1 passes over all of %2: line %3 is its last")
                .arg(m_parser.skippedLines())
                .arg(m_input.displayName())
                .arg(m_lastLine));
    }
    if (m_failed == 0)
        return finishRejects(ExitStatus::Success);
    m_console.report(
        QStringLiteral("%1 of %2 positions failed").arg(m_failed).arg(m_taken + m_failed));
    return finishRejects(ExitStatus::SomeFailed);
}

/// An earlier file of rejected lines is not given up for those of a run that has to be repeated.
ExitStatus PositionRun::outputFailed()
{
    if (m_rejects != nullptr)
        m_console.report(QStringLiteral("the rejected lines are not kept"));
    return ExitStatus::Environment;
}

ExitStatus PositionRun::finishRejects(ExitStatus status)
{
    if (!m_console.flush())
        return outputFailed();
    QString error;
    if (m_rejects == nullptr || m_rejects->finish(error))
        return status;
    m_console.report(QStringLiteral("cannot write the rejected lines: %1").arg(error));
    return ExitStatus::Environment;
}

} // namespace KelStd::cli
