#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

namespace streams {
class StopRequests;
}

/// A file, standard input or bytes at hand, read in pieces as they come.
class Input
{
public:
    /// `name`: a file, or "-" for standard input.
    bool open(const QString &name, QString &error);

    /// Bytes that are at hand, in place of a file.
    void openText(const QString &displayName, const QByteArray &bytes);

    /// Its name in messages.
    QString displayName() const { return m_displayName; }

    /// True when a person types it.
    bool isTerminal() const;

    /// From now on a request to stop ends the input; null for none. It must outlive the reading.
    void endAt(const streams::StopRequests *stop) { m_stop = stop; }

    /// Whether such a request was made.
    bool isStopped() const;

    /// How many bytes it has, where that is known before they are read.
    std::optional<qint64> size() const;

    /// Whether it is the regular file of that name.
    bool isFile(const QString &name) const;

    /// Whether reading it does not have to wait for its writer.
    bool isReady() const;

    /// Waits at most so long; false where nothing has come by then, nor the end nor a stop.
    bool isReadyWithin(int milliseconds) const;

    /// Waits until there is something and reads it, at most `size` bytes: 0 at the end and once
    /// a stop is requested, -1 on an error.
    qint64 read(char *buffer, qint64 size);

private:
    QFile m_file;
    QString m_displayName;
    int m_descriptor = -1; ///< negative: `m_bytes` is what is read
    QByteArray m_bytes;
    const streams::StopRequests *m_stop = nullptr;
};

} // namespace KelStd::cli
