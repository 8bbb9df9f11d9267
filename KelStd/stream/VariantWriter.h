#pragma once

#include <QtCore/QDataStream>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// Maps and variants written with the bytes of Qt 5's own operators, whichever Qt this is: those of
/// Qt 5 write a map from the last key to the first, those of Qt 6 from the first to the last.
namespace KelStd {

/// The count and the entries, the last key first.
template <typename Map, typename WriteValue>
void writeEntries(QDataStream &stream, const Map &map, WriteValue writeValue)
{
    stream << static_cast<quint32>(map.size());
    for (auto entry = map.constEnd(); entry != map.constBegin();) {
        --entry;
        stream << entry.key();
        writeValue(stream, entry.value());
    }
}

void writeTexts(QDataStream &stream, const QMap<QString, QString> &texts);

/// A variant, with the maps in it and in what it holds, at any depth, written as maps are here.
void writeVariant(QDataStream &stream, const QVariant &value);

void writeVariants(QDataStream &stream, const QMap<QString, QVariant> &values);

} // namespace KelStd
