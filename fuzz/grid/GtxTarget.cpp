// A geoid grid in the GTX layout, as the program reads it through and PROJ is given it.

#include "grid/GridFiles.h"

#include <KelStd/grid/GridFile.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cmath>

namespace {

using namespace KelStd;
using fuzz::require;

constexpr int headerSize = 40;
constexpr int valueSize = 4;

/// PROJ, prepared in a home directory of its own. It stays loaded: at the end of the process its
/// own objects may be gone before this one.
class Home
{
public:
    Home()
    {
        AppConfig::setBinDir(QDir(QStringLiteral(KELSTD_FUZZ_BIN_DIR)));
        AppConfig::setHomeDir(QDir(m_directory.path()));
        LogLibrary::setSink([](const QString &, const QString &, ELogType, bool) {});
        qputenv("PROJ_DEBUG", "0");
        require(ProjLib::___InitializeEnviroment(), "PROJ is ready");
    }

    QString file() const { return m_directory.filePath(QStringLiteral("grid.gtx")); }

private:
    const QTemporaryDir m_directory;
};

/// What the bytes of a GTX file say.
struct Gtx
{
    explicit Gtx(const QByteArray &content) : bytes(content)
    {
        if (bytes.size() < headerSize)
            return;
        latitude = fuzz::bigEndianDouble(bytes, 0);
        longitude = fuzz::bigEndianDouble(bytes, 8);
        latitudeSpacing = fuzz::bigEndianDouble(bytes, 16);
        longitudeSpacing = fuzz::bigEndianDouble(bytes, 24);
        rows = fuzz::bigEndianInt(bytes, 32);
        columns = fuzz::bigEndianInt(bytes, 36);
        hasItsSize = rows > 0 && columns > 0 && rows <= bytes.size() / columns
                     && headerSize + rows * columns * valueSize == bytes.size();
    }

    double node(qint64 row, qint64 column) const
    {
        const qint64 index = row * columns + column;
        return static_cast<double>(
            fuzz::bigEndianFloat(bytes, static_cast<int>(headerSize + index * valueSize)));
    }

    const QByteArray &bytes;
    double latitude = 0.0;
    double longitude = 0.0;
    double latitudeSpacing = 0.0;
    double longitudeSpacing = 0.0;
    qint64 rows = 0;
    qint64 columns = 0;
    bool hasItsSize = false;
};

bool isUsed(const QString &file, const Gtx &gtx)
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
    qint64 missing = 0;
    double lowest = 0.0;
    double highest = 0.0;
    for (qint64 node = 0; node < gtx.rows * gtx.columns; ++node) {
        const double value = gtx.node(0, node);
        if (!(std::abs(value) <= 1000.0) || value == static_cast<double>(-88.8888F)) {
            ++missing;
            continue;
        }
        const bool isFirst = node == missing;
        lowest = isFirst ? value : std::min(lowest, value);
        highest = isFirst ? value : std::max(highest, value);
    }
    require(values.missing == missing, "the missing values are counted");
    if (missing < gtx.rows * gtx.columns) {
        require(values.lowest.value == lowest, "the lowest value is found");
        require(values.highest.value == highest, "and the highest");
    }
    return true;
}

/// In the middle of a cell PROJ goes by its four nodes.
void checkCell(const QString &file, const Gtx &gtx, qint64 row, qint64 column)
{
    const double latitude = gtx.latitude + (static_cast<double>(row) + 0.5) * gtx.latitudeSpacing;
    const double longitude =
        gtx.longitude + (static_cast<double>(column) + 0.5) * gtx.longitudeSpacing;
    double diff = 0.0;
    if (!ProjLib::Calc_geoid_diff(latitude, longitude, 0.0, file, diff))
        return;
    require(std::isfinite(diff), "a separation is a number");
    // The cells of a grid that is narrower than PROJ can tell apart have no middle.
    if (gtx.latitudeSpacing < 1e-6 || gtx.longitudeSpacing < 1e-6)
        return;
    const double nodes[] = {gtx.node(row, column), gtx.node(row, column + 1),
                            gtx.node(row + 1, column), gtx.node(row + 1, column + 1)};
    const auto [low, high] = std::minmax_element(std::begin(nodes), std::end(nodes));
    const double rounding = 1e-3 + 1e-6 * std::max(std::abs(*low), std::abs(*high));
    require(-diff >= *low - rounding && -diff <= *high + rounding,
            "a separation lies between those of the nodes about it");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool silent = (fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    static const Home home;
    const QByteArray bytes = fuzz::bytesOf(data, size);
    const QString file = home.file();
    fuzz::write(file, bytes);

    const fuzz::MemoryBound bound;
    const Gtx gtx(bytes);
    const bool isGood = isUsed(file, gtx);
    require(!isGood || gtx.hasItsSize, "a grid has the size that its header asks for");

    double diff = 77.0;
    QString error;
    const bool isFound =
        ProjLib::Calc_geoid_diff(gtx.latitude, gtx.longitude, 0.0, file, diff, &error);
    require(isFound || diff == 77.0, "a failure leaves the separation as it was");
    const bool isRefused = error == QLatin1String("Create proj geoid model failed.");
    require(isRefused == !isGood, "the library gives PROJ what the program would use");
    if (isGood && gtx.rows > 1 && gtx.columns > 1) {
        for (const qint64 row : {qint64(0), gtx.rows - 2})
            for (const qint64 column : {qint64(0), gtx.columns - 2})
                checkCell(file, gtx, row, column);
    }
    return 0;
}
