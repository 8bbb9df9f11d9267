#pragma once

#include <KelStd/positions/ComponentReader.h>
#include <KelStd/positions/Headings.h>
#include <KelStd/positions/TextLine.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

/// Lists whose first line is headings, in any order, and every later one a row below them.
namespace KelStd::positions {

/// A column that a list may have.
struct ListColumn
{
    QString label; ///< in messages: "northing"
    bool isNeeded = true;
    std::function<bool(const Heading &)> isHeadedBy;
    bool isAngle = false;
    bool isText = false;
};

class HeadedList
{
public:
    /// The first column is that of the names.
    explicit HeadedList(std::vector<ListColumn> columns) : m_columns(std::move(columns)) {}

    enum class Result
    {
        Nothing, ///< an empty line, a remark, or the headings
        Row,     ///< a line of values
        Mistake
    };

    /// Takes the next line.
    Result take(std::string_view bytes, QString &mistake);

    bool hasHeadings() const { return m_hasHeadings; }
    const TextLine &line() const { return m_line; }
    const ListShape &shape() const { return m_shape; }

    /// Whether the list has the column.
    bool has(int column) const { return fieldOf(column) >= 0; }

    /// The column's field of the row; empty where there is none.
    QString textOf(int column) const;

    /// What one of the heading's unit measures [m], [deg]; nothing where the heading names none.
    std::optional<double> measureOfHeading(int column) const;

    /// Reads three columns as a position of `form`, to degrees and metres, in the units of the
    /// headings or else of the form; units in doubt are refused as those of positions are. A column
    /// that is missing, or empty in this row and not needed, is read as 0. Empty, or why not.
    QString readPosition(const InputForm &given, const std::array<int, componentsPerFrame> &columns,
                         Components &components) const;

    /// Reads one number as it stands, by the marks of the row's other numbers.
    QString readNumberOf(int column, std::optional<double> &value) const;

    /// Headings of columns that are not read.
    const QStringList &notRead() const { return m_notRead; }

private:
    static constexpr int nameColumn = 0;

    int fieldOf(int column) const { return m_fields[static_cast<std::size_t>(column)]; }
    QString readHeadings(const QStringList &headings);
    QString takeHeadings(const QStringList &headings);
    bool hasValues(const SplitLine &line) const;
    QString chooseSeparator();
    QString doubtOnBreaks() const;
    QString settleDecimalMark();
    QString lacking(const QStringList &missing) const;

    std::vector<ListColumn> m_columns;
    std::vector<int> m_fields;
    std::vector<double> m_measures; ///< [m], [deg]; 0 where the heading names no unit
    QStringList m_headings;
    int m_count = 0;          ///< of headings
    ListShape m_shape;        ///< of the headings, separated as the last row
    std::vector<int> m_units; ///< the fields that hold a unit of the line
    QStringList m_notRead;
    QStringList m_remarks; ///< in front of the headings
    TextLine m_line;
    QString m_marked;      ///< the first number with a decimal mark
    bool m_hasRow = false; ///< behind the headings
    bool m_hasHeadings = false;
    bool m_isFirst = true;
};

} // namespace KelStd::positions
