#include <KelStd/grid/GridHeader.h>

#include <KelStd/grid/GgfLayout.h>

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

namespace kelstd_grid {

namespace {

constexpr int gtxHeaderSize = 40;
constexpr qint64 gtxValueSize = 4;

/// A decimetre on the ground [deg]. Where nodes are so close that rounding a longitude moves it
/// across a cell, PROJ looks for a node beside its grid and ends the process.
constexpr double smallestSpacing = 1e-6;

/// Where the nodes of a grid are [deg].
struct Nodes
{
    double latitude;
    double longitude;
    double latitudeSpacing;
    double longitudeSpacing;
    qint64 rows;
    qint64 columns;

    qint64 count() const { return rows * columns; }
    bool operator==(const Nodes &other) const
    {
        return latitude == other.latitude && longitude == other.longitude
               && latitudeSpacing == other.latitudeSpacing
               && longitudeSpacing == other.longitudeSpacing && rows == other.rows
               && columns == other.columns;
    }
};

template <typename Bits>
double numberOf(Bits bits)
{
    double number = 0.0;
    static_assert(sizeof number == sizeof bits);
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

double bigEndianDouble(const char *bytes)
{
    return numberOf(qFromBigEndian<quint64>(bytes));
}

double littleEndianDouble(const char *bytes)
{
    return numberOf(qFromLittleEndian<quint64>(bytes));
}

bool areOnTheEarth(const Nodes &nodes)
{
    // PROJ counts the nodes in 32 bits.
    constexpr qint64 maxNodes = std::numeric_limits<qint32>::max();
    if (nodes.rows < 1 || nodes.columns < 1 || nodes.rows > maxNodes / nodes.columns)
        return false;
    // A grid may have a node on both sides of its seam, or half a cell beyond a pole: a spacing is
    // forgiven, though not more than a degree. A number that is none fails each comparison.
    const auto endsBelow = [](double first, double spacing, qint64 count, double bound) {
        return spacing >= smallestSpacing && spacing <= 360.0
               && first + static_cast<double>(count - 1) * spacing
                      <= bound + std::min(spacing, 1.0);
    };
    return std::abs(nodes.latitude) <= 90.0 && std::abs(nodes.longitude) <= 360.0
           && endsBelow(nodes.latitude, nodes.latitudeSpacing, nodes.rows, 90.0)
           && endsBelow(0.0, nodes.longitudeSpacing, nodes.columns, 360.0);
}

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

Nodes nodesOfGtx(const char *header)
{
    return {bigEndianDouble(header),
            bigEndianDouble(header + 8),
            bigEndianDouble(header + 16),
            bigEndianDouble(header + 24),
            qFromBigEndian<qint32>(header + 32),
            qFromBigEndian<qint32>(header + 36)};
}

Nodes nodesOfGgf(const char *header)
{
    return {littleEndianDouble(header + ggf::originLatitudeAt),
            littleEndianDouble(header + ggf::originLongitudeAt),
            littleEndianDouble(header + ggf::latitudeSpacingAt),
            littleEndianDouble(header + ggf::longitudeSpacingAt),
            qFromLittleEndian<qint32>(header + ggf::rowsAt),
            qFromLittleEndian<qint32>(header + ggf::columnsAt)};
}

std::optional<Nodes> wholeGtx(const std::filesystem::path &file)
{
    GridBytes bytes(file);
    std::array<char, gtxHeaderSize> header{};
    if (!bytes.read(0, header))
        return std::nullopt;
    const Nodes nodes = nodesOfGtx(header.data());
    const bool isWhole =
        areOnTheEarth(nodes) && gtxHeaderSize + nodes.count() * gtxValueSize == bytes.size();
    return isWhole ? std::optional(nodes) : std::nullopt;
}

std::optional<Nodes> wholeGgf(const std::filesystem::path &file)
{
    GridBytes bytes(file);
    std::array<char, ggf::headerSize> header{};
    if (!bytes.read(0, header))
        return std::nullopt;
    const Nodes nodes = nodesOfGgf(header.data());
    const bool isWhole =
        areOnTheEarth(nodes) && ggf::headerSize + nodes.count() * ggf::valueSize <= bytes.size();
    return isWhole ? std::optional(nodes) : std::nullopt;
}

// --- NTv2
// -----------------------------------------------------------------------------------------

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

/// Whether PROJ can tell the nodes of one of the grids apart: by a spacing in a file's unit, which
/// is the second of arc or a larger one. A number that is none is not one of them.
bool hasSpacings(const Ntv2Header &header, bool isBigEndian)
{
    constexpr int spacingsAt[] = {8, 9}; // in records
    constexpr double largest = 360.0 * 3600.0;
    return std::all_of(std::begin(spacingsAt), std::end(spacingsAt), [&](int record) {
        const char *value = header.data() + record * ntv2RecordSize + 8;
        const double spacing = isBigEndian ? bigEndianDouble(value) : littleEndianDouble(value);
        return spacing >= smallestSpacing && spacing <= largest;
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
    return wholeGtx(pathOf(file)).has_value();
}

bool isWholeGgf(const QString &file)
{
    return wholeGgf(pathOf(file)).has_value();
}

bool haveTheSameNodes(const QString &gtx, const QString &ggf)
{
    const auto converted = wholeGtx(pathOf(gtx));
    const auto source = wholeGgf(pathOf(ggf));
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
        return wholeGtx(file).has_value();
    GridBytes bytes(file);
    Ntv2Header header;
    return !bytes.read(0, header) || !isNtv2(header) || isWholeNtv2(bytes, header);
}

} // namespace kelstd_grid
