#pragma once

#include <KelStd/Export.h>
#include <KelStd/grid/GridFailure.h>
#include <KelStd/grid/GridNodes.h>

#include <QtCore/QFile>
#include <QtCore/QString>

namespace KelStd {

/// A geoid grid file, looked at without PROJ: what its header says, whether that is there, and its
/// values.
///
/// A file is read as GGF where its name ends in ".ggf" (in letters of either size), and otherwise
/// as GTX. GeoTIFF grids are known by their first bytes and not read: `open` fails with
/// `GridFailureKind::OnlyForProj`, which says nothing against the file.
///
/// One object reads one file after another; it belongs to one thread at a time. Failures have texts
/// for people, translated in the context "QObject"; nothing is logged, and no file is written.
class KELSTD_EXPORT GridFile
{
public:
    /// The layout of a grid.
    enum class Format
    {
        Gtx,    ///< which PROJ reads
        Ggf,    ///< which is converted to GTX
        GeoTiff ///< which PROJ alone reads
    };

    /// Opens a regular file and reads its header. A failure leaves the object without a file, with
    /// `format` as it was found out: `GridFailureKind::OnlyForProj` goes with `Format::GeoTiff`.
    GridFailure open(const QString &fileName);

    /// The layout of the file that was opened last.
    Format format() const { return m_format; }

    /// Of the file that was opened last; no rows and columns before the first one and after a
    /// failure.
    const GridNodes &nodes() const { return m_nodes; }

    /// Whether the file has the values that its header promises (and, if it is GTX, nothing behind
    /// them), and every node is a place on the earth.
    GridFailure completeness() const;

    /// Whether the last quarter of the values is nothing but bytes of zero, as in a file whose end
    /// was never written: the disk was full, or a copy was interrupted. A quarter smaller than the
    /// smallest block of a disk says nothing. Reads no further than to the first other byte.
    bool endsInZeros();

    /// A node and its value [m].
    struct Node
    {
        double value;  ///< [m]
        qint64 row;    ///< 0 is the southernmost
        qint64 column; ///< 0 is the westernmost
    };

    /// What the values of a grid are like.
    struct Values
    {
        /// Nodes with the mark of GTX for a missing value (-88.8888), with one beyond 1000 m, which
        /// PROJ takes for such a mark, or with what is no number.
        qint64 missing = 0;
        Node lowest{0.0, -1, -1};  ///< the first of the lowest in the file; row -1: all are missing
        Node highest{0.0, -1, -1}; ///< the first of the highest; row -1: all are missing
    };

    /// Reads all values, in pieces of 64 KiB. A failure, also one of `completeness`, leaves
    /// `values` with what came before it.
    GridFailure readValues(Values &values);

    /// "GTX", "GGF" or "GeoTIFF".
    static QString formatName(Format format);

    /// Whether a file's name ends in ".ggf" or ".gtx", in letters of either size.
    static bool isGgfName(const QString &fileName);
    /// The same for ".gtx".
    static bool isGtxName(const QString &fileName);

private:
    GridFailure readHeader();
    void take(double value, qint64 index, Values &values) const;

    QFile m_file;
    Format m_format = Format::Gtx;
    bool m_isReversed = false; ///< the first row of the file is the northernmost
    GridNodes m_nodes;
};

} // namespace KelStd
