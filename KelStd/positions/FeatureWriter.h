#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/ColumnSelection.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>
#include <KelStd/positions/PrintedColumns.h>

#include <QtCore/QString>

namespace KelStd::positions {

/// Writes locations as features: a place and a name of the form's own, and the selected columns as
/// attributes.
class KELSTD_EXPORT FeatureWriter : public PositionWriter
{
public:
    QString mistakeIn(const InputColumns &columns) const override
    {
        return printedColumns(columns).mistake();
    }

protected:
    /// Copies `printer`.
    FeatureWriter(const LocationPrinter &printer, ColumnSelection selection)
        : m_printer(printer), m_selection(std::move(selection))
    {}

    /// What prints the numbers.
    const LocationPrinter &printer() const { return m_printer; }

    /// The columns that are written for an input that has these.
    PrintedColumns printedColumns(const InputColumns &columns) const
    {
        return {m_printer, columns, m_selection};
    }

private:
    LocationPrinter m_printer;
    ColumnSelection m_selection;
};

} // namespace KelStd::positions
