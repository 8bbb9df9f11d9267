#pragma once

#include <QtCore/QBitArray>
#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <algorithm>

/// What streams need to know of Qt's types of values, where Qt 5 and Qt 6 differ.
namespace KelStd {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

/// From this version of streams on, types have the numbers that this Qt gives them.
inline constexpr int firstVersionOfThisQt = QDataStream::Qt_5_0;

inline int typeOfName(const QByteArray &name)
{
    return QMetaType::type(name.constData());
}

/// A variant of this type with an empty value.
inline QVariant emptyVariant(int type, bool isNull)
{
    return isNull ? QVariant(static_cast<QVariant::Type>(type)) : QVariant(type, nullptr);
}

/// Where the value of a variant lies that nothing shares. Values are read in place: setting one
/// would take the null flag away.
inline void *placeOfValue(QVariant &value)
{
    return value.data();
}

inline bool loadValue(QDataStream &stream, QVariant &value)
{
    return QMetaType::load(stream, value.userType(), placeOfValue(value));
}

/// False for more bits than their bytes can be counted in 32 bits: Qt takes the last seven counts
/// for less than none, and cannot write what it made of them.
inline bool readBits(QDataStream &stream, QBitArray &bits)
{
    stream >> bits;
    return bits.size() >= 0;
}

/// All entries of a key that occurs twice stay, as this Qt reads them.
inline void insertEntry(QVariantMap &map, const QString &key, const QVariant &value)
{
    static_cast<QMultiMap<QString, QVariant> &>(map).insert(key, value);
}

inline void insertEntry(QVariantHash &hash, const QString &key, const QVariant &value)
{
    static_cast<QMultiHash<QString, QVariant> &>(hash).insert(key, value);
}

#else

inline constexpr int firstVersionOfThisQt = QDataStream::Qt_6_0;

inline int typeOfName(const QByteArray &name)
{
    return QMetaType::fromName(name.constData()).id();
}

inline QVariant emptyVariant(int type, bool isNull)
{
    QVariant variant{QMetaType(type)};
    if (!isNull)
        variant.data(); // which takes the null flag away
    return variant;
}

/// `QVariant::data` would take the null flag away here.
inline void *placeOfValue(QVariant &value)
{
    return const_cast<void *>(value.constData());
}

inline bool loadValue(QDataStream &stream, QVariant &value)
{
    return value.metaType().load(stream, placeOfValue(value));
}

/// False for more bits than the other Qt can have. This one takes counts of 64 bits for less than
/// none and crashes, or sets room aside for them.
inline bool readBits(QDataStream &stream, QBitArray &bits)
{
    constexpr quint64 maxCount = 0xFFFFFFF8U;
    constexpr qsizetype piece = 1 << 23;
    quint64 count = 0;
    if (stream.version() < QDataStream::Qt_6_0) {
        quint32 narrow = 0;
        stream >> narrow;
        count = narrow;
    } else {
        stream >> count;
    }
    bits.clear();
    if (count > maxCount)
        return false;
    QByteArray bytes;
    const auto size = static_cast<qsizetype>((count + 7) / 8);
    while (bytes.size() < size) {
        const qsizetype before = bytes.size();
        bytes.resize(std::min(size, before + piece));
        const auto wanted = static_cast<int>(bytes.size() - before);
        if (stream.readRawData(bytes.data() + before, wanted) != wanted) {
            stream.setStatus(QDataStream::ReadPastEnd);
            return true;
        }
    }
    if (count % 8 != 0 && static_cast<uchar>(bytes.back()) >> (count % 8) != 0)
        stream.setStatus(QDataStream::ReadCorruptData);
    else
        bits = QBitArray::fromBits(bytes.constData(), static_cast<qsizetype>(count));
    return true;
}

/// A map of this Qt has one value of a key: the last one that is read.
template <typename Map>
void insertEntry(Map &map, const QString &key, const QVariant &value)
{
    map.insert(key, value);
}

#endif

} // namespace KelStd
