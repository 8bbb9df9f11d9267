#pragma once

#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>

namespace KelStd::cli {

/// A table for the eye, with labelled columns and units. Columns have fixed widths, so that a line
/// can be printed before the next one is known.
class TableWriter : public positions::PositionWriter
{
public:
    enum class Layout
    {
        Wide,  ///< a location in a line, below one heading
        Narrow ///< a location in eight or nine lines, each frame below its own labels
    };

    /// `geoidModel`: the one in use, empty for none. With one, every location says what its
    /// projected height is above.
    TableWriter(const positions::LocationPrinter &printer, Layout layout, const QString &geoidModel)
        : m_printer(printer), m_layout(layout), m_geoidModel(geoidModel)
    {}

    QByteArray begin(const positions::InputColumns &columns) override;
    QByteArray separator() const override;
    void write(QByteArray &bytes, const positions::PrintedPosition &position) const override;

    /// Columns of text that the wide layout needs.
    static int wideWidth(const positions::LocationPrinter &printer, const QString &geoidModel);

private:
    void writeWide(QByteArray &bytes, const positions::PrintedPosition &position) const;
    void writeNarrow(QByteArray &bytes, const positions::PrintedPosition &position) const;
    QString furtherText(const positions::PrintedPosition &position, int index) const;

    positions::LocationPrinter m_printer;
    Layout m_layout;
    QString m_geoidModel;
    positions::InputColumns m_columns;
    QStringList m_further; ///< headings of the extra columns, then of the carried ones
};

} // namespace KelStd::cli
