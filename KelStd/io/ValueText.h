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
/// How the text of a value is taken.
enum class Taken
{
    AsItStands,
    AsAnotherWord,  ///< it is none of the words for such a value
    AsAnotherNumber ///< it is no number that such a value can have
};

/// `taken` (when given) says how the text is taken.
QVariant fromValueText(EValueType type, const QString &text, Taken *taken = nullptr);

bool isBooleanWord(const QString &word);

/// False for a text that reads as no number, and for one that reads as another number: as an
/// infinity, or as zero because it is too small.
bool isReadAsNumber(const QString &text);

} // namespace KelStd::io
