#pragma once

#include <cli/run/InputText.h>

#include <KelStd/positions/PositionParser.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>

namespace KelStd::cli {

class Input;

/// Some lines of an input that stand behind each other.
struct LineBlock
{
    QByteArray bytes;     ///< whole lines with their ends; the input's last one may have none
    qint64 firstLine = 1; ///< its number in the input, from 1
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

    /// Whether `next` does not have to wait for the input's writer. Reads what there is: the
    /// beginning of a line alone is nothing that `next` could give.
    bool isReady();

    /// Every line of the block is whole, but one that is longer than `maxLineBytes` may lack
    /// what is behind them.
    Result next(LineBlock &block);

    QString errorText() const { return m_error; }

private:
    bool hasLine() const;
    void read();

    Input &m_input;
    InputText m_text;
    QByteArray m_rest; ///< what was read and not yet given
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

    /// Without its end, LF or CR LF. Of a line that is too long some more than `maxLineBytes`.
    std::string_view line() const { return m_line; }
    bool isTooLong() const { return m_isTooLong; }
    qint64 lineNumber() const { return m_lineNumber; }

private:
    std::string_view m_rest;
    std::string_view m_line;
    qint64 m_lineNumber;
    bool m_isTooLong = false;
};

} // namespace KelStd::cli
