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

/// The texts of an element taken together, whatever stands between them.
QString wholeText(const QDomElement &element);

/// False for what no number is read from, and for what is read as another one: an infinite number,
/// or zero where it only is too small.
bool isReadAsNumber(const QString &text);

} // namespace KelStd::io
