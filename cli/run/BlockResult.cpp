#include <cli/run/BlockResult.h>

namespace KelStd::cli {

namespace {

void appendLine(QByteArray &lines, std::string_view line)
{
    lines.append(line.data(), static_cast<int>(line.size()));
    lines += '\n';
}

} // namespace

void ResultMaker::take(BlockResult &result, const positions::ReadPosition &position, qint64 line,
                       std::string_view source)
{
    const auto size = result.output.size();
    result.output += m_separator;
    QString reason;
    const bool isTaken = m_taker->take(position, result.output, reason);
    addNotices(result.notices, m_taker->notices(), line);
    if (!isTaken) {
        result.output.truncate(size);
        fail(result, line, source, reason);
        return;
    }
    ++result.taken;
    // A warning stands before what it is about.
    if (!reason.isEmpty())
        result.messages.push_back({size, line, reason});
}

void ResultMaker::fail(BlockResult &result, qint64 line, std::string_view source,
                       const QString &reason) const
{
    result.messages.push_back({result.output.size(), line, reason});
    ++result.failed;
    if (m_keepsRejects)
        appendLine(result.rejects, source);
}

void ResultMaker::pass(BlockResult &result, std::string_view source) const
{
    if (m_keepsRejects)
        appendLine(result.passed, source);
}

} // namespace KelStd::cli
