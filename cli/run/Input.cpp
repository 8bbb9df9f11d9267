#include <cli/run/Input.h>

#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>

#include <QtCore/QFileInfo>

#include <algorithm>

namespace KelStd::cli {

bool Input::open(const QString &name, QString &error)
{
    if (name == QLatin1String("-")) {
        m_displayName = QStringLiteral("<stdin>");
        m_descriptor = streams::standardInput;
        return true;
    }
    m_displayName = name;
    m_file.setFileName(onDisk(name));
    if (QFileInfo(m_file).isDir()) {
        error = QStringLiteral("it is a directory");
        return false;
    }
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        error = m_file.errorString();
        return false;
    }
    m_descriptor = m_file.handle();
    return true;
}

void Input::openText(const QString &displayName, const QByteArray &bytes)
{
    m_displayName = displayName;
    m_bytes = bytes;
}

bool Input::isTerminal() const
{
    return m_descriptor >= 0 && streams::isTerminal(m_descriptor);
}

bool Input::isStopped() const
{
    return m_stop != nullptr && m_stop->isMade();
}

std::optional<qint64> Input::size() const
{
    return m_descriptor >= 0 ? streams::bytesToCome(m_descriptor) : std::nullopt;
}

bool Input::isFile(const QString &name) const
{
    return m_descriptor >= 0 && streams::isFile(m_descriptor, name);
}

bool Input::isReady() const
{
    return m_descriptor < 0 || streams::isReady(m_descriptor);
}

bool Input::isReadyWithin(int milliseconds) const
{
    return streams::isReadyWithin(m_descriptor, milliseconds);
}

qint64 Input::read(char *buffer, qint64 size)
{
    if (m_descriptor < 0) {
        const int count = static_cast<int>(std::min<qint64>(size, m_bytes.size()));
        std::copy_n(m_bytes.cbegin(), count, buffer);
        m_bytes.remove(0, count);
        return count;
    }
    // Reading the descriptor itself: a QFile would wait until the buffer is full.
    return streams::readSome(m_descriptor, buffer, size, m_stop);
}

} // namespace KelStd::cli
