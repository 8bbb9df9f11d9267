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
    // Where a part is written, only the next attempt says why not all: of these bytes, or of those
    // that the file has kept back.
    for (qint64 written = 0; m_canWrite && written < bytes.size();) {
        const qint64 now = m_file.write(bytes.constData() + written, bytes.size() - written);
        written += now;
        if (now > 0)
            continue;
        m_file.flush();
        fail();
    }
}

bool FileSink::finish()
{
    // QSaveFile does not report that its last bytes could not be written, and a partial write's
    // error only on the next flush.
    if (m_canWrite && !m_file.flush() && !m_file.flush())
        fail();
    if (m_canWrite && !m_file.commit())
        fail();
    return m_canWrite;
}

/// The first reason is the one: what is done to the file afterwards replaces it by none.
void FileSink::fail()
{
    m_canWrite = false;
    m_error = m_file.errorString();
}

} // namespace KelStd::cli::vector
