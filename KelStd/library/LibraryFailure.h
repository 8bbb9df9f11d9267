#pragma once

#include <KelStd/Failure.h>

namespace KelStd {

/// Why a change of the registry, or what was done with a library's directory, failed.
enum class LibraryFailureKind
{
    None,        ///< no failure
    NoName,      ///< the name is empty
    NoRecord,    ///< the record is null
    NameTaken,   ///< a present name equals the new one in all but case and the blanks around it
    NotPresent,  ///< there is no record of exactly this name
    LeadsOut,    ///< the file of that name would lie outside the directory of its kind
    NoDocument,  ///< a parameter is a time, for which documents have no word; the change has raised
    NotWritable, ///< the file was not written; the text has the file's own reason, or says that
                 ///< a text has a character that no document can hold
    NotRemovable,  ///< the file was not removed; the text has the file's own reason
    NotListable,   ///< a directory that may not be listed or searched
    NoLibrary,     ///< a directory without a library, and none to lay out
    HeldByAnother, ///< another program is changing the library
    SeveralFiles,  ///< several files hold a record of this name, and any of them may be loaded
    OtherFileName, ///< the file that holds the record is not called as the record is
    SharedFile,    ///< the file that holds the record holds others, too
    SeveralSystems ///< several systems have this code
};

/// A failure of one of the kinds of `LibraryFailureKind`.
using LibraryFailure = Failure<LibraryFailureKind>;

} // namespace KelStd
