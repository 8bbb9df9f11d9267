#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>
#include <KelStd/positions/PrintedColumns.h>

namespace KelStd::positions {

/// Comma-separated values: a header line whose names carry the units, then a line for each
/// location, with the selected columns whatever the input has. Unless the printer is told
/// otherwise, numbers have so many decimals that nothing is lost which a survey can measure.
/// Without a header `begin` returns nothing, and is called all the same.
class KELSTD_EXPORT CsvWriter : public PositionWriter
{
public:
    /// Copies `printer`.
    CsvWriter(const LocationPrinter &printer, bool hasHeader, const ColumnSelection &selection = {})
        : m_printer(printer), m_hasHeader(hasHeader), m_selection(selection)
    {}

    QString mistakeIn(const InputColumns &columns) const override;
    QByteArray begin(const InputColumns &columns) override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;

private:
    LocationPrinter m_printer;
    bool m_hasHeader;
    ColumnSelection m_selection;
    PrintedColumns m_columns;
};

/// Appends a UTF-8 text as a field of a line: in quotation marks when it has to be. May be
/// called on any thread.
KELSTD_EXPORT void appendCsvField(QByteArray &bytes, std::string_view text);

} // namespace KelStd::positions
