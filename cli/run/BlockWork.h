#pragma once

#include <cli/run/LineBlocks.h>
#include <cli/run/PositionJob.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <vector>

namespace KelStd::cli {

/// What became of the lines of a block.
struct BlockResult
{
    struct Message
    {
        int position; ///< how many bytes of the output stand before it
        qint64 line;
        QString text;
    };

    QByteArray output; ///< the separator before each position
    std::vector<Message> messages;
    QByteArray rejects; ///< the lines that failed, as they stand
    qint64 taken = 0;
    qint64 failed = 0;
    qint64 lastLine = 0;
    qint64 inputBytes = 0;
    Notices notices;
    bool hasBadHeader = false; ///< its message is the last one, and the run cannot go on
};

/// Reads the lines of blocks and takes their positions: what a thread does.
class BlockWork
{
public:
    /// A `parser` that does not yet know the order of the fields learns it from the first lines;
    /// only one thread can have such a one.
    BlockWork(positions::PositionParser parser, PositionJob &job, bool keepsRejects)
        : m_parser(std::move(parser)), m_job(job), m_keepsRejects(keepsRejects),
          m_taker(job.makeTaker()), m_separator(job.separator())
    {}

    BlockResult operator()(const LineBlock &block);

    /// At the end of an input of which no line has decided the order of the fields.
    BlockResult finish();

    const positions::PositionParser &parser() const { return m_parser; }

    /// What is printed above the first position: known with the order.
    QByteArray heading() const { return m_heading; }

private:
    void take(BlockResult &result, const LineCursor &cursor);
    void fail(BlockResult &result, const LineCursor &cursor, const QString &reason);

    positions::PositionParser m_parser;
    PositionJob &m_job;
    bool m_keepsRejects;
    std::unique_ptr<PositionTaker> m_taker;
    QByteArray m_separator;
    QByteArray m_heading;
};

} // namespace KelStd::cli
