#include <cli/terminal/Console.h>

#include <cli/terminal/ShownText.h>
#include <cli/terminal/StandardStreams.h>

namespace KelStd::cli {

namespace {

constexpr int pieceSize = 1 << 16;

const QByteArray eraseLine = "\r\033[K"; // every terminal of our day knows it

} // namespace

Console::Console() : m_isTerminal(streams::isTerminal(streams::standardOutput)) {}

Console::~Console()
{
    flush();
}

void Console::print(const QString &line)
{
    write(shownLines(line).toUtf8() + '\n');
}

void Console::printChange(const QString &line)
{
    noteChange(line);
    print(line);
}

void Console::noteChange(const QString &text)
{
    m_changes += text;
    if (!m_canPrint)
        reportChanges();
}

void Console::reportChanges()
{
    const QStringList changes = m_changes;
    m_changes.clear();
    for (const QString &change : changes) {
        m_hasUnreportedChange = true;
        report(QStringLiteral("done all the same: %1").arg(change));
    }
}

void Console::write(const QByteArray &lines)
{
    if (!m_canPrint)
        return;
    m_pending += lines;
    if (m_isTerminal || m_pending.size() >= pieceSize)
        flush();
}

void Console::report(const QString &message)
{
    // Where both streams end in one place, what was printed before the message stands before it.
    flush();
    const QByteArray line = "kelstd: " + shownLines(message).toUtf8() + '\n';
    const QByteArray status = m_status.toUtf8();
    streams::writeAll(streams::standardError,
                      m_status.isEmpty() ? line : eraseLine + line + status);
}

void Console::showStatus(const QString &text)
{
    const bool wasShown = !m_status.isEmpty();
    m_status = text;
    if (wasShown || !text.isEmpty())
        streams::writeAll(streams::standardError, eraseLine + text.toUtf8());
}

bool Console::flush()
{
    if (m_canPrint && !m_pending.isEmpty()) {
        m_canPrint = streams::writeAll(streams::standardOutput, m_pending);
        const QString reason = m_canPrint ? QString() : streams::lastErrorText();
        m_pending.clear();
        if (m_canPrint) {
            m_changes.clear();
        } else {
            report(QStringLiteral("cannot write standard output: %1").arg(reason));
            reportChanges();
        }
    }
    return m_canPrint;
}

} // namespace KelStd::cli
