#pragma once

#include <KelStd/proj/InitializationFailure.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd {
class FileLock;
}

namespace KelStd::proj {

/// The unpacking program: the first of the platform's name in the absolute directories of the
/// search path, empty when there is none. An entry that is empty, "." or relative names a place
/// that depends on where the host was started, and where anybody may have put a program. One that
/// somebody else may change, itself or in its directory, is passed over, as are the directories of
/// processes.
QString findUnpacker();

/// Unpacks `archive` into the directory `target`, overwriting; a failure when the program ends in
/// any other way than with success. Options that the environment has for it are not passed on.
/// `lock` stays held until the program has ended, also when this process is killed before.
InitializationFailure unpack(const QString &unpacker, const QString &archive, const QString &target,
                             const FileLock &lock);

/// The unpacking program's verdict on these members of an archive; on all of them when none is
/// named. Nothing is unpacked, and nothing printed.
bool testArchive(const QString &unpacker, const QString &archive, const QStringList &members);

} // namespace KelStd::proj
