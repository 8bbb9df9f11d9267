#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

class Console;

/// What the help of a command says about SOURCE.
QString sourceHelp();

/// The source that a word of the command line means, as the catalogue of systems takes it: what is
/// in a file of this name, where there is one; what standard input has, of "-"; else the word
/// itself. At most one byte more is read than the catalogue takes. Nothing, with the reason, where
/// it cannot be read.
std::optional<QByteArray> readSource(const QString &given, QString &reason);

/// The same, with a report of the reason.
std::optional<QByteArray> readSource(const QString &given, Console &console);

/// Whether a word that names no file looks as if it was meant to, so that a refusal should say so.
bool seemsToNameAFile(const QString &given);

} // namespace KelStd::cli
