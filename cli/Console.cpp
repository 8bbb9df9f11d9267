#include <cli/Console.h>

#include <cli/StandardStreams.h>

namespace KelStd::cli {

namespace {

constexpr int pieceSize = 1 << 16;

} // namespace

Console::Console() : m_isTerminal(streams::isTerminal(streams::standardOutput)) {}

Console::~Console()
{
    flush();
}

void Console::print(const QString &line)
{
    if (!m_canPrint)
        return;
    m_pending += line.toUtf8();
    m_pending += '\n';
    if (m_isTerminal || m_pending.size() >= pieceSize)
        flush();
}

void Console::report(const QString &message)
{
    // Where both streams end in one place, what was printed before the message stands before it.
    flush();
    streams::writeAll(streams::standardError, "kelstd: " + message.toUtf8() + '\n');
}

bool Console::flush()
{
    if (m_canPrint && !m_pending.isEmpty()) {
        m_canPrint = streams::writeAll(streams::standardOutput, m_pending);
        const QString reason = m_canPrint ? QString() : streams::lastErrorText();
        m_pending.clear();
        if (!m_canPrint)
            report(QStringLiteral("cannot write standard output: %1").arg(reason));
    }
    return m_canPrint;
}

} // namespace KelStd::cli
