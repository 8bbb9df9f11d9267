#include <cli/systems/ConfiguredDisplay.h>

#include <cli/values/DisplayOptions.h>

#include <KelStd/library/LibraryDirectory.h>

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

constexpr qint64 wholeSize = 68; // bytes of version 1

qint32 versionOf(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    qint32 version = 0;
    stream >> version;
    return version;
}

/// Whether locations can be printed by these settings: with an unknown unit or style nothing would
/// be printed.
bool canShowLocations(const stShowConfig &config)
{
    for (const EUnit unit :
         {config.distanceUnit, config.xyUnit, config.earthHeightUnit, config.elevationHeightUnit}) {
        if (unitSymbol(unit).isEmpty())
            return false;
    }
    for (const int decimals :
         {config.latLongPrecision, config.distancePrecision, config.xyPrecision,
          config.earthHeightPrecision, config.elevationHeightPrecision}) {
        if (decimals > DisplayOptions::maxDecimals)
            return false;
    }
    return findAngleStyle(config.latLongFormat) != nullptr;
}

} // namespace

DisplayFile readDisplayFile(const QString &fileName)
{
    DisplayFile result;
    if (!QFileInfo(fileName).isFile()) {
        result.fault = QStringLiteral("it is no regular file");
        return result;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        result.fault = file.errorString();
        return result;
    }
    const QByteArray bytes = file.read(wholeSize + 1);
    QDataStream stream(bytes);
    stShowConfig config;
    if (bytes.isEmpty())
        result.fault = QStringLiteral("the file is empty");
    else if (!config.load(stream))
        result.fault = QStringLiteral("it has version %1, not 1").arg(versionOf(bytes));
    else
        result.config = config;
    result.isWhole = bytes.size() == wholeSize;
    if (result.config && bytes.size() < wholeSize) {
        result.fault = QStringLiteral("it ends after %1 of %2 bytes; loading takes zeros for the "
                                      "rest")
                           .arg(bytes.size())
                           .arg(wholeSize);
    } else if (result.config && bytes.size() > wholeSize) {
        result.fault = QStringLiteral("something stands behind its %1 bytes").arg(wholeSize);
    } else if (result.config && !canShowLocations(config)) {
        result.fault = QStringLiteral("it has a unit, a style or decimals with which no location "
                                      "can be shown");
    }
    return result;
}

std::optional<stShowConfig> configuredDisplay(const LibraryDirectory &library, QString &warning)
{
    const QString fileName = library.path(LibraryPlace::Display);
    if (!QFileInfo::exists(fileName))
        return std::nullopt;
    const DisplayFile file = readDisplayFile(fileName);
    if (file.fault.isEmpty())
        return file.config;
    warning = QStringLiteral("warning: the display configuration %1 is not used: %2")
                  .arg(fileName, file.fault);
    return std::nullopt;
}

} // namespace KelStd::cli
