#pragma once

#include <KelStd/text/EnumerationTables.h>

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace KelStd::text {

/// The display text of a value that is no number: a truth value, an enumerator, or, for every other
/// kind, the variant's own text.
QString enumerationValue(ValueKind kind, const QVariant &value);

} // namespace KelStd::text
