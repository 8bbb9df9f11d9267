#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

#include <functional>

/// Files opened for reading and replaced whole.
namespace KelStd::io {

/// What may stand behind a file name that is read.
enum class Source
{
    Any,        ///< a pipe or a device, too: the caller asked for just this one
    RegularFile ///< nothing that could block or never end: the caller reads what lies about
};

/// Opens `fileName` for reading. Returns false with the file's own text in `error` (when given).
/// A FIFO that is refused is never waited for, not even when it takes a file's place meanwhile.
bool openForReading(QFile &file, const QString &fileName, Source source, QString *error);

/// Replaces the file by what `write` puts into the device, whole or not at all: when `write`
/// returns false or raises, and when the disk is full, the old file stays. Returns true when every
/// byte reached the file, and otherwise false with the file's own text in `error` (when given).
///
/// `mode` is added to `WriteOnly`. `write` is not called when the file cannot be opened.
bool replaceFile(const QString &fileName, QIODevice::OpenMode mode,
                 const std::function<bool(QIODevice &)> &write, QString *error);

} // namespace KelStd::io
