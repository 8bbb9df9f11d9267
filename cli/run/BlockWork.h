#pragma once

#include <cli/run/BlockResult.h>
#include <cli/run/LineBlocks.h>
#include <cli/run/PositionJob.h>

#include <KelStd/positions/PositionParser.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::cli {

/// Reads the lines of blocks and takes their positions: what a thread does.
class BlockWork
{
public:
    /// A `parser` that does not yet know the order of the fields learns it from the first lines;
    /// only one thread can have such a one.
    BlockWork(positions::PositionParser parser, PositionJob &job, bool keepsRejects)
        : m_parser(std::move(parser)), m_job(job), m_maker(job, keepsRejects)
    {}

    BlockResult operator()(const LineBlock &block);

    /// At the end of an input of which no line has decided the order of the fields.
    BlockResult finish();

    const positions::PositionParser &parser() const { return m_parser; }

    /// The columns that the inputs before have had, if there were any: others end the run.
    void setColumns(const std::optional<positions::InputColumns> &columns) { m_columns = columns; }

    /// Those of all inputs until now; nothing where no order was known.
    const std::optional<positions::InputColumns> &columns() const { return m_columns; }

    /// What is printed above the first position: known with the order.
    QByteArray heading() const { return m_heading; }

private:
    void noteDecimalMark(BlockResult &result, qint64 line) const;
    void warnOfEnclosedLine(BlockResult &result) const;
    bool begin(BlockResult &result);
    void beginWithoutColumns(BlockResult &result);
    QString differenceTo(const positions::InputColumns &columns) const;

    positions::PositionParser m_parser;
    PositionJob &m_job;
    ResultMaker m_maker;
    QByteArray m_heading;
    std::optional<positions::InputColumns> m_columns;
};

} // namespace KelStd::cli
