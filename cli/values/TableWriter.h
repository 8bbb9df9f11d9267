#pragma once

#include <cli/values/TableLayout.h>

#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>
#include <KelStd/positions/PrintedColumns.h>

#include <vector>

namespace KelStd::cli {

/// A table for the eye, with labelled columns and units. Columns have fixed widths, so that a line
/// can be printed before the next one is known.
class TableWriter : public positions::PositionWriter
{
public:
    enum class Layout
    {
        Wide,  ///< a location in a line, below one heading
        Narrow ///< a location in some lines, each frame below its own labels
    };

    /// `geoidModel`: the one in use, empty for none. With one, every location says what its
    /// projected height is above.
    TableWriter(const positions::LocationPrinter &printer, Layout layout, const QString &geoidModel,
                const positions::ColumnSelection &selection)
        : m_printer(printer), m_layout(layout), m_geoidModel(geoidModel), m_selection(selection)
    {}

    QString mistakeIn(const positions::InputColumns &columns) const override;
    QByteArray begin(const positions::InputColumns &columns) override;
    QByteArray separator() const override;
    void write(QByteArray &bytes, const positions::PrintedPosition &position) const override;

    /// Columns of text that the wide layout needs for an input with names.
    static int wideWidth(const positions::LocationPrinter &printer, const QString &geoidModel,
                         const positions::ColumnSelection &selection);

private:
    QByteArray wideHeading() const;
    void writeWide(QByteArray &bytes, const positions::PrintedPosition &position) const;
    void writeNarrow(QByteArray &bytes, const positions::PrintedPosition &position) const;
    void writeNumbers(QByteArray &bytes, const TableGroup &group,
                      const positions::PrintedPosition &position) const;
    QString cell(const positions::PrintedColumn &column,
                 const positions::PrintedPosition &position) const;

    positions::LocationPrinter m_printer;
    Layout m_layout;
    QString m_geoidModel;
    positions::ColumnSelection m_selection;
    std::vector<TableGroup> m_groups;
};

} // namespace KelStd::cli
