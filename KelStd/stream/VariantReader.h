#pragma once

#include <QtCore/QDataStream>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// Variants read as Qt's own operators read them, without what a stream made to do harm can do with
/// those: Qt calls itself for every list in a list, until some twenty thousand levels have used up
/// the stack, and sets room aside for as many elements as a list's count claims, which can raise
/// `std::bad_alloc`.
///
/// Here room grows with the elements that are there. These become an invalid variant with the
/// status `ReadCorruptData`, which is what Qt makes of a type that it does not know:
/// - a variant that nests deeper than `deepestVariantNesting`;
/// - one that does not fit the memory;
/// - a type number of more than thirty bits, where Qt would keep the lower ones and find another
///   type;
/// - an array of more than 4,294,967,288 bits, whose number of bytes Qt takes for zero;
/// - an easing curve, whose form holds the address of a function in the writer's memory.
///
/// No byte is looked at ahead: of a device that goes forward only and hands out what has arrived,
/// a type would be guessed.
///
/// A time of a zone that this machine does not know, which Qt could not write again, becomes an
/// invalid time without a zone, and so does one of no known kind in the form of Qt 5.0.
namespace KelStd {

/// Levels of lists, maps, hashes and variants within each other.
inline constexpr int deepestVariantNesting = 256;

void readVariant(QDataStream &stream, QVariant &value);

/// A map of variants, as Qt's operator for maps reads it: empty when one of its entries fails.
void readVariants(QDataStream &stream, QMap<QString, QVariant> &values);

} // namespace KelStd
