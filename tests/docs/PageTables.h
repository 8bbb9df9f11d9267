#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::test {

/// The rows of the first table below a heading of a page, cells trimmed, without the two lines at
/// its top. An empty heading is the top of the page.
QList<QStringList> tableBelow(const QString &page, const QString &heading);

/// The bytes that a table shows: offsets in the first column, which have to follow each other, and
/// in the second one bytes in hex between backticks, or one of them "x" how often.
QByteArray bytesOf(const QList<QStringList> &rows);

/// The blocks of a language on a page, without their fences.
QStringList blocksOf(const QString &page, const QString &language);

} // namespace KelStd::test
