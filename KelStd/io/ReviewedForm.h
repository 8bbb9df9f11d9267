#pragma once

#include <KelStd/io/ReviewFindings.h>

/// The first half of a review: what reading does not take over as it stands.
namespace KelStd::io {

/// The whole document of a coordinate system, from its root.
void reviewCoordForm(const QDomElement &root, ReviewFindings &findings);

/// The whole document of a list, whose records stand in elements of the name `recordName`.
void reviewListForm(const QDomElement &root, const QString &recordName, ReviewFindings &findings);

/// Texts and attributes with U+FFFD, for a document of which bytes were read so.
void reviewDamage(const QDomElement &element, ReviewFindings &findings);

} // namespace KelStd::io
