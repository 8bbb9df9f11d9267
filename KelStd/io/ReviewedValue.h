#pragma once

#include <KelStd/io/ReviewFindings.h>

/// Texts of elements, and what reading makes of them.
namespace KelStd::io {

/// The texts of an element taken together, whatever stands between them.
QString wholeText(const QDomElement &element);

/// The text of a parameter or of an entry of its dictionary.
void reviewValue(const QDomElement &element, EValueType type, ReviewFindings &findings);

} // namespace KelStd::io
