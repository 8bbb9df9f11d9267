#pragma once

#include <cli/run/Input.h>
#include <cli/run/LineBlocks.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::cli {

/// The lines of a file or of standard input, one at a time and as soon as each is there.
class LineReader
{
public:
    enum class Result
    {
        Line,
        TooLong, ///< the rest of the line is skipped
        End,
        Error ///< `errorText` says why; nothing follows
    };

    /// `name`: a file, or "-" for standard input.
    bool open(const QString &name, QString &error) { return m_input.open(name, error); }

    /// As of `LineBlocks`, for lists whose lines have fields.
    void joinQuotedFields() { m_blocks.joinQuotedFields(0); }
    /// As of `LineBlocks`.
    void setShape(const positions::ListShape &shape, bool isSettled)
    {
        m_blocks.setShape(shape, isSettled);
    }

    /// Not 0 where the line that `next` gave last may be a piece of a field, as of a `LineGroup`.
    qint64 opener() const { return m_cursor.opener(); }

    /// The next line without its end, LF or CR LF. An unterminated last line counts.
    Result next(QByteArray &line);

    /// Of the line that `next` gave last, from 1.
    qint64 lineNumber() const { return m_cursor.lineNumber(); }

    /// The input's name in messages.
    QString displayName() const { return m_input.displayName(); }

    QString errorText() const { return m_blocks.errorText(); }

private:
    Input m_input;
    LineBlocks m_blocks{m_input};
    LineBlock m_block;
    LineCursor m_cursor{m_block};
};

} // namespace KelStd::cli
