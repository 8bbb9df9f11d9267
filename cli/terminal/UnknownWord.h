#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

/// "--angle 'degre' is no style of angles; did you mean degree? There are dms, degree": the mistake
/// of an option whose value is none of its `words`.
QString unknownWord(const QString &option, const QString &word, const QString &kind,
                    const QStringList &words);

/// "; did you mean 'a' or 'b'?" with the names that `given` is near to; empty for none.
QString nearHint(const QString &given, const QStringList &known);
/// The same for the symbol of a unit: near are those that differ from it in case and punctuation
/// alone. Another letter is another factor ("kPa", "Pa").
QString nearUnitHint(const QString &given, const QStringList &known);

} // namespace KelStd::cli
