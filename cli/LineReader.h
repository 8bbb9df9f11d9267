#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
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

    /// Longer than any position; a file without line ends is not read into memory.
    static constexpr int mostBytes = 4096;

    /// `name`: a file, or "-" for standard input.
    bool open(const QString &name, QString &error);

    /// The next line without its end, LF or CR LF. An unterminated last line counts.
    Result next(QByteArray &line);

    /// Of the line that `next` gave last, from 1.
    qint64 lineNumber() const { return m_lineNumber; }

    /// The input's name in messages.
    QString displayName() const { return m_displayName; }

    QString errorText() const { return m_error; }

    /// True when a person types the lines.
    bool isTerminal() const;

private:
    bool fill();

    QFile m_file;
    QString m_displayName;
    QString m_error;
    int m_descriptor = -1;
    QByteArray m_buffer;
    int m_position = 0;
    qint64 m_lineNumber = 0;
};

} // namespace KelStd::cli
