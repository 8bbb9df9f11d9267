#include <KelStd/grid/GgfGrid.h>

#include <KelStd/grid/GgfLayout.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QtEndian>

#include <algorithm>
#include <optional>

namespace kelstd_grid {

namespace {

using namespace ggf;

/// The header is read in these pieces, whose bytes follow each other.
constexpr qint64 headerPieces[] = {48, 56, 42};
static_assert(headerPieces[0] + headerPieces[1] + headerPieces[2] == headerSize);

struct GgfHeader
{
    QByteArray bytes;
    qint64 rows;
    qint64 columns;

    bool isReversed() const { return bytes.at(rowOrderAt) != outputOrder; }
};

/// A number's bytes in the order that GTX has them.
template <typename Bits>
void appendBigEndian(const char *littleEndian, QByteArray &out)
{
    char bytes[sizeof(Bits)];
    qToBigEndian(qFromLittleEndian<Bits>(littleEndian), bytes);
    out.append(bytes, sizeof bytes);
}

std::optional<GgfHeader> readHeader(QFile &source)
{
    GgfHeader header{};
    for (const qint64 size : headerPieces) {
        const QByteArray piece = source.read(size);
        if (piece.size() != size)
            return std::nullopt;
        header.bytes += piece;
    }
    header.rows = qFromLittleEndian<qint32>(header.bytes.constData() + rowsAt);
    header.columns = qFromLittleEndian<qint32>(header.bytes.constData() + columnsAt);
    if (header.rows < 1 || header.columns < 1)
        return std::nullopt;

    // As many rows as there are bytes for at one byte a value. It bounds what is read of a header
    // that promises too much; whoever has not four bytes for each value fails in reading them.
    header.rows = std::min(header.rows, (source.size() - headerSize) / header.columns);
    if (header.rows < 1)
        return std::nullopt;
    return header;
}

QByteArray gtxHeader(const GgfHeader &header)
{
    QByteArray out;
    for (const int at :
         {originLatitudeAt, originLongitudeAt, latitudeSpacingAt, longitudeSpacingAt})
        appendBigEndian<quint64>(header.bytes.constData() + at, out);
    char count[sizeof(qint32)];
    for (const qint64 number : {header.rows, header.columns}) {
        qToBigEndian(static_cast<qint32>(number), count);
        out.append(count, sizeof count);
    }
    return out;
}

/// Copies the values row by row, in the order of the output.
bool copyValues(const GgfHeader &header, QFile &source, QIODevice &target)
{
    const qint64 rowSize = header.columns * valueSize;
    // Before a long row is read and a long file is written for nothing.
    if (source.size() - headerSize < header.rows * rowSize)
        return false;
    for (qint64 row = 0; row < header.rows; ++row) {
        const qint64 stored = header.isReversed() ? header.rows - 1 - row : row;
        if (!source.seek(headerSize + stored * rowSize))
            return false;
        QByteArray values = source.read(rowSize);
        if (values.size() != rowSize)
            return false;
        for (int at = 0; at < values.size(); at += static_cast<int>(valueSize))
            qToBigEndian(qFromLittleEndian<quint32>(values.constData() + at), values.data() + at);
        if (target.write(values) != rowSize)
            return false;
    }
    return true;
}

} // namespace

bool convertGgfToGtx(const QString &source, const QString &target, Stamp stamp)
{
    QFile in(source);
    if (source.isEmpty() || !in.open(QIODevice::ReadOnly) || in.size() < headerSize)
        return false;
    const QDateTime modified = in.fileTime(QFileDevice::FileModificationTime);
    const auto header = readHeader(in);
    if (!header)
        return false;

    // A QSaveFile would open a name that is empty, and put a file in the place of a device.
    const QFileInfo existing(target);
    if (target.isEmpty() || (existing.exists() && !existing.isFile()))
        return false;
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    const QByteArray head = gtxHeader(*header);
    if (out.write(head) != head.size() || !copyValues(*header, in, out))
        return false;
    // What is still buffered may fail, too, and `commit` does not say so.
    if (!out.flush())
        return false;
    if (stamp == Stamp::AsSource && !out.setFileTime(modified, QFileDevice::FileModificationTime))
        return false;
    return out.commit();
}

} // namespace kelstd_grid
