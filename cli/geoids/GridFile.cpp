#include <cli/geoids/GridFile.h>

#include <QtCore/QDataStream>
#include <QtCore/QFileInfo>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace KelStd::cli {

namespace {

constexpr qint64 gtxHeaderSize = 40;
constexpr qint64 ggfHeaderSize = 146;
constexpr qint64 valueSize = 4;

/// GTX's mark of a node without a value (VDatum); and beyond which magnitude PROJ takes a value
/// for such a mark [m].
constexpr float gtxMissing = -88.8888F;
constexpr double largestSeparation = 1000.0;

/// A number of the GGF header, which is little-endian.
template <typename Number>
Number ggfNumber(const QByteArray &header, int at)
{
    Number number{};
    QDataStream stream(header.mid(at, static_cast<int>(sizeof number)));
    stream.setByteOrder(QDataStream::LittleEndian);
    stream >> number;
    return number;
}

/// Whether the last of `count` nodes, so far apart, stays below the bound [deg]. One spacing is
/// forgiven, though not more than a degree: a grid may have a node on both sides of its seam, or
/// half a cell beyond a pole.
bool endsBelow(double first, double spacing, qint64 count, double bound)
{
    return spacing <= 360.0
           && first + static_cast<double>(count - 1) * spacing <= bound + std::min(spacing, 1.0);
}

/// Below a decimetre on the ground PROJ cannot tell nodes apart.
bool isSpacing(double degrees)
{
    return degrees >= 1e-6 && std::isfinite(degrees);
}

bool isMissing(double value)
{
    return value == static_cast<double>(gtxMissing) || !(std::abs(value) <= largestSeparation);
}

} // namespace

bool isGgfName(const QString &name)
{
    return QFileInfo(name).suffix().compare(QLatin1String("ggf"), Qt::CaseInsensitive) == 0;
}

QString zerosText()
{
    return QStringLiteral("the last quarter of its values is nothing but zeros, as where a file's "
                          "end was never written");
}

QString formatName(GridFile::Format format)
{
    return format == GridFile::Format::Ggf ? QStringLiteral("GGF") : QStringLiteral("GTX");
}

bool GridFile::open(const QString &name, QString &reason)
{
    if (QFileInfo(name).isDir()) {
        reason = QStringLiteral("it is a directory");
        return false;
    }
    m_file.setFileName(name);
    if (!m_file.open(QIODevice::ReadOnly)) {
        reason = m_file.errorString();
        return false;
    }
    m_format = isGgfName(name) ? Format::Ggf : Format::Gtx;
    m_headerSize = m_format == Format::Ggf ? ggfHeaderSize : gtxHeaderSize;
    const QByteArray header = m_file.read(m_headerSize);
    if (header.size() < m_headerSize) {
        reason = QStringLiteral("its %1 bytes are too short for a %2 header")
                     .arg(m_file.size())
                     .arg(formatName(m_format));
        return false;
    }
    if (m_format == Format::Ggf) {
        m_latitude = ggfNumber<double>(header, 48);
        m_longitude = ggfNumber<double>(header, 64);
        m_latitudeSpacing = ggfNumber<double>(header, 80);
        m_longitudeSpacing = ggfNumber<double>(header, 88);
        m_rows = ggfNumber<qint32>(header, 96);
        m_columns = ggfNumber<qint32>(header, 100);
        m_isReversed = header.at(142) != 1;
    } else {
        QDataStream stream(header);
        qint32 rows = 0;
        qint32 columns = 0;
        stream >> m_latitude >> m_longitude >> m_latitudeSpacing >> m_longitudeSpacing >> rows
            >> columns;
        m_rows = rows;
        m_columns = columns;
    }
    // A number that is none fails each comparison.
    if (m_rows < 1 || m_columns < 1 || !(std::abs(m_latitude) <= 90.0)
        || !(std::abs(m_longitude) <= 360.0) || !isSpacing(m_latitudeSpacing)
        || !isSpacing(m_longitudeSpacing)) {
        reason = QStringLiteral("it is no %1 grid: its header has no rows, columns, spacing or "
                                "place on the earth")
                     .arg(formatName(m_format));
        return false;
    }
    return true;
}

