// The display configuration and its file.

#include <KelStd/io/FileAccess.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QDataStream>

namespace KelStd {

namespace {

/// The file is not created empty first: with a full disk it would stay empty.
LibraryFailure writeConfig(const QString &path, const stShowConfig &config)
{
    if (path.isEmpty())
        return {};
    const auto write = [&config](QIODevice &file) {
        QDataStream stream(&file);
        config.save(stream);
        return stream.status() == QDataStream::Ok;
    };
    return library::written(path, [&write](const QString &fileName, QString *reason) {
        return io::replaceFile(fileName, QIODevice::NotOpen, write, reason);
    });
}

} // namespace

void StandardLibrary::setShowConfig(const stShowConfig &config)
{
    failure = {};
    if (config == showConfig)
        return;
    showConfig = config;
    failure = writeConfig(showConfigFilePath, showConfig);
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
    // `load` itself reads zeros for what a file that was cut short lacks.
    if (config.load(stream) && stream.status() == QDataStream::Ok)
        showConfig = config;
}

} // namespace KelStd
