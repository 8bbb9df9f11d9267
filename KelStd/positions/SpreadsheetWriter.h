#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>
#include <KelStd/positions/PrintedColumns.h>
#include <KelStd/positions/SpreadsheetText.h>

#include <string_view>

namespace KelStd::positions {

/// The columns of `CsvWriter` as a spreadsheet opens them by a double click: behind a byte-order
/// mark, with the separator and the decimal sign of its dialect, lines ended by CR LF, and texts so
/// that none becomes a number, a date or a formula. Fields that are carried through are texts, also
/// where they look like numbers.
class KELSTD_EXPORT SpreadsheetWriter : public PositionWriter
{
public:
    /// Copies `printer`.
    SpreadsheetWriter(const LocationPrinter &printer, const SpreadsheetDialect &dialect,
                      bool hasHeader, const ColumnSelection &selection = {})
        : m_printer(printer), m_dialect(dialect), m_hasHeader(hasHeader), m_selection(selection)
    {}

    QString mistakeIn(const InputColumns &columns) const override;
    QByteArray begin(const InputColumns &columns) override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;

private:
    void appendNumber(QByteArray &bytes, std::string_view text) const;
    void appendText(QByteArray &bytes, std::string_view text, bool isName) const;

    LocationPrinter m_printer;
    SpreadsheetDialect m_dialect;
    bool m_hasHeader;
    ColumnSelection m_selection;
    PrintedColumns m_columns;
};

} // namespace KelStd::positions
