#pragma once

#include <cli/positions/ColumnChoice.h>
#include <cli/positions/LineSplitter.h>
#include <cli/positions/OrderSearch.h>
#include <cli/positions/PlainLine.h>
#include <cli/positions/PositionHeader.h>

#include <KelStd/coord/Pos.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <string_view>
#include <vector>

namespace KelStd::cli {

/// Reads positions of one frame, one a line.
///
/// Blank lines and lines that begin with # are skipped, but a line of headings counts also behind
/// a #. Headings say in which field each component stands; they may follow on lines of a title.
/// Without any the components stand in the order of the frame's columns, after a point name when
/// the first line has four fields; every later line must have as many: a line that lost its height
/// must not be read as one that lost its name. A choice of columns goes before both. Headings
/// further down must say the same: others end the run, and so does a first line that is neither
/// headings nor a position (`OrderSearch`).
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
        BadHeader ///< no further line can be read; `reason` says why, `reasonLine` where
    };

    explicit PositionParser(const InputForm &form,
                            std::optional<ColumnChoice> choice = std::nullopt);
    explicit PositionParser(Frame frame, InputHeight height = InputHeight::OfFrame,
                            std::optional<ColumnChoice> choice = std::nullopt)
        : PositionParser(InputForm(frame, height), std::move(choice))
    {}

    /// Passes over so many lines at the beginning of the input, whatever they hold.
    void setSkippedLines(qint64 count) { m_skippedLines = count; }

    qint64 skippedLines() const { return m_skippedLines; }

    /// Reads a line without its end. What is read holds until the next one is.
    Result parse(std::string_view line, qint64 lineNumber);

    /// The same, without the short way for plain lines.
    Result parseWithCare(std::string_view line, qint64 lineNumber);

    /// At the end of an input of which no line decided the order: false with the reason when it
    /// had lines that are neither headings nor positions.
    bool finish();

    QString reason() const { return m_reason; }

    /// The line that the reason is about.
    qint64 reasonLine() const { return m_reasonLine; }

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

    /// What is to be said once the order is known: which columns the headings name that go nowhere.
    /// Empty when there are none.
    QString noteOnColumns() const;

    /// The header line, empty when there is none.
    QByteArray headerLine() const
    {
        const auto &headings = m_search.headings();
        return !m_order && headings ? headings->bytes : m_headerLine;
    }

private:
    Result takeComment(const QString &content, const QString &flaw, std::string_view bytes);
    Result takeUnreadable(const SplitLine &line, const QString &mistake, bool isSplit,
                          std::string_view bytes);
    Result takeOther(const QString &reason);
    Result takeOther(const SplitLine &line, const QString &reason);
    Result takeOpening(const SplitLine &line, std::string_view bytes);
    std::optional<Result> takeUnits(const SplitLine &line, const QString &text);
    Result takeFirstPosition(const SplitLine &line, const FieldOrder &order);
    Result takeSureHeadings(const FieldOrder &order, std::string_view bytes);
    Result takeHeadings(const HeadingsFound &found, Result otherwise);
    bool mayBeOtherHeadings(const SplitLine &line) const;
    bool isRemarkOfOtherOrder(const QString &remark, const SplitLine &line) const;
    bool mayBePair(std::string_view name) const;
    Result takeOtherHeadings();
    void decide(const FieldOrder &order, qint64 line, const QByteArray &headerLine);
    Result readFields(const SplitLine &line, const FieldOrder &order);
    bool readPlain(std::string_view line);
    void keepTexts(const SplitLine &line, const FieldOrder &order);
    QString readComponent(int component, const QString &field, DecimalMark mark,
                          double &value) const;
    Result bad(const QString &reason);
    Result badHeader(const LineMistake &mistake);

    InputForm m_form;
    double m_metresPerUnit;
    std::optional<ColumnChoice> m_choice;
    OrderSearch m_search;
    std::optional<FieldOrder> m_order;
    qint64 m_skippedLines = 0;
    qint64 m_lineNumber = 0;
    qint64 m_orderLine = 0; ///< the line that decided the order
    /// The line that decided the plain order has a name and components that are not all whole
    /// numbers.
    bool m_isUnlikeWholeNumbers = false;
    QByteArray m_headerLine;
    QString m_reason;
    qint64 m_reasonLine = 0;
    QString m_text; ///< of the line that is read with care
    PlainLine m_plain;
    std::vector<QByteArray>
        m_texts; ///< what `m_name` and `m_carried` look at unless it is the line
    std::string_view m_name;
    std::vector<std::string_view> m_carried;
    Pos m_position;
};

} // namespace KelStd::cli
