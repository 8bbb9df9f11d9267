#include <cli/run/RejectsFile.h>

#include <cli/run/Input.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

bool RejectsFile::open(const QString &name, const Input &input, const QStringList &systemFiles,
                       QString &error)
{
    if (input.isFile(name)) {
        error = QStringLiteral("it is the input");
        return false;
    }
    for (const QString &systemFile : systemFiles) {
        if (streams::areSameFile(systemFile, name)) {
            error = QStringLiteral("it is the coordinate system");
            return false;
        }
    }
    for (const int stream : {streams::standardOutput, streams::standardError}) {
        if (streams::isFile(stream, name)) {
            error = QStringLiteral("it is the output");
            return false;
        }
    }
    const QFileInfo info(onDisk(name));
    std::unique_ptr<QFileDevice> device;
    if (info.exists() && !info.isFile()) {
        device = std::make_unique<QFile>(info.filePath());
    } else {
        // The same file at the end of the run, whatever the current directory is then.
        auto replacing = std::make_unique<QSaveFile>(info.absoluteFilePath());
        m_replacing = replacing.get();
        device = std::move(replacing);
    }
    if (!device->open(QIODevice::WriteOnly)) {
        error = device->errorString();
        return false;
    }
    m_device = std::move(device);
    return true;
}

void RejectsFile::write(const QByteArray &above, const QByteArray &lines)
{
    if (!isOpen() || lines.isEmpty())
        return;
    if (m_isEmpty)
        m_isComplete = m_device->write(above) == above.size() && m_isComplete;
    m_isComplete = m_device->write(lines) == lines.size() && m_isComplete;
    m_isEmpty = false;
}

bool RejectsFile::finish(QString &error)
{
    if (!isOpen())
        return true;
    // QSaveFile does not report that its last bytes could not be written, and a partial write's
    // error only on the next flush.
    const bool isFlushed = m_device->flush() || m_device->flush();
    m_isComplete = isFlushed && m_isComplete;
    if (m_isComplete && m_replacing != nullptr)
        m_isComplete = m_replacing->commit();
    error = m_device->errorString();
    m_device.reset();
    return m_isComplete;
}

} // namespace KelStd::cli
