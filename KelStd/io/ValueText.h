#pragma once

#include <KelStd/coord/Enumerations.h>

#include <QtCore/QString>
#include <QtCore/QVariant>

/// The text form of a parameter's value in a document. Both directions raise
/// "No Time Value In Make Coordinate" by pointer for `ValueType_Time`.
///
/// Two asymmetries are the format's own: a string is written as nothing, and a direction of axes is
/// read back through the hemisphere words, so that only "S" reads as anything but 0.
namespace KelStd::io {

QString toValueText(EValueType type, const QVariant &value);
QVariant fromValueText(EValueType type, const QString &text);

} // namespace KelStd::io
