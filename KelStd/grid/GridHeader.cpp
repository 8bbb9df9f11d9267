#include <KelStd/grid/GridHeader.h>

#include <KelStd/grid/GridLayout.h>

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>

namespace kelstd_grid {

using KelStd::GridFailureKind;
using KelStd::GridNodes;

namespace {

/// A regular file, opened for reading.
class GridBytes
{
public:
    explicit GridBytes(const std::filesystem::path &file)
    {
        std::error_code error;
        // A pipe would make the program wait, and a device may never end.
        if (!std::filesystem::is_regular_file(file, error))
            return;
        const auto size = std::filesystem::file_size(file, error);
        if (error)
            return;
        m_size = static_cast<qint64>(size);
        m_stream.open(file, std::ios::binary);
    }

    qint64 size() const { return m_size; }

    /// False when there are not so many bytes.
    template <std::size_t count>
    bool read(qint64 at, std::array<char, count> &bytes)
    {
        return m_stream.seekg(at) && m_stream.read(bytes.data(), count);
    }

private:
    std::ifstream m_stream;
    qint64 m_size = 0;
};

std::filesystem::path pathOf(const QString &file)
{
#if defined(Q_OS_WIN)
    return file.toStdWString();
#else
    return QFile::encodeName(file).toStdString();
#endif
}

/// The nodes of a file of this layout that has all that its header promises.
template <const GridLayout &layout>
std::optional<GridNodes> wholeGrid(const std::filesystem::path &file)
{
    GridBytes bytes(file);
    std::array<char, layout.headerSize> header{};
    if (!bytes.read(0, header))
        return std::nullopt;
    const GridNodes nodes = nodesOf(layout, header.data());
    const bool isWhole = faultOf(layout, nodes, bytes.size()) == GridFailureKind::None;
    return isWhole ? std::optional(nodes) : std::nullopt;
}

// --- NTv2 ---

constexpr qint64 ntv2RecordSize = 16; // a name and a value of eight bytes each
constexpr int ntv2HeaderRecords = 11; // of the file, and of each of its grids
constexpr qint64 ntv2HeaderSize = ntv2HeaderRecords * ntv2RecordSize;
constexpr qint64 ntv2NodeSize = 16;

using Ntv2Header = std::array<char, ntv2HeaderSize>;

qint64 ntv2Number(const Ntv2Header &header, int record, bool isBigEndian)
{
    const char *value = header.data() + record * ntv2RecordSize + 8;
    return isBigEndian ? qFromBigEndian<qint32>(value) : qFromLittleEndian<qint32>(value);
}

/// Whether PROJ can tell the nodes of a grid apart that have this spacing in the file's unit, which
/// is the second of arc or a larger one. False for NaN.
bool hasSpacings(const Ntv2Header &header, bool isBigEndian)
{
    constexpr int spacingsAt[] = {8, 9}; // in records
    constexpr double maxSpacing = 360.0 * 3600.0;
    return std::all_of(std::begin(spacingsAt), std::end(spacingsAt), [&](int record) {
        const char *value = header.data() + record * ntv2RecordSize + 8;
        const auto spacing = numberOf<double>(isBigEndian ? qFromBigEndian<quint64>(value)
                                                          : qFromLittleEndian<quint64>(value));
        return isSpacing(spacing) && spacing <= maxSpacing;
    });
}

bool isNtv2(const Ntv2Header &header)
{
    const std::string_view text(header.data(), header.size());
    return text.substr(0, 8) == "NUM_OREC" && text.substr(3 * ntv2RecordSize, 7) == "GS_TYPE";
}

/// Whether the grids of an NTv2 file have all the nodes that they announce.
bool isWholeNtv2(GridBytes &bytes, const Ntv2Header &fileHeader)
{
    constexpr int countOfGridsAt = 2; // in records
    constexpr int countOfNodesAt = 10;
    const bool isBigEndian = ntv2Number(fileHeader, 0, true) == ntv2HeaderRecords;
    const qint64 grids = ntv2Number(fileHeader, countOfGridsAt, isBigEndian);
    qint64 at = ntv2HeaderSize;
    for (qint64 grid = 0; grid < grids; ++grid) {
        Ntv2Header header;
        if (!bytes.read(at, header))
            return false;
        const qint64 nodes = ntv2Number(header, countOfNodesAt, isBigEndian);
        at += ntv2HeaderSize + nodes * ntv2NodeSize;
        if (nodes < 0 || at > bytes.size() || !hasSpacings(header, isBigEndian))
            return false;
    }
    return true;
}

bool isGtxToProj(const std::filesystem::path &file)
{
    const std::string name = file.filename().u8string();
    const std::string end = name.substr(name.size() - std::min<std::size_t>(3, name.size()));
    return end == "gtx" || end == "GTX";
}

} // namespace

bool isWholeGtx(const QString &file)
{
    return wholeGrid<gtxLayout>(pathOf(file)).has_value();
}

bool isWholeGgf(const QString &file)
{
    return wholeGrid<ggfLayout>(pathOf(file)).has_value();
}

bool haveTheSameNodes(const QString &gtx, const QString &ggf)
{
    const auto converted = wholeGrid<gtxLayout>(pathOf(gtx));
    const auto source = wholeGrid<ggfLayout>(pathOf(ggf));
    return converted && source && *converted == *source;
}

bool isForProj(const std::filesystem::path &file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status))
        return true;
    if (!std::filesystem::is_regular_file(status))
        return false;
    if (isGtxToProj(file))
        return wholeGrid<gtxLayout>(file).has_value();
    GridBytes bytes(file);
    Ntv2Header header;
    return !bytes.read(0, header) || !isNtv2(header) || isWholeNtv2(bytes, header);
}

} // namespace kelstd_grid
