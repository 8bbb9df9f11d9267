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
        Narrow ///< a location in eight or nine lines, each frame below its own labels
    };

    /// `geoidModel`: the one in use, empty for none. With one, every location says what its
    /// projected height is above.
    TableWriter(Console &console, const ValuePrinter &printer, Layout layout,
                const QString &geoidModel)
        : m_console(console), m_printer(printer), m_layout(layout), m_geoidModel(geoidModel)
    {}

    void begin(bool hasNames) override;
    void write(const QString &name, const Location &location, const QString &geoidModel) override;

    /// Columns of text that the wide layout needs.
    static int wideWidth(const ValuePrinter &printer, const QString &geoidModel);

private:
    void writeWide(const QString &name, const Location &location, const QString &geoidModel);
    void writeNarrow(const QString &name, const Location &location, const QString &geoidModel);
    void printLine(QString line);

    Console &m_console;
    ValuePrinter m_printer;
    Layout m_layout;
    QString m_geoidModel;
    bool m_hasNames = false;
    bool m_isFirst = true;
};

} // namespace KelStd::cli
