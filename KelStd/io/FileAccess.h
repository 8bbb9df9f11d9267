#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <functional>

/// Files opened for reading and replaced whole.
namespace KelStd::io {

/// What may stand behind a file name that is read.
enum class Source
{
    Any,        ///< a pipe or a device, too: the caller asked for just this one
    RegularFile ///< nothing that could block or never end: the caller reads what a directory holds
};

/// Opens `fileName` for reading. Returns false with the file's own text in `error` (when given).
/// A FIFO that is refused is never waited for, not even when it takes a file's place meanwhile.
bool openForReading(QFile &file, const QString &fileName, Source source, QString *error);

/// Writes every byte. Returns false when one cannot be written; the device then says why. (After a
/// partial write it knows the reason only once the rest was tried.)
bool writeAll(QIODevice &device, const QByteArray &bytes);

/// Replaces the file by what `write` puts into the device, whole or not at all: when `write`
/// returns false or raises, and when the disk is full, the old file stays. Returns true when every
/// byte reached the file, and otherwise false with the file's own text in `error` (when given).
///
/// A link stays: what it leads to is replaced. A pipe or a device is written into.
///
/// `mode` is added to `WriteOnly`. `write` is not called when the file cannot be opened.
bool replaceFile(const QString &fileName, QIODevice::OpenMode mode,
                 const std::function<bool(QIODevice &)> &write, QString *error);

} // namespace KelStd::io
