#pragma once

#include <KelStd/positions/ColumnChoice.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/positions/TextLine.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <optional>

namespace KelStd::positions {

/// What is wrong with a line of the input.
struct LineMistake
{
    qint64 line = 0;
    QString reason;

    bool isThere() const { return line > 0; }
};

/// What a line is as headings.
struct HeadingsFound
{
    enum class Kind
    {
        None,   ///< no headings; `mistake` says why it cannot be
        Order,  ///< headings that give the `order`
        Mistake ///< headings, and no position can be read by them
    };

    Kind kind = Kind::None;
    FieldOrder order;
    QString mistake;
    bool isRemarkWithoutHeight = false; ///< with the `order`, for lines of as many fields
};

/// Headings that give an order, and where they stand.
struct HeadingsLine
{
    FieldOrder order;
    qint64 line = 0;
    QByteArray bytes;
    bool isSure = false; ///< they name the components; words alone may be a title
};

/// Tells headings from titles, remarks and positions, and keeps what the first lines of an input
/// say about the order of its fields until one of them decides it. Longitude and latitude are
/// never taken in the usual order where a line has said another one.
class OrderSearch
{
public:
    OrderSearch(const InputForm &form, const std::optional<ColumnChoice> &choice)
        : m_form(form), m_choice(choice)
    {}

    /// The fields of a line as headings. A remark behind a # counts only when it names all the
    /// components, or all that were picked.
    HeadingsFound headingsIn(const SplitLine &line, bool isRemark) const;

    /// Whether the remark names components in another order, as far as it names them.
    bool contradicts(const QString &remark, const SplitLine &line, const FieldOrder &order) const;

    /// The same of a remark that is a line of headings, though an incomplete one.
    bool contradictsAsHeadings(const QString &remark, const SplitLine &line,
                               const FieldOrder &order) const;

    /// Keeps what a remark says against the usual order.
    void keepRemark(const QString &remark, const SplitLine &line, qint64 lineNumber);

    /// Keeps the units that a line in front of the positions names, for the order to come: a line
    /// of units, or else a title or remark. True when it is a line of units.
    bool keepUnits(const QString &text, const TextLine &line, qint64 lineNumber);

    /// Why a line of units, a title or a remark behind the line that decided the order contradicts
    /// it; empty when it does not, or names no unit. `isUnits`: it is a line of units.
    QString unitsAgainst(const QString &text, const SplitLine &line, const FieldOrder &order,
                         bool &isUnits) const;

    /// The same in front of the first position: the order takes the units of a line of units.
    QString takeUnits(const QString &text, const SplitLine &line, FieldOrder &order,
                      bool &isUnits) const;

    /// Whether a remark with these fields, in words of another language, was kept.
    bool hasWords(const QStringList &fields) const { return m_words.contains(fields); }

    /// Keeps headings behind a #, or words that may be headings. False with the mistake when they
    /// contradict those before.
    bool keepHeadings(const HeadingsLine &headings, LineMistake &mistake);

    /// Keeps a remark that names two components, for lines of as many fields without a height.
    void keepWithoutHeight(const HeadingsLine &headings) { m_withoutHeight = headings; }

    /// The remark that was kept so, if it gave the order.
    const HeadingsLine *headingsOf(const FieldOrder &order) const;

    /// Keeps a line of another kind, such as a title, in front of headings: false when there are
    /// too many of them.
    /// `holdsData`: it is rather a position that cannot be read, and should not be passed over.
    bool keepOther(const LineMistake &line, bool holdsData);

    /// Keeps that a line of so many fields was a position that cannot be read.
    void keepFailed(const SplitLine &line, qint64 lineNumber);

    /// The first such line with a number for a name; 0 when there is none. What follows with a
    /// field less may have lost its height.
    qint64 numberedFailure() const { return m_numberedFailure; }

    /// The first such line with more fields than the order has; 0 when there is none.
    qint64 failureOfMore(const FieldOrder &order, int &fields) const;

    const std::optional<HeadingsLine> &headings() const { return m_headings; }

    /// The order for a line that is to be a position; nothing with the reason when there is none.
    std::optional<FieldOrder> orderFor(const SplitLine &line, QString &reason) const;

    /// Lets the order take what was kept for it. The result says why no line can be read in it.
    LineMistake settle(FieldOrder &order) const;

    /// Lets the order take the units of lines of units that were kept. The result is the first line
    /// that was kept with units in which it is not read.
    LineMistake settleUnits(FieldOrder &order) const;

    /// The lines of units that were kept, each as it stands and with an end.
    QByteArray linesOfUnits() const;

    /// Why lines that are neither headings nor positions are not passed over.
    LineMistake otherLines() const;

    /// The same at the end of the input, where the last line that is no remark has this number.
    LineMistake otherLinesAtEnd(qint64 lastLine) const;

    /// "...; skipping 3 passes over the first 3 lines"
    QString withSkipHint(const QString &reason, qint64 lines) const;

private:
    /// A line that names units.
    struct NamedUnits
    {
        qint64 line = 0;
        QString text;      ///< of a title or remark
        QStringList units; ///< of a line of units
        QByteArray bytes;  ///< of a line of units
    };

    InputForm m_form;
    std::optional<ColumnChoice> m_choice;
    std::optional<HeadingsLine> m_headings;
    QVector<NamedUnits> m_units;
    qint64 m_unkeptUnits = 0;     ///< the first line that names units and was not kept
    QVector<QStringList> m_words; ///< remarks that may be headings in another language
    LineMistake m_remark;         ///< that contradicts the usual order
    LineMistake m_other;          ///< the first line of another kind
    qint64 m_lastOther = 0;
    int m_others = 0;
    bool m_holdsData = false;     ///< one of the lines of another kind
    qint64 m_numberedFailure = 0; ///< a line with a number for a name that failed
    qint64 m_failure = 0;         ///< the failed line with the most fields
    int m_failedFields = 0;
    std::optional<HeadingsLine> m_withoutHeight;
};

} // namespace KelStd::positions
