#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::test {

/// The directory of the site as it was built.
QDir site();

/// The names of its pages.
QStringList sitePages();

/// The text of one of its files.
QString siteText(const QString &name);

/// What a reader sees of a page's HTML between its head and its foot: no tags, no entities, blanks
/// as one.
QString shownText(const QString &html);

} // namespace KelStd::test
