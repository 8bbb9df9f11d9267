#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/AttributeColumns.h>
#include <KelStd/positions/FeatureWriter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace KelStd::positions {

/// A KML 2.2 document (OGC 07-147r2), a placemark in a line: points at WGS84 longitude, latitude
/// [deg] and ellipsoidal height [m] under their names, with all other columns as extended data,
/// numbers of the type double. No altitude mode is given, so that viewers draw the points on the
/// ground: a height in KML is one above mean sea level.
class KELSTD_EXPORT KmlWriter : public FeatureWriter
{
public:
    /// \param title the name of the document
    /// \param selection of the attributes
    KmlWriter(const LocationPrinter &printer, QString title, ColumnSelection selection = {})
        : FeatureWriter(printer, std::move(selection)), m_title(std::move(title))
    {}

    QByteArray begin(const InputColumns &columns) override;
    /// What stands behind the last position.
    QByteArray ending() const override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;

    /// The names of all columns but that of the point, and those of their fields, which readers
    /// tell from each other by more than case and from what KML itself says of a placemark; known
    /// after `begin`.
    QStringList columnNames() const { return m_columns.names(); }
    /// The names of the fields of this file's columns, in their order.
    QStringList fieldNames() const;

private:
    QString m_title;
    AttributeColumns m_columns;
    std::vector<QByteArray> m_tags; ///< the opening one of each column
};

} // namespace KelStd::positions
