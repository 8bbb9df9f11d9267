#pragma once

#include <cli/ColumnChoice.h>
#include <cli/Columns.h>
#include <cli/LineSplitter.h>
#include <cli/PlainLine.h>
#include <cli/PositionHeader.h>
#include <cli/TypedNumber.h>

#include <KelStd/coord/Pos.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <string_view>
#include <vector>

namespace KelStd::cli {

/// Reads positions of one frame, one a line.
///
/// Blank lines and lines that begin with # are skipped. A first line without any number is a header
/// and says in which field each component stands. Without one the components stand in the order of
/// the frame's columns, after a point name when the first line has four fields; every later line
/// must have as many: a line that lost its height must not be read as one that lost its name.
/// A choice of columns goes before both.
///
/// Longitudes and latitudes may be typed in any form of `readTypedAngle`; lengths are plain
/// numbers.
///
/// Once the order is known, a copy reads any other line of the input as this would.
class PositionParser
{
public:
    enum class Result
    {
        Nothing, ///< no position was to be expected: a header, a comment, a blank line
        Position,
        BadLine,  ///< `reason` says what is wrong with this line; the next one may be right
        BadHeader ///< no line can be read; `reason` says why
    };

    explicit PositionParser(Frame frame, InputHeight height = InputHeight::OfFrame,
                            std::optional<ColumnChoice> choice = std::nullopt)
        : m_frame(frame), m_height(height), m_choice(std::move(choice))
    {}

    /// Reads a line without its end. What is read holds until the next one is.
    Result parse(std::string_view line, qint64 lineNumber);

    /// The same, without the short way for plain lines.
    Result parseWithCare(std::string_view line, qint64 lineNumber);

    QString reason() const { return m_reason; }

    const Pos &position() const { return m_position; }

    /// The point's name in UTF-8, empty when it has none.
    std::string_view name() const { return m_name; }

    /// The fields that the order carries through, in UTF-8.
    const std::vector<std::string_view> &carried() const { return m_carried; }

    /// Whether a line has decided the order of the fields.
    bool knowsOrder() const { return m_order.has_value(); }

    /// Whether the lines have names.
    bool hasNames() const { return m_order && m_order->name >= 0; }
    QStringList carriedHeadings() const
    {
        return m_order ? m_order->carriedHeadings : QStringList();
    }

    /// The header line, empty when there is none.
    QByteArray headerLine() const { return m_headerLine; }

private:
    bool isHeader(const SplitLine &line, const QString &text) const;
    bool takeHeader(const SplitLine &line, std::string_view bytes);
    bool takeFirst(int fields, const SplitLine &line);
    Result readFields(const SplitLine &line);
    bool readPlain(std::string_view line);
    void keepTexts(const SplitLine &line);
    QString readComponent(int component, const QString &field, DecimalMark mark,
                          double &value) const;
    Result bad(const QString &reason);
    Result badHeader(const QString &reason);

    Frame m_frame;
    InputHeight m_height;
    std::optional<ColumnChoice> m_choice;
    std::optional<FieldOrder> m_order;
    qint64 m_lineNumber = 0;
    qint64 m_orderLine = 0; ///< the line that decided the order
    QByteArray m_headerLine;
    bool m_sawContent = false;
    QString m_reason;
    PlainLine m_plain;
    std::vector<QByteArray>
        m_texts; ///< what `m_name` and `m_carried` look at unless it is the line
    std::string_view m_name;
    std::vector<std::string_view> m_carried;
    Pos m_position;
};

} // namespace KelStd::cli
