#pragma once

#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/OrderSearch.h>
#include <KelStd/positions/PlainLine.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/positions/PositionParser.h>
#include <KelStd/text/TypedNumber.h>

namespace KelStd::positions {

/// What a parser keeps of the lines before, and the ways of a line through it.
class PositionParser::Reading
{
public:
    Reading(const InputForm &form, std::optional<ColumnChoice> choice);

    void setSkippedLines(qint64 count) { m_skippedLines = count; }
    qint64 skippedLines() const { return m_skippedLines; }

    Result parse(std::string_view line, qint64 lineNumber)
    {
        return m_order && readPlain(line) ? Result::Position : parseWithCare(line, lineNumber);
    }
    Result parseWithCare(std::string_view bytes, qint64 lineNumber);
    bool finish();

    const QString &reason() const { return m_reason; }
    qint64 reasonLine() const { return m_reasonLine; }
    const Pos &position() const { return m_position; }
    std::string_view name() const { return m_name; }
    const std::vector<std::string_view> &carried() const { return m_carried; }
    const std::optional<FieldOrder> &order() const { return m_order; }
    QString noteOnColumns() const;

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

} // namespace KelStd::positions
