#pragma once

#include <QtCore/QString>

namespace KelStd::site {

/// The name of a page on the site, by which other pages link to it: "many-points" for
/// docs/many-points.md, "formats-streams" for docs/formats/streams.md.
QString pageName(const QString &pathInDocs);

/// The anchor that hosts of repositories give to a heading: "One value" is "one-value".
QString headingAnchor(const QString &heading);

/// A page as the site's generator reads it. Our pages are written for a plain view of the
/// repository; the generator gives headings no anchors of their own, reads signs within code as its
/// commands, and links by names of pages. Lines stay where they are, so that a warning names the
/// right one. \param path of the page below docs, by which its relative links are followed
QString sitePage(const QString &markdown, const QString &path);

/// A public header as the site's generator reads it: all that stands in the namespace belongs to
/// the group of the header's folder. \param path of the header below the root, "KelStd/coord/Pos.h"
QString siteHeader(const QString &header, const QString &path);

} // namespace KelStd::site
