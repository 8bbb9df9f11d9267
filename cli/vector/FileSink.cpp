#include <cli/vector/FileSink.h>

#include <cli/terminal/FilePath.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli::vector {

FileSink::FileSink(const QString &name)
    : m_name(name), m_file(QFileInfo(onDisk(name)).absoluteFilePath())
{}

bool FileSink::open()
{
    m_canWrite = m_file.open(QIODevice::WriteOnly);
    m_error = m_file.errorString();
    return m_canWrite;
}

void FileSink::write(const QByteArray &bytes)
{
    if (!m_canWrite || m_file.write(bytes) == bytes.size())
        return;
    m_canWrite = false;
    m_error = m_file.errorString();
}

bool FileSink::finish()
{
    // QSaveFile does not report that its last bytes could not be written, and a partial write's
    // error only on the next flush.
    const bool isFlushed = m_file.flush() || m_file.flush();
    m_canWrite = isFlushed && m_canWrite && m_file.commit();
    m_error = m_file.errorString();
    return m_canWrite;
}

} // namespace KelStd::cli::vector
