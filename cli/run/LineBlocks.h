#pragma once

#include <cli/run/InputText.h>
#include <cli/run/LineGroups.h>

#include <KelStd/positions/PositionParser.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <string_view>
#include <vector>

namespace KelStd::cli {

class Input;

/// Some lines of an input that stand behind each other.
struct LineBlock
{
    QByteArray bytes;     ///< whole lines with their ends; the input's last one may have none
    qint64 firstLine = 1; ///< its number in the input, from 1
    std::vector<LineGroup> groups = {}; ///< of its lines
};

/// Cuts an input into blocks of whole lines, as soon as there are some. Text in UTF-16 and lines
/// that end in a carriage return become UTF-8 with line feeds.
class LineBlocks
{
public:
    enum class Result
    {
        Block,
        End,
        Error ///< `errorText` says why; nothing follows
    };

    explicit LineBlocks(Input &input) : m_input(input) {}

    /// From now on lines belong together where a field in quotation marks goes over them
    /// (`LineGroups`), and each of them is a block, since what it says may be how the next ones are
    /// to be read. `skipped`: as of `LineGroups`.
    void joinQuotedFields(qint64 skipped);

    /// How the lines to come are separated. `isSettled`: all of them, so that blocks may hold
    /// several again.
    void setShape(const positions::ListShape &shape, bool isSettled);

    /// Whether `next` does not have to wait for the input's writer. Reads what there is: the
    /// beginning of a line alone is nothing that `next` could give.
    bool isReady();

    /// Every line of the block is whole, but one that is longer than `maxLineBytes` may lack
    /// what is behind them.
    Result next(LineBlock &block);

    QString errorText() const { return m_error; }

private:
    bool hasLine();
    void read();
    void findEnds();
    void advance(int whole);

    Input &m_input;
    InputText m_text;
    QByteArray m_rest; ///< what was read and not yet given
    std::optional<LineGroups> m_groupsOf;
    bool m_isSettled = true;
    std::vector<LineGroup> m_groups; ///< in the rest
    int m_whole = 0;                 ///< so much of the rest is whole lines
    qint64 m_wholeLines = 0;
    qint64 m_nextLine = 1;
    bool m_isAtEnd = false;
    bool m_isSkipping = false; ///< the rest of a line that is too long
    QString m_error;
};

/// The lines of a block, one after the other.
class LineCursor
{
public:
    /// `block` has to live as long as this and the lines.
    explicit LineCursor(const LineBlock &block);

    /// Goes to the next line; false at the end.
    bool next();

    /// Without its end, LF or CR LF; those of lines that belong together stand in it. Of a line
    /// that is too long some more than `maxLineBytes`.
    std::string_view line() const { return m_line; }
    bool isTooLong() const { return m_isTooLong; }
    /// Not 0 where the line may be a piece of a field, as of a `LineGroup`.
    qint64 opener() const { return m_opener; }
    /// Of the first one, where lines belong together.
    qint64 lineNumber() const { return m_lineNumber; }
    qint64 lastLineNumber() const { return m_lineNumber + m_lines - 1; }

private:
    std::size_t endInGroups();

    std::size_t m_size;
    std::string_view m_rest;
    std::string_view m_line;
    qint64 m_lineNumber; ///< of the line
    qint64 m_lines = 1;  ///< of the input that it is
    qint64 m_opener = 0;
    const LineGroup *m_group;
    const LineGroup *m_groupsEnd;
    bool m_isTooLong = false;
};

} // namespace KelStd::cli
