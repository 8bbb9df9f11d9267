#pragma once

#include <cli/PositionWriter.h>
#include <cli/ValuePrinter.h>

namespace KelStd::cli {

class Console;

/// A table for the eye, with labelled columns and units. Columns have fixed widths, so that a line
/// can be printed before the next one is known.
class TableWriter : public PositionWriter
{
public:
    enum class Layout
    {
        Wide,  ///< a location in a line, below one heading
        Narrow ///< a location in seven lines, each frame below its own labels
    };

    TableWriter(Console &console, const ValuePrinter &printer, Layout layout)
        : m_console(console), m_printer(printer), m_layout(layout)
    {}

    void begin(bool hasNames) override;
    void write(const QString &name, const Location &location) override;

    /// Columns of text that the wide layout needs.
    static int wideWidth(const ValuePrinter &printer);

private:
    void writeWide(const QString &name, const Location &location);
    void writeNarrow(const QString &name, const Location &location);
    void printLine(QString line);

    Console &m_console;
    ValuePrinter m_printer;
    Layout m_layout;
    bool m_hasNames = false;
    bool m_isFirst = true;
};

} // namespace KelStd::cli
