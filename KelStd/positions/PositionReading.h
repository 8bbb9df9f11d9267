#pragma once

#include <KelStd/positions/ComponentReader.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/OrderSearch.h>
#include <KelStd/positions/PlainLine.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/positions/PositionParser.h>
#include <KelStd/positions/TextLine.h>

namespace KelStd::positions {

/// What a parser keeps of the lines before, and the way of a line through it: it is decoded and
/// split (`TextLine`), then taken as one in front of the order (OpeningLines.cpp) or behind it
/// (LaterLines.cpp), where it is read (`ComponentReader`) or recognised (`OrderSearch`).
class PositionParser::Reading
{
public:
    Reading(const InputForm &form, std::optional<ColumnChoice> choice);

    void setSkippedLines(qint64 count) { m_skippedLines = count; }
    qint64 skippedLines() const { return m_skippedLines; }

    Result parse(std::string_view line, qint64 lineNumber)
    {
        return isSettled() && readPlain(line, lineNumber) ? Result::Position
                                                          : parseWithCare(line, lineNumber);
    }
    Result parseWithCare(std::string_view bytes, qint64 lineNumber);
    bool finish();

    const QString &reason() const { return m_reason; }
    qint64 reasonLine() const { return m_reasonLine; }
    const Pos &position() const { return m_position; }
    std::string_view name() const { return m_name; }
    const std::vector<std::string_view> &carried() const { return m_carried; }
    std::string_view heightReference() const { return m_heightReference; }
    const std::optional<FieldOrder> &order() const { return m_order; }
    qint64 orderLine() const { return m_orderLine; }
    QStringList notes() const;
    bool fillsHeights() const { return m_form.lacksHeight() && m_order && m_order->hasHeight(); }
    bool isHeightTaken() const { return m_isHeightTaken; }
    const QStringList &carriedHeadings() const { return m_carriedHeadings; }
    void arrangeCarried(const QStringList &headings);
    bool isInWindows1252() const { return m_isInWindows1252; }
    std::optional<DecimalMark> decimalMark() const { return m_mark; }
    ListShape shape() const;
    qint64 enclosedLine() const { return m_enclosedLine; }

    /// Whether the order is known, and no line of units can change it any more.
    bool isSettled() const { return m_order && !m_waitsForPosition; }

    /// With the lines of units, without which the headings would say something else.
    QByteArray headerLine() const
    {
        const auto &headings = m_search.headings();
        const QByteArray line = !m_order && headings ? headings->bytes : m_headerLine;
        return line.isEmpty() && !m_unitLines.isEmpty() ? m_unitLines.chopped(1)
                                                        : m_unitLines + line;
    }

private:
    Result takeRemark(const TextLine &line);

    // OpeningLines.cpp
    Result takeOpening(const TextLine &line);
    Result takeOpeningWords(const TextLine &line, QString reason);
    Result takeOpeningValues(const TextLine &line, QString reason);
    Result takeOpeningRemark(const TextLine &line, const HeadingsFound &found);
    Result takeDamagedOpening(const TextLine &line);
    Result takeTooLongOpening(const QString &mistake);
    Result takeOther(const QString &reason, bool holdsData = false);
    Result takeOther(const TextLine &line, const QString &reason);
    Result takeFirstPosition(const SplitLine &line, const FieldOrder &found);
    QString doubtOnOrder(const SplitLine &line, const FieldOrder &order) const;
    Result takeSureHeadings(const FieldOrder &found, std::string_view bytes);

    // LaterLines.cpp
    Result takeLater(const TextLine &line);
    Result takeFirstBelowHeadings(const SplitLine &line);
    void watchBehind(const SplitLine &line);
    Result takeLaterRemark(const TextLine &line, const HeadingsFound &found);
    Result takeDamagedLater(const TextLine &line);
    std::optional<Result> takeLaterUnits(const TextLine &line, const QString &text);
    Result takeLaterHeadings(const HeadingsFound &found);
    Result takeOtherHeadings();
    bool mayBeOtherHeadings(const SplitLine &line) const;
    bool isRemarkOfOtherOrder(const QString &remark, const SplitLine &line) const;

    const FieldOrder *knownOrder() const;
    QString chooseSeparator(TextLine &line) const;
    QString doubtOnBreaks(const TextLine &line);
    void keepMark();
    bool hasPlainPoint() const;
    QString doubtOnMark(const SplitLine &line, const FieldOrder &order,
                        std::optional<DecimalMark> mark) const;
    void decide(const FieldOrder &order, qint64 line, const QByteArray &headerLine);
    Result readFields(const SplitLine &line, const FieldOrder &order);
    bool readPlain(std::string_view line, qint64 lineNumber);
    QString noteOnColumns() const;
    QString noteOnComputedColumns() const;
    QString noteOnHeight() const;
    QString noteOnGeoid() const;
    Result takeSeparatorLine(std::string_view bytes);
    QString doubtOnName(const SplitLine &line, const FieldOrder &order) const;
    bool mayBePair(std::string_view name) const;
    void keepTexts(const SplitLine &line, const FieldOrder &order);
    Result bad(const QString &reason);
    Result badHeader(const LineMistake &mistake);

    InputForm m_form;
    ComponentReader m_components;
    std::optional<ColumnChoice> m_choice;
    OrderSearch m_search;
    std::optional<FieldOrder> m_order;
    qint64 m_skippedLines = 0;
    qint64 m_lineNumber = 0;
    qint64 m_lastText = 0;  ///< the last line that is neither empty nor a remark
    qint64 m_orderLine = 0; ///< the line that decided the order
    /// The line that decided the plain order has a name and components that are not all whole
    /// numbers.
    bool m_isUnlikeWholeNumbers = false;
    int m_emptyBehind = FieldOrder::noField; ///< may hold the height of a later line
    bool m_waitsForPosition = false;         ///< headings gave the order, and no position followed
    bool m_mayTakeUnits = false;             ///< nor any line that failed
    bool m_isInWindows1252 = false;          ///< the last line
    std::optional<DecimalMark> m_mark;       ///< that the last position shows
    std::optional<DecimalMark> m_listMark;   ///< that the first position shows
    qint64 m_markLine = 0;                   ///< the first position's
    qint64 m_enclosedLine = 0;               ///< in the last line's quotation marks
    QByteArray m_unitLines;                  ///< those that the order has taken, with their ends
    QByteArray m_headerLine;
    QString m_reason;
    qint64 m_reasonLine = 0;
    PlainLine m_plain;
    std::vector<QByteArray> m_texts; ///< what `m_name` and others look at unless it is the line
    std::string_view m_name;
    std::string_view m_heightReference;
    std::vector<std::string_view> m_carried;
    std::vector<int> m_carriedFields; ///< of the order, as they were arranged
    QStringList m_carriedHeadings;
    bool m_isHeightTaken = false;
    Pos m_position;
};

} // namespace KelStd::positions
