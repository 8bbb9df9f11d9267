// A geoid grid in the GGF layout, as the library converts it and the program reads it through.

#include "grid/GridFiles.h"

#include <KelStd/grid/GridFile.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace {

using namespace KelStd;
using fuzz::require;

constexpr int ggfHeaderSize = 146;
constexpr int gtxHeaderSize = 40;
constexpr int valueSize = 4;

/// What the bytes of a GGF file say.
struct Ggf
{
    explicit Ggf(const QByteArray &bytes)
    {
        if (bytes.size() < ggfHeaderSize)
            return;
        rows = qFromLittleEndian<qint32>(bytes.constData() + 96);
        columns = qFromLittleEndian<qint32>(bytes.constData() + 100);
        isReversed = bytes.at(142) != 1;
        const qint64 values = (bytes.size() - ggfHeaderSize) / valueSize;
        isWhole = rows > 0 && columns > 0 && rows <= values / columns;
    }

    qint64 rows = 0;
    qint64 columns = 0;
    bool isReversed = false;
    bool isWhole = false;
};

/// The bytes of a number, turned round.
QByteArray reversed(const QByteArray &bytes, qint64 at, int count)
{
    QByteArray piece = bytes.mid(static_cast<int>(at), count);
    std::reverse(piece.begin(), piece.end());
    return piece;
}

void checkConversion(const Ggf &ggf, const QByteArray &source, const QByteArray &gtx)
{
    require(gtx.size() == gtxHeaderSize + ggf.rows * ggf.columns * valueSize,
            "a GTX file has a header and a value for each node");
    require(gtx.size() <= source.size(), "and is no longer than its source");
    const int numbers[][3] = {{0, 48, 8},  {8, 64, 8},  {16, 80, 8},
                              {24, 88, 8}, {32, 96, 4}, {36, 100, 4}};
    for (const auto &[to, from, count] : numbers)
        require(gtx.mid(to, count) == reversed(source, from, count), "the header says the same");
    for (qint64 row = 0; row < ggf.rows; ++row) {
        const qint64 stored = ggf.isReversed ? ggf.rows - 1 - row : row;
        for (qint64 column = 0; column < ggf.columns; ++column) {
            const qint64 to = gtxHeaderSize + (row * ggf.columns + column) * valueSize;
            const qint64 from = ggfHeaderSize + (stored * ggf.columns + column) * valueSize;
            require(gtx.mid(static_cast<int>(to), valueSize) == reversed(source, from, valueSize),
                    "every node has the value of its source");
        }
    }
}

/// The grid as the program sees it; true when it would use it.
bool readThrough(const QString &file, const Ggf &ggf)
{
    GridFile grid;
    GridFile::Values values;
    GridFailure failure = grid.open(file);
    if (!failure)
        failure = grid.readValues(values);
    if (failure) {
        require(!failure.text.isEmpty(), "a refusal has a reason");
        return false;
    }
    require(grid.nodes().rows == ggf.rows && grid.nodes().columns == ggf.columns,
            "rows and columns are said");
    require(values.missing >= 0 && values.missing <= ggf.rows * ggf.columns,
            "not more values are missing than there are nodes");
    require((values.lowest.row < 0) == (values.missing == ggf.rows * ggf.columns),
            "there is a lowest value unless all are missing");
    require(values.lowest.value <= values.highest.value, "it is not above the highest");
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool silent = (fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    static const QTemporaryDir directory;
    const QString source = directory.filePath(QStringLiteral("grid.ggf"));
    const QString target = directory.filePath(QStringLiteral("grid.gtx"));
    const QByteArray bytes = fuzz::bytesOf(data, size);
    fuzz::write(source, bytes);
    QFile::remove(target);

    const fuzz::MemoryBound bound;
    const Ggf ggf(bytes);
    const bool isConverted = ProjLib::ConvertGeoidModelFile_GGF(source, target);
    require(isConverted == ggf.isWhole, "what has all its values is converted, and nothing else");
    require(isConverted == QFile::exists(target), "a file is whole or not there");
    if (isConverted)
        checkConversion(ggf, bytes, fuzz::read(target));
    const bool isUsed = readThrough(source, ggf);
    require(!isUsed || isConverted, "what the program would use can be converted");
    if (isUsed)
        require(readThrough(target, ggf), "and is used as GTX, too");
    return 0;
}
