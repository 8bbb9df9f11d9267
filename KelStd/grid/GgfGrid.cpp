#include <KelStd/grid/GgfGrid.h>

#include <KelStd/grid/GridLayout.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <optional>

namespace kelstd_grid {

namespace {

/// The header is read in these pieces, whose bytes follow each other.
constexpr qint64 headerPieces[] = {48, 56, 42};
static_assert(headerPieces[0] + headerPieces[1] + headerPieces[2] == ggfLayout.headerSize);

struct GgfHeader
{
    QByteArray bytes;
    qint64 rows;
    qint64 columns;
};

/// Copies a number bit by bit, in the other order of bytes.
template <typename Bits>
void copyNumber(const char *ggf, char *gtx)
{
    putBits(gtxLayout, bitsOf<Bits>(ggfLayout, ggf), gtx);
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
    const KelStd::GridNodes nodes = nodesOf(ggfLayout, header.bytes.constData());
    header.rows = nodes.rows;
    header.columns = nodes.columns;
    if (header.rows < 1 || header.columns < 1)
        return std::nullopt;

    // No more rows than the file has bytes for at one byte a value, however many the header
    // promises. A file with fewer than four bytes for each value fails when its values are copied.
    header.rows = std::min(header.rows, (source.size() - ggfLayout.headerSize) / header.columns);
    if (header.rows < 1)
        return std::nullopt;
    return header;
}

QByteArray gtxHeader(const GgfHeader &header)
{
    QByteArray out(static_cast<int>(gtxLayout.headerSize), '\0');
    const auto copyDouble = [&](int GridLayout::*at) {
        copyNumber<quint64>(header.bytes.constData() + ggfLayout.*at, out.data() + gtxLayout.*at);
    };
    copyDouble(&GridLayout::latitudeAt);
    copyDouble(&GridLayout::longitudeAt);
    copyDouble(&GridLayout::latitudeSpacingAt);
    copyDouble(&GridLayout::longitudeSpacingAt);
    putBits(gtxLayout, static_cast<qint32>(header.rows), out.data() + gtxLayout.rowsAt);
    putBits(gtxLayout, static_cast<qint32>(header.columns), out.data() + gtxLayout.columnsAt);
    return out;
}

/// Copies the values row by row, in the order of the output.
bool copyValues(const GgfHeader &header, QFile &source, QIODevice &target)
{
    const qint64 rowSize = header.columns * valueSize;
    // Asked first: otherwise a long row would be read, and a long file written, for nothing.
    if (source.size() - ggfLayout.headerSize < header.rows * rowSize)
        return false;
    const bool northFirst = isReversed(ggfLayout, header.bytes.constData());
    for (qint64 row = 0; row < header.rows; ++row) {
        const qint64 stored = northFirst ? header.rows - 1 - row : row;
        if (!source.seek(ggfLayout.headerSize + stored * rowSize))
            return false;
        QByteArray values = source.read(rowSize);
        if (values.size() != rowSize)
            return false;
        for (int at = 0; at < values.size(); at += static_cast<int>(valueSize))
            copyNumber<quint32>(values.constData() + at, values.data() + at);
        if (target.write(values) != rowSize)
            return false;
    }
    return true;
}

} // namespace

bool convertGgfToGtx(const QString &source, const QString &target, Stamp stamp)
{
    QFile in(source);
    if (source.isEmpty() || !in.open(QIODevice::ReadOnly) || in.size() < ggfLayout.headerSize)
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
