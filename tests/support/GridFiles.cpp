#include "support/GridFiles.h"

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <QtCore/QDataStream>

#include <algorithm>
#include <cmath>

namespace KelStd::test {

QString egm96Path()
{
    return QStringLiteral(KELSTD_TEST_BIN_DIR "/geoid_model_list/egm96_15.gtx");
}

void deliverEgm96()
{
    const QDir home = AppConfig::getInstance().homeDir();
    const QString link = home.filePath(QStringLiteral("geoid_model_list/egm96_15.gtx"));
    if (QFile::exists(link))
        return;
    ASSERT_TRUE(home.mkpath(QStringLiteral("geoid_model_list")));
    ASSERT_TRUE(QFile::link(egm96Path(), link));
}

Grid slopingGrid()
{
    Grid grid{50.0, 3.0, 1.0, 1.0, 5, 5, {}};
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column)
            grid.values.push_back(static_cast<float>(40.0 + row + 0.1 * column));
    }
    return grid;
}

QByteArray gtxBytes(const Grid &grid)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
    stream << grid.latitude << grid.longitude << grid.latitudeSpacing << grid.longitudeSpacing
           << grid.rows << grid.columns;
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (const float value : grid.values)
        stream << value;
    return bytes;
}

QByteArray ggfBytes(const Grid &grid, RowOrder order)
{
    constexpr int headerSize = 146;
    QByteArray bytes(headerSize, '\x5A');
    const auto put = [&bytes](int at, auto number) {
        QByteArray field;
        QDataStream stream(&field, QIODevice::WriteOnly);
        stream.setByteOrder(QDataStream::LittleEndian);
        stream << number;
        bytes.replace(at, field.size(), field);
    };
    put(48, grid.latitude);
    put(64, grid.longitude);
    put(80, grid.latitudeSpacing);
    put(88, grid.longitudeSpacing);
    put(96, grid.rows);
    put(100, grid.columns);
    bytes[142] = static_cast<char>(order);

    QDataStream values(&bytes, QIODevice::Append | QIODevice::WriteOnly);
    values.setByteOrder(QDataStream::LittleEndian);
    values.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (int row = 0; row < grid.rows; ++row) {
        const int stored = order == RowOrder::OutputOrder ? row : grid.rows - 1 - row;
        for (int column = 0; column < grid.columns; ++column)
            values << grid.values[static_cast<std::size_t>(stored * grid.columns + column)];
    }
    return bytes;
}

GridReader::GridReader(const QByteArray &gtx) : m_bytes(gtx)
{
    QDataStream stream(m_bytes);
    stream >> m_latitude >> m_longitude >> m_latitudeSpacing >> m_longitudeSpacing >> m_rows
        >> m_columns;
}

double GridReader::node(int row, int column) const
{
    constexpr int headerSize = 40;
    const int index = row * m_columns + column % m_columns;
    QDataStream stream(m_bytes.mid(headerSize + 4 * index, 4));
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    float value = 0;
    stream >> value;
    return static_cast<double>(value);
}

double GridReader::rowsFrom(double latitude) const
{
    return (latitude - m_latitude) / m_latitudeSpacing;
}

double GridReader::columnsFrom(double longitude) const
{
    const double turns = std::floor((longitude - m_longitude) / 360.0);
    return (longitude - 360.0 * turns - m_longitude) / m_longitudeSpacing;
}

int GridReader::rowOf(double latitude) const
{
    // The northernmost row bounds the cell below it.
    return std::min(static_cast<int>(std::floor(rowsFrom(latitude))), m_rows - 2);
}

int GridReader::columnOf(double longitude) const
{
    return static_cast<int>(std::floor(columnsFrom(longitude)));
}

double GridReader::separation(double latitude, double longitude) const
{
    const int row = rowOf(latitude);
    const int column = columnOf(longitude);
    const double north = rowsFrom(latitude) - row;
    const double east = columnsFrom(longitude) - column;
    const double southern = node(row, column) + east * (node(row, column + 1) - node(row, column));
    const double northern =
        node(row + 1, column) + east * (node(row + 1, column + 1) - node(row + 1, column));
    return southern + north * (northern - southern);
}

} // namespace KelStd::test
