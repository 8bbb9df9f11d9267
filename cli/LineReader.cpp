#include <cli/LineReader.h>

#include <cli/StandardStreams.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

constexpr int bufferSize = 1 << 16;

} // namespace

bool LineReader::open(const QString &name, QString &error)
{
    if (name == QLatin1String("-")) {
        m_displayName = QStringLiteral("<stdin>");
        m_descriptor = streams::standardInput;
        return true;
    }
    m_displayName = name;
    m_file.setFileName(name);
    if (QFileInfo(name).isDir()) {
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

bool LineReader::isTerminal() const
{
    return streams::isTerminal(m_descriptor);
}

/// False at the end and on an error.
bool LineReader::fill()
{
    // Reading the descriptor itself: a QFile would wait until the buffer is full.
    m_buffer.resize(bufferSize);
    m_position = 0;
    const qint64 count = streams::readSome(m_descriptor, m_buffer.data(), bufferSize);
    if (count < 0)
        m_error = streams::lastErrorText();
    m_buffer.resize(static_cast<int>(std::max<qint64>(count, 0)));
    return count > 0;
}

LineReader::Result LineReader::next(QByteArray &line)
{
    line.clear();
    bool started = false;
    bool tooLong = false;
    for (;;) {
        if (m_position >= m_buffer.size() && !fill()) {
            if (!m_error.isEmpty())
                return Result::Error;
            if (!started)
                return Result::End;
            break;
        }
        if (!started)
            ++m_lineNumber;
        started = true;

        const int end = m_buffer.indexOf('\n', m_position);
        const int stop = end < 0 ? m_buffer.size() : end;
        tooLong = tooLong || line.size() + stop - m_position > mostBytes;
        if (!tooLong)
            line += m_buffer.mid(m_position, stop - m_position);
        m_position = stop + 1;
        if (end >= 0)
            break;
    }
    if (tooLong) {
        line.clear();
        return Result::TooLong;
    }
    if (line.endsWith('\r'))
        line.chop(1);
    return Result::Line;
}

} // namespace KelStd::cli
