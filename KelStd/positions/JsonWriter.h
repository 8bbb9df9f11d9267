#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>
#include <KelStd/positions/PrintedColumns.h>

#include <vector>

namespace KelStd::positions {

/// A JSON object (RFC 8259) in a line for each location, with the names of the columns for keys.
/// Plain decimals are numbers, a missing one null; angles in another style, names and carried
/// fields are texts. Without names in the input there is no "point",
/// unless it is selected by its name.
class KELSTD_EXPORT JsonWriter : public PositionWriter
{
public:
    /// Copies `printer`.
    explicit JsonWriter(const LocationPrinter &printer, const ColumnSelection &selection = {})
        : m_printer(printer), m_selection(selection)
    {}

    QString mistakeIn(const InputColumns &columns) const override;
    QByteArray begin(const InputColumns &columns) override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;

protected:
    /// Appends the object.
    void append(QByteArray &bytes, const PrintedPosition &position) const;

private:
    struct KeyedColumn
    {
        PrintedColumn column;
        QByteArray key; ///< with quotation marks and colon
    };

    void appendValue(QByteArray &bytes, const PrintedColumn &column,
                     const PrintedPosition &position, QByteArray &buffer) const;

    LocationPrinter m_printer;
    ColumnSelection m_selection;
    std::vector<KeyedColumn> m_columns;
};

/// A GeoJSON FeatureCollection (RFC 7946), a feature in a line: points at WGS84 longitude, latitude
/// [deg] and ellipsoidal height [m], whose properties are the object of `JsonWriter`. The comma
/// between two features begins a line, so that each one is whole before the next is known.
class KELSTD_EXPORT GeoJsonWriter : public JsonWriter
{
public:
    /// As `JsonWriter`'s.
    using JsonWriter::JsonWriter;

    QByteArray begin(const InputColumns &columns) override;
    QByteArray separator() const override;
    /// What stands behind the last position.
    QByteArray ending() const override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;
};

} // namespace KelStd::positions
