#pragma once

#include <cli/run/OutputSink.h>
#include <cli/vector/FileSet.h>
#include <cli/vector/VectorFiles.h>

#include <KelStd/positions/FeatureWriter.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PrintedColumns.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <vector>

namespace KelStd::cli::vector {

/// What a layer is written with.
struct LayerPlan
{
    QString target;          ///< the file, as it was given
    std::string format;      ///< "GPKG"
    std::string reference;   ///< a code or a definition; empty for none
    double planeUnit = 1.0;  ///< what one of the layer's northings and eastings measures [m]
    double heightUnit = 1.0; ///< the same of heights
    QString heightReference; ///< what the heights are above
    QStringList notes;       ///< to be said once the file is written
};

/// Locations as rows of a layer: easting, northing, local height, and all printed columns as
/// attributes, numbers as numbers. The rows are written where they come in order, by the sink that
/// this is as well.
class LayerOutput : public positions::FeatureWriter, public OutputSink
{
public:
    LayerOutput(VectorFiles &files, const positions::LocationPrinter &printer,
                positions::ColumnSelection selection, LayerPlan plan);

    /// Makes the place where the file is prepared; false where it cannot be written.
    bool open();

    QByteArray begin(const positions::InputColumns &columns) override;
    void write(QByteArray &bytes, const positions::PrintedPosition &position) const override;

    QString displayName() const override { return m_plan.target; }
    void write(const QByteArray &bytes) override;
    bool canWrite() const override { return m_error.isEmpty(); }
    bool finish() override;
    QString errorText() const override { return m_error; }
    QStringList notes() const override { return m_plan.notes; }

private:
    VectorFiles &m_files;
    LayerPlan m_plan;
    FileSet m_set;
    std::vector<positions::PrintedColumn> m_columns;
    std::vector<Field> m_fields;
    std::unique_ptr<LayerWriter> m_writer;
    long long m_rows = 0;
    QString m_error;
};

} // namespace KelStd::cli::vector
