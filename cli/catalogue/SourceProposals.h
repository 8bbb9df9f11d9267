#pragma once

#include <cli/terminal/Values.h>

namespace KelStd::cli {

/// Whether a text begins as a code: "EPSG:" and what follows, or digits.
bool beginsAsCode(const QString &typed);

/// A code as it is typed: "28992" where what is typed names no authority.
QString codeAsTyped(const QString &code, const QString &typed);

enum class DatabaseNames
{
    Wanted,
    OnlyCodes
};

/// The systems of PROJ's database whose codes begin as `typed` does, or else, where they are
/// wanted, those whose names do. It is read only for what begins as a code or with enough of a
/// name, and only where PROJ is unpacked already: nothing is changed.
QList<Proposal> databaseProposals(const QString &typed, DatabaseNames names);

/// What SOURCE can be: these, and files.
Values sourceValues();

} // namespace KelStd::cli
