#include <cli/run/RunOutput.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/ProgressBar.h>

namespace KelStd::cli {

void RunOutput::setInput(const QString &name, const QString &item)
{
    reportRemarks();
    m_notices = {};
    m_takenBefore = m_taken;
    m_before = m_taken + m_failed;
    m_lastLine = 0;
    m_doneBytes = 0;
    m_hasOtherEncoding = false;
    m_firstWithComma = 0;
    m_firstWithPoint = 0;
    m_inputName = name;
    m_item = item;
}

bool RunOutput::take(const BlockResult &result)
{
    if (result.firstInWindows1252 > 0 && !m_hasOtherEncoding) {
        m_hasOtherEncoding = true;
        m_console.report(
            QStringLiteral("note: line %1 of %2 is not UTF-8 text, and lines that are "
                           "not are read as Windows-1252; names may have wrong letters")
                .arg(result.firstInWindows1252)
                .arg(m_inputName));
    }
    reportMarks(result);
    qint64 printed = 0;
    for (const BlockResult::Message &message : result.messages) {
        print(result.output.constData() + printed, message.position - printed);
        printed = message.position;
        m_console.report(
            QStringLiteral("%1:%2: %3").arg(m_inputName).arg(message.line).arg(message.text));
    }
    print(result.output.constData() + printed, result.output.size() - printed);
    m_passed += result.passed;
    if (m_rejects != nullptr)
        m_rejects->write(m_headerLine.isEmpty() ? m_passed : m_passed + m_headerLine + '\n',
                         result.rejects);

    m_taken += result.taken;
    m_failed += result.failed;
    addNotices(m_notices, result.notices);
    m_lastLine = result.lastLine;
    m_doneBytes += result.inputBytes;
    if (m_progress != nullptr)
        m_progress->show(m_doneBytes);
    return m_sink != nullptr ? m_sink->canWrite() : m_console.canPrint();
}

/// Says once that the input mixes decimal marks.
void RunOutput::reportMarks(const BlockResult &result)
{
    const bool wereMixed = m_firstWithComma > 0 && m_firstWithPoint > 0;
    if (m_firstWithComma == 0)
        m_firstWithComma = result.firstWithComma;
    if (m_firstWithPoint == 0)
        m_firstWithPoint = result.firstWithPoint;
    if (wereMixed || m_firstWithComma == 0 || m_firstWithPoint == 0)
        return;
    m_console.report(QStringLiteral("warning: %1 has decimal commas (line %2) and decimal points "
                                    "(line %3); a point before thousands is read as one before "
                                    "decimals")
                         .arg(m_inputName)
                         .arg(m_firstWithComma)
                         .arg(m_firstWithPoint));
}

/// What is said once of all positions.
void RunOutput::reportRemarks()
{
    for (const QString &remark : m_job.remarks(m_notices, m_taken - m_takenBefore, m_inputName))
        m_console.report(remark);
}

void RunOutput::print(const char *bytes, qint64 size)
{
    if (size == 0)
        return;
    printHeading();
    // No separator stands before the first position.
    const auto skipped = m_hasPosition ? 0 : m_job.separator().size();
    m_hasPosition = true;
    write(QByteArray::fromRawData(bytes + skipped, static_cast<int>(size - skipped)));
}

void RunOutput::write(const QByteArray &bytes)
{
    if (m_sink != nullptr)
        m_sink->write(bytes);
    else
        m_console.write(bytes);
}

void RunOutput::printHeading()
{
    if (!m_hasHeading)
        write(m_heading);
    m_hasHeading = true;
}

ExitStatus RunOutput::finish(End end, const QString &error, const QStringList &remarks)
{
    if (end == End::OutputFailed) {
        if (m_sink != nullptr)
            reportSinkFailure();
        return outputFailed();
    }
    if (end == End::BadHeader)
        return finishBadHeader();
    if (end == End::InputFailed) {
        if (m_hasHeading)
            write(m_job.ending());
        reportRemarks();
        m_console.report(QStringLiteral("cannot read %1: %2").arg(m_inputName, error));
        return finishPartly(ExitStatus::Environment);
    }
    printHeading();
    write(m_job.ending());
    if (end == End::Done && !finishSink())
        return outputFailed();
    reportRemarks();
    for (const QString &remark : remarks)
        m_console.report(remark);
    if (end == End::Stopped) {
        m_console.report(QStringLiteral("stopped behind %1 %2 of %3")
                             .arg(m_item)
                             .arg(m_lastLine)
                             .arg(m_inputName));
        return finishPartly(ExitStatus::Stopped);
    }
    if (m_failed == 0)
        return finishRejects(ExitStatus::Success);
    m_console.report(
        QStringLiteral("%1 of %2 positions failed").arg(m_failed).arg(m_taken + m_failed));
    return finishRejects(ExitStatus::SomeFailed);
}

ExitStatus RunOutput::finishBadHeader()
{
    if (m_hasHeading)
        write(m_job.ending());
    // Where no line was taken, the rejected lines of an earlier run are kept.
    if (m_taken + m_failed == 0) {
        if (m_sink != nullptr)
            reportUnwritten();
        return ExitStatus::Usage;
    }
    reportRemarks();
    m_console.report(QStringLiteral("the run ended there: %1 of %2 positions before it failed")
                         .arg(m_failed)
                         .arg(m_taken + m_failed));
    return finishPartly(ExitStatus::Usage);
}

void RunOutput::reportSinkFailure()
{
    m_console.report(
        QStringLiteral("cannot write %1: %2").arg(m_sink->displayName(), m_sink->errorText()));
}

void RunOutput::reportUnwritten()
{
    m_console.report(QStringLiteral("%1 is not written").arg(m_sink->displayName()));
}

/// False after a report. Without a position that was taken an earlier file stays.
bool RunOutput::finishSink()
{
    if (m_sink == nullptr)
        return true;
    if (m_taken == 0 && m_failed > 0) {
        reportUnwritten();
        return true;
    }
    if (!m_sink->canWrite() || !m_sink->finish()) {
        reportSinkFailure();
        return false;
    }
    for (const QString &note : m_sink->notes())
        m_console.report(note);
    m_console.printChange(
        QStringLiteral("Wrote %1: %2 positions").arg(m_sink->displayName()).arg(m_taken));
    return true;
}

/// Ends a run that did not come to its end: what is printed stands, a file is not written but for
/// what cannot be had again.
ExitStatus RunOutput::finishPartly(ExitStatus status)
{
    if (m_sink == nullptr)
        return finishRejects(status);
    if (m_isLive && m_taken > 0)
        return finishSink() ? finishRejects(status) : outputFailed();
    reportUnwritten();
    outputFailed();
    return status;
}

/// An earlier file of rejected lines is not given up for those of a run that has to be repeated.
ExitStatus RunOutput::outputFailed()
{
    if (m_rejects != nullptr)
        m_console.report(QStringLiteral("the rejected lines are not kept"));
    return ExitStatus::Environment;
}

ExitStatus RunOutput::finishRejects(ExitStatus status)
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