double GridFile::latitudeOf(qint64 row) const
{
    return m_latitude + static_cast<double>(row) * m_latitudeSpacing;
}

double GridFile::longitudeOf(qint64 column) const
{
    return m_longitude + static_cast<double>(column) * m_longitudeSpacing;
}

bool GridFile::isComplete(QString &reason) const
{
    const qint64 there = (m_file.size() - m_headerSize) / valueSize;
    const qint64 promised = m_rows * m_columns;
    if (there < promised) {
        reason = QStringLiteral("it is cut short: of %1 values only %2 are there")
                     .arg(promised)
                     .arg(there);
        return false;
    }
    // What stands behind the last value of a GGF grid is not read. A GTX file has nothing there:
    // one that is longer has values of another size, or other rows and columns than it says.
    if (m_format == Format::Gtx && m_file.size() != m_headerSize + promised * valueSize) {
        reason = QStringLiteral("it has %1 bytes, but %2 rows of %3 values take %4")
                     .arg(m_file.size())
                     .arg(m_rows)
                     .arg(m_columns)
                     .arg(m_headerSize + promised * valueSize);
        return false;
    }
    if (!endsBelow(m_latitude, m_latitudeSpacing, m_rows, 90.0)
        || !endsBelow(0.0, m_longitudeSpacing, m_columns, 360.0)) {
        reason =
            QStringLiteral("its header leads beyond the pole or around the earth: %1 rows every "
                           "%2 deg from latitude %3, %4 columns every %5 deg")
                .arg(m_rows)
                .arg(m_latitudeSpacing)
                .arg(m_latitude)
                .arg(m_columns)
                .arg(m_longitudeSpacing);
        return false;
    }
    return true;
}

bool GridFile::endsInZeros()
{
    constexpr qint64 smallestBlock = 512; // of a disk
    constexpr qint64 pieceSize = 1 << 16;
    const qint64 size = m_rows * m_columns * valueSize;
    qint64 left = m_rows * m_columns / 4 * valueSize;
    if (left < smallestBlock || !m_file.seek(m_headerSize + size - left))
        return false;
    while (left > 0) {
        const QByteArray piece = m_file.read(std::min(pieceSize, left));
        if (piece.isEmpty() || piece.count('\0') != piece.size())
            return false;
        left -= piece.size();
    }
    return true;
}

void GridFile::take(double value, qint64 index, Values &values) const
{
    if (isMissing(value)) {
        ++values.missing;
        return;
    }
    const qint64 stored = index / m_columns;
    const Node node{value, m_isReversed ? m_rows - 1 - stored : stored, index % m_columns};
    if (values.lowest.row < 0 || value < values.lowest.value)
        values.lowest = node;
    if (values.highest.row < 0 || value > values.highest.value)
        values.highest = node;
}

bool GridFile::readValues(Values &values, QString &reason)
{
    constexpr qint64 pieceSize = 1 << 16;
    values = {};
    if (!isComplete(reason))
        return false;
    const qint64 count = m_rows * m_columns;
    m_file.seek(m_headerSize);
    for (qint64 index = 0; index < count;) {
        const QByteArray piece =
            m_file.read(std::min<qint64>(pieceSize, (count - index) * valueSize));
        if (piece.isEmpty() || piece.size() % valueSize != 0) {
            reason = QStringLiteral("it cannot be read to its end");
            return false;
        }
        for (int at = 0; at < piece.size(); at += static_cast<int>(valueSize), ++index) {
            const char *bytes = piece.constData() + at;
            const quint32 bits = m_format == Format::Ggf ? qFromLittleEndian<quint32>(bytes)
                                                         : qFromBigEndian<quint32>(bytes);
            float value = 0.0F;
            std::memcpy(&value, &bits, sizeof value);
            take(static_cast<double>(value), index, values);
        }
    }
    return true;
}

} // namespace KelStd::cli
