#pragma once

#include "UsedSystem.h"

#include <KelStd/catalogue/SystemImport.h>

#include <QtCore/QString>

#include <optional>

namespace KelStd::python {

/// Where a system is looked for, and how it is imported where no library has it.
struct FindOptions
{
    QString library; ///< the directory of a library; empty for that of the home directory
    bool isLenient = false;
    /// Nothing where the library is asked first; else only PROJ's database is.
    std::optional<catalogue::ImportOptions> import;
};

/// The system that a text means, in the order of the program `kelstd`: a code goes before a name
/// that looks like one, a custom system before a standard one, and what no library has is imported.
/// An imported one has the numbers that its document keeps. Raises `NotFound`, `Refused` or
/// `NotReady`. With the interpreter's lock: the registry is loaded, and PROJ is made ready.
UsedSystem findSystem(const QString &given, const FindOptions &options);

} // namespace KelStd::python
