#pragma once

#include <cli/Columns.h>
#include <cli/LineReader.h>
#include <cli/LineSplitter.h>
#include <cli/PositionHeader.h>
#include <cli/TypedNumber.h>

#include <KelStd/coord/Pos.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::cli {

/// Positions of one frame, one a line.
///
/// Blank lines and lines that begin with # are skipped. A first line without any number is a header
/// and says in which field each component stands. Without one the components stand in the order of
/// the frame's columns, after a point name when the first line has four fields; every later line
/// must have as many: a line that lost its height must not be read as one that lost its name.
///
/// Longitudes and latitudes may be typed in any form of `readTypedAngle`; lengths are plain
/// numbers.
class PositionReader
{
public:
    enum class Result
    {
        Position,
        BadLine,   ///< `reason` says what is wrong with this line; the next one may be right
        BadHeader, ///< no line can be read; `reason` says why
        End,
        ReadError ///< the input broke off; `reason` says why
    };

    PositionReader(LineReader &lines, Frame frame, InputHeight height = InputHeight::OfFrame)
        : m_lines(lines), m_frame(frame), m_height(height)
    {}

    Result next();

    /// Of the line that `next` has read last.
    qint64 lineNumber() const { return m_lines.lineNumber(); }
    QString reason() const { return m_reason; }

    /// The position that `next` has read, and its name, empty when it has none.
    const Pos &position() const { return m_position; }
    QString name() const { return m_name; }

    /// Whether the lines have names; known once a position was read.
    bool hasNames() const { return m_order && m_order->name >= 0; }

private:
    bool isHeader(const SplitLine &line, const QString &text) const;
    Result readFields(const SplitLine &line);
    QString readComponent(int component, const QString &field, DecimalMark mark,
                          double &value) const;
    Result bad(const QString &reason);
    Result badHeader(const QString &reason);

    LineReader &m_lines;
    Frame m_frame;
    InputHeight m_height;
    std::optional<FieldOrder> m_order;
    qint64 m_orderLine = 0; ///< the line that decided the order
    bool m_sawContent = false;
    QString m_reason;
    QString m_name;
    Pos m_position;
};

} // namespace KelStd::cli
