#include <cli/vector/VectorFormats.h>

#include <cli/terminal/FilePath.h>
#include <cli/vector/VectorModule.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <algorithm>

namespace KelStd::cli::vector {

namespace {

constexpr qint64 lookedAt = 4096; ///< [bytes]

const QStringList &extensions()
{
    static const QStringList words = {"gpkg",     "shp",  "kml", "kmz", "gpx", "geojson",
                                      "geojsonl", "json", "fgb", "gml", "dxf", "sqlite",
                                      "tab",      "mif",  "dgn", "jml"};
    return words;
}

/// Folders that are a file of layers.
bool isLayerFolder(const QFileInfo &info)
{
    return info.isDir() && info.suffix().toLower() == QLatin1String("gdb");
}

bool hasElement(const QByteArray &begin)
{
    static const QList<QByteArray> names = {"<kml", "<gpx", "<gml:", "<wfs:FeatureCollection",
                                            "<ogr:FeatureCollection"};
    return begin.trimmed().startsWith('<')
           && std::any_of(names.begin(), names.end(),
                          [&begin](const QByteArray &name) { return begin.contains(name); });
}

bool isGeoJson(const QByteArray &begin)
{
    const QByteArray plain = QByteArray(begin).replace(' ', "").replace('\n', "").replace('\r', "");
    return plain.startsWith('{')
           && (plain.contains("\"type\":\"FeatureCollection\"")
               || plain.contains("\"type\":\"Feature\""));
}

/// A drawing begins with a section, which comments may stand before.
bool isDxf(const QByteArray &begin)
{
    const QList<QByteArray> lines = begin.split('\n');
    int line = 0;
    while (line + 1 < lines.size() && lines[line].trimmed() == "999")
        line += 2;
    return line + 1 < lines.size() && lines[line].trimmed() == "0"
           && lines[line + 1].trimmed() == "SECTION";
}

bool hasLayersWithin(const QByteArray &begin)
{
    static const QByteArray shapefile("\x00\x00\x27\x0a", 4);
    static const QByteArray sqlite("SQLite format 3\0", 16);
    return begin.startsWith(shapefile) || begin.startsWith(sqlite) || begin.startsWith("fgb\x03")
           || hasElement(begin) || isGeoJson(begin) || isDxf(begin);
}

} // namespace

bool isVectorFile(const QString &name)
{
    const QString path = onDisk(name);
    const QFileInfo info(path);
    if (isLayerFolder(info))
        return true;
    // Nothing is read of a pipe, whose first bytes would be gone.
    if (!info.isFile())
        return false;
    const QString suffix = info.suffix().toLower();
    const bool isTable = suffix == QLatin1String("tab");
    if (extensions().contains(suffix) && !isTable)
        return true;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return isTable;
    const QByteArray begin = file.read(lookedAt);
    return isTable ? begin.toLower().contains("!table") : hasLayersWithin(begin);
}

QString missingAttributes(const QString &path)
{
    static const struct
    {
        const char *points;
        const char *attributes;
    } pairs[] = {{"shp", "dbf"}, {"mif", "mid"}};
    const QFileInfo info(path);
    for (const auto &pair : pairs) {
        if (info.suffix().toLower() != QLatin1String(pair.points))
            continue;
        const QString wanted =
            info.completeBaseName() + QLatin1Char('.') + QLatin1String(pair.attributes);
        const QStringList beside = info.dir().entryList(QDir::Files);
        if (!beside.contains(wanted, Qt::CaseInsensitive))
            return QLatin1String(pair.attributes);
    }
    return {};
}

QString readFormatNames()
{
    QString reason;
    const VectorFiles *const files = vectorFiles(reason);
    if (files == nullptr)
        return reason;
    QStringList names;
    for (const std::string &name : files->readFormats())
        names += QString::fromStdString(name);
    return names.join(QLatin1String(", "));
}

} // namespace KelStd::cli::vector
