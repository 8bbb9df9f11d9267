#pragma once

#include <KelStd/io/ReviewFindings.h>

/// Texts of elements, and what reading makes of them.
namespace KelStd::io {

/// The texts of an element taken together, whatever stands between them.
QString wholeText(const QDomElement &element);

/// False for what no number is read from, and for what is read as another one: an infinite number,
/// or zero where it only is too small.
bool isReadAsNumber(const QString &text);

bool isBooleanWord(const QString &word);

/// The text of a parameter or of an entry of its dictionary.
void reviewValue(const QDomElement &element, EValueType type, ReviewFindings &findings);

} // namespace KelStd::io
