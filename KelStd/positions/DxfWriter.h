#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/AttributeColumns.h>
#include <KelStd/positions/FeatureWriter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>

namespace KelStd::positions {

/// A DXF drawing of release 12 (AC1009), which every CAD program reads. Each location is a POINT on
/// the layer POINTS at easting, northing and local height, with its name as a TEXT on the layer
/// NAMES. A DXF names no coordinate reference system: a comment in the first line does. Release 12
/// has no variable for the unit either: a comment "1 unit = 0.3048 m" says it.
///
/// The name and all other columns are extended data of the point under the application KELSTD: a
/// text is a string "NAME=TEXT", a number the string "NAME=" and a real. All of it is ASCII: other
/// characters, backslashes and carets stand as "\U+XXXX", so does "=" in a NAME. A text of more
/// than 200 bytes is split, and all but its last piece end with a lone backslash. A TEXT has the
/// letters of Latin 1 as they are; a name of more than 250 bytes has none.
class KELSTD_EXPORT DxfWriter : public FeatureWriter
{
public:
    /// \param comment on the system and the units
    /// \param metresPerUnit of easting, northing and height: a drawing has one unit
    /// \param selection of the attributes
    DxfWriter(const LocationPrinter &printer, QString comment, double metresPerUnit,
              ColumnSelection selection = {})
        : FeatureWriter(printer, std::move(selection)), m_comment(std::move(comment)),
          m_metresPerUnit(metresPerUnit)
    {}

    /// A comment behind that of the unit: the system as a PROJ string, where the first one names it
    /// by no code. To be called before `begin`.
    void setDefinition(const QString &definition) { m_definition = definition; }

    QByteArray begin(const InputColumns &columns) override;
    /// What stands behind the last position.
    QByteArray ending() const override;
    void write(QByteArray &bytes, const PrintedPosition &position) const override;

private:
    void appendPoint(QByteArray &bytes, const char *layer, const Location &location) const;

    QString m_comment;
    QString m_definition;
    double m_metresPerUnit;
    bool m_hasNames = false;
    AttributeColumns m_columns;
};

} // namespace KelStd::positions
