#include <cli/PositionRun.h>

#include <cli/Console.h>
#include <cli/LineReader.h>

namespace KelStd::cli {

ExitStatus PositionRun::run()
{
    while (m_console.canPrint()) {
        switch (m_reader.next()) {
        case PositionReader::Result::Position: {
            QString reason;
            if (take(m_reader, reason))
                ++m_taken;
            else
                fail(reason);
            break;
        }
        case PositionReader::Result::BadLine: fail(m_reader.reason()); break;
        case PositionReader::Result::BadHeader: report(m_reader.reason()); return ExitStatus::Usage;
        case PositionReader::Result::ReadError:
            m_console.report(
                QStringLiteral("cannot read %1: %2").arg(m_lines.displayName(), m_reader.reason()));
            return ExitStatus::Environment;
        case PositionReader::Result::End: return finish();
        }
    }
    return ExitStatus::Environment;
}

void PositionRun::begin()
{
    if (!m_hasBegun)
        printHeading(m_reader.hasNames());
    m_hasBegun = true;
}

void PositionRun::report(const QString &text)
{
    m_console.report(QStringLiteral("%1:%2: %3")
                         .arg(m_lines.displayName())
                         .arg(m_reader.lineNumber())
                         .arg(text));
}

void PositionRun::fail(const QString &reason)
{
    report(reason);
    ++m_failed;
}

ExitStatus PositionRun::finish()
{
    begin();
    if (m_failed == 0)
        return ExitStatus::Success;
    m_console.report(
        QStringLiteral("%1 of %2 positions failed").arg(m_failed).arg(m_taken + m_failed));
    return ExitStatus::SomeFailed;
}

} // namespace KelStd::cli
