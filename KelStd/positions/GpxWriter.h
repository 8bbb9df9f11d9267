#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/AttributeColumns.h>
#include <KelStd/positions/FeatureWriter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace KelStd::positions {

/// A GPX 1.1 document (topografix.com/GPX/1/1), a waypoint in a line: points at WGS84 latitude,
/// longitude [deg] and ellipsoidal height [m] under their names. All other columns are extensions,
/// elements of the namespace "http://osgeo.org/gdal" that GDAL gives to attributes.
///
/// A receiver that reads the file takes the heights as above mean sea level, as GPX says.
class KELSTD_EXPORT GpxWriter : public FeatureWriter
{
public:
    /// \param selection of the attributes
    explicit GpxWriter(const LocationPrinter &printer, ColumnSelection selection = {})
        : FeatureWriter(printer, std::move(selection))
    {}

    QByteArray begin(const InputColumns &columns) override;
    /// What stands behind the last position.
    QByteArray ending() const override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;

    /// The names of all columns but that of the point, and those of their elements; known after
    /// `begin`.
    QStringList columnNames() const { return m_columns.names(); }
    /// The names of the elements of this file's columns, in their order.
    QStringList elementNames() const { return elementNames(columnNames()); }

    /// The names as elements can have them: letters, digits, "_", "-" and "." for all other
    /// characters "_", each name once.
    static QStringList elementNames(const QStringList &names);

private:
    AttributeColumns m_columns;
    std::vector<QByteArray> m_elements;
};

} // namespace KelStd::positions
