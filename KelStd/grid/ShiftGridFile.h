#pragma once

#include <KelStd/Export.h>
#include <KelStd/grid/GridFailure.h>
#include <KelStd/grid/GridNodes.h>

#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd {

/// A file with grids of datum shifts, or a GeoTIFF grid of any kind, looked at without PROJ: where
/// its grids lie by their headers, and whether the file has what those promise. Values are not
/// read.
///
///     ShiftGridFile file;
///     if (const GridFailure failure = file.open("BETA2007.gsb"))
///         return show(failure.text);
///     for (const GridNodes &grid : file.grids())
///         show(grid.latitude, grid.longitudeOf(grid.columns - 1));
///
/// NTv2 files are known by their first record, GeoTIFF files by their first bytes; names do not
/// matter. Failures have texts for people, translated in the context "QObject"; no file is written.
/// One object belongs to one thread at a time.
class KELSTD_EXPORT ShiftGridFile
{
public:
    /// The layout of a grid of datum shifts.
    enum class Format
    {
        None,   ///< neither of the others
        Ntv2,   ///< by its first record
        GeoTiff ///< by its first bytes
    };

    /// Reads the headers of a regular file. A failure leaves the object without grids, with
    /// `format` as it was found out. A GeoTIFF file without a place for its pixels is `NoGrid`, and
    /// so is a file of another format; one whose pixels lie partly beyond its end is `CutShort`.
    ///
    /// \return kind `None` where the file has all that its headers promise.
    GridFailure open(const QString &fileName);

    /// The layout of the file that was opened last.
    Format format() const { return m_format; }

    /// The grids of the file, in its order; a fine one may lie within a coarse one.
    const QList<GridNodes> &grids() const { return m_grids; }

    /// How many values each node has in the first grid: 4 in NTv2 (two of them accuracies); a
    /// GeoTIFF file of one value a node is a geoid model or an image.
    int valuesPerNode() const { return m_valuesPerNode; }

    /// [bytes]; 0 before a file was opened.
    qint64 size() const { return m_size; }

    /// What the shifts start from and lead to, as NTv2 has it in eight letters each ("DHDN90",
    /// "ETRS89"), and GeoTIFF as a code ("EPSG:4283"); empty where it is not said.
    QString fromSystem() const { return m_from; }
    /// What the shifts lead to, as `fromSystem` says what they start from.
    QString toSystem() const { return m_to; }

    /// "NTv2", "GeoTIFF" or "".
    static QString formatName(Format format);

private:
    GridFailure readNtv2(QFile &file);
    GridFailure readGeoTiff(QFile &file);

    Format m_format = Format::None;
    QList<GridNodes> m_grids;
    int m_valuesPerNode = 0;
    qint64 m_size = 0;
    QString m_from;
    QString m_to;
};

} // namespace KelStd
