#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The sources of the library and the program, read as texts.
namespace KelStd::test {

/// The text of a file of the source tree.
QString sourceText(const QString &relativePath);

/// Every header and source below a folder, relative to the source tree ("KelStd/coord/Pos.h").
QStringList sourcesUnder(const QString &folder);

/// The files of ours that a text includes ("KelStd/coord/Pos.h", "cli/run/Input.h"), in order.
QStringList ownIncludes(const QString &text);

/// Every file below "KelStd" or "cli" with what it includes of ours.
QMap<QString, QStringList> includeGraph(const QString &folder);

} // namespace KelStd::test
