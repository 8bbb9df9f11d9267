#pragma once

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QVector>

#include <optional>

/// The headers of TIFF and BigTIFF files.
namespace kelstd_grid {

/// The tags of TIFF that grids are described by; the numbers are TIFF's and GeoTIFF's.
enum class TiffTag
{
    SubfileType = 254,
    Width = 256,
    Height = 257,
    StripOffsets = 273,
    ValuesPerPixel = 277,
    StripSizes = 279,
    TileOffsets = 324,
    TileSizes = 325,
    PixelScale = 33550,
    TiePoint = 33922,
    GeoKeys = 34735,
    GdalMetadata = 42112 ///< GDAL's, a text
};

/// The images of a file, each with the numbers of those tags; others are left out.
class TiffHeaders
{
public:
    using Image = QHash<int, QVector<double>>; ///< a text has a number for each byte

    /// Whether bytes begin like a TIFF or BigTIFF file of either order of bytes.
    static bool isTiff(const QByteArray &bytes);

    /// Reads the headers of an open file that `isTiff`. Nothing where one of them, or the numbers
    /// that it names, lie beyond the end, and where they lead in a circle.
    static std::optional<QList<Image>> read(QFile &file);
};

} // namespace kelstd_grid
