// The display configuration and its file.

#include <KelStd/io/FileAccess.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QDataStream>

namespace KelStd {

namespace {

/// Creating an empty file first, as for one that others might wait for, would leave it empty when
/// the disk is full.
void writeConfig(const QString &path, const stShowConfig &config)
{
    if (path.isEmpty() || !library::canBeWritten(path))
        return;
    const auto write = [&config](QIODevice &file) {
        QDataStream stream(&file);
        config.save(stream);
        return stream.status() == QDataStream::Ok;
    };
    io::replaceFile(path, QIODevice::NotOpen, write, nullptr);
}

} // namespace

void StandardLibrary::setShowConfig(const stShowConfig &config)
{
    if (config == showConfig)
        return;
    showConfig = config;
    writeConfig(showConfigFilePath, showConfig);
    Q_EMIT sgShowConfigChanged();
}

void StandardLibrary::loadShowConfig()
{
    if (showConfigFilePath.isEmpty())
        return;
    QFile file;
    if (!io::openForReading(file, showConfigFilePath, io::Source::RegularFile, nullptr))
        return;
    stShowConfig config;
    QDataStream stream(&file);
    // `load` itself is content with zeros for what a file cut short does not have.
    if (config.load(stream) && stream.status() == QDataStream::Ok)
        showConfig = config;
}

} // namespace KelStd
