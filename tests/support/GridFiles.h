#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <vector>

namespace KelStd::test {

/// The EGM96 grid that the build delivers.
QString egm96Path();

/// Puts it among the models of the home directory that is in use.
void deliverEgm96();

/// A geoid grid as the tests write it: rows from south to north, each from west to east.
struct Grid
{
    double latitude; ///< of the first node [deg]
    double longitude;
    double latitudeSpacing;
    double longitudeSpacing;
    qint32 rows;
    qint32 columns;
    std::vector<float> values; ///< rows times columns [m]
};

/// Five by five nodes, one degree apart, from 50 N 3 E; the separation is 40 m at the first node
/// and grows by 1 m a degree northwards and by 0.1 m eastwards, so that an interpolated value can
/// be told by head.
Grid slopingGrid();

QByteArray gtxBytes(const Grid &grid);

enum class RowOrder : char
{
    OutputOrder = 1,
    Reversed = 0
};

/// The same grid in the GGF layout; the bytes of its header that have no meaning are not zero.
QByteArray ggfBytes(const Grid &grid, RowOrder order);

/// The separation [m] by bilinear interpolation in a GTX grid, the columns of which go once around
/// the earth or cover a part of it. An implementation of its own, on the bytes of a file.
class GridReader
{
public:
    explicit GridReader(const QByteArray &gtx);

    double separation(double latitude, double longitude) const;

    /// Of the node in this row and column; a column beyond the last is one of the first.
    double node(int row, int column) const;

    int rowOf(double latitude) const;
    int columnOf(double longitude) const;

private:
    double rowsFrom(double latitude) const;
    double columnsFrom(double longitude) const;

    QByteArray m_bytes;
    double m_latitude;
    double m_longitude;
    double m_latitudeSpacing;
    double m_longitudeSpacing;
    int m_rows;
    int m_columns;
};

} // namespace KelStd::test
