#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>
#include <KelStd/positions/PrintedColumns.h>

namespace KelStd::positions {

/// Comma-separated values: a header line whose names carry the units, then a line for each
/// location. Always the same columns, the first one being the name, and behind them what is carried
/// through. Unless the printer is told otherwise, numbers have so many decimals that nothing is
/// lost which a survey can measure. Without a header `begin` returns nothing, and is called all the
/// same.
class KELSTD_EXPORT CsvWriter : public PositionWriter
{
public:
    CsvWriter(const LocationPrinter &printer, bool hasHeader)
        : m_printer(printer), m_hasHeader(hasHeader)
    {}

    QByteArray begin(const InputColumns &columns) override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;

private:
    LocationPrinter m_printer;
    bool m_hasHeader;
    PrintedColumns m_columns;
};

/// Appends a UTF-8 text as a field of a line: in quotation marks when it has to be. May be
/// called on any thread.
KELSTD_EXPORT void appendCsvField(QByteArray &bytes, std::string_view text);

} // namespace KelStd::positions
