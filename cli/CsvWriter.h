#pragma once

#include <cli/PositionWriter.h>
#include <cli/ValuePrinter.h>

namespace KelStd::cli {

class Console;

/// Comma-separated values: a header line whose names carry the units, then a line for each
/// location. Always the same columns, the first one being the name. Unless the printer is told
/// otherwise, numbers have so many decimals that nothing is lost which a survey can measure.
class CsvWriter : public PositionWriter
{
public:
    CsvWriter(Console &console, const ValuePrinter &printer)
        : m_console(console), m_printer(printer)
    {}

    void begin(bool hasNames) override;
    void write(const QString &name, const Location &location, const QString &geoidModel) override;

private:
    Console &m_console;
    ValuePrinter m_printer;
};

/// A field as it stands in a line: in quotation marks when it has to be.
QString csvField(const QString &text);

} // namespace KelStd::cli
