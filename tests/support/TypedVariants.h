#pragma once

#include <QtCore/QMap>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// Variants that each Qt makes in another way.
namespace KelStd::test {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

inline QVariant nullVariant(QMetaType::Type type)
{
    return QVariant(static_cast<QVariant::Type>(type));
}

/// A variant whose value is a variant; nullptr for an empty one.
inline QVariant variantOfVariant(const QVariant *inner)
{
    return QVariant(QMetaType::QVariant, inner);
}

/// A key twice, where maps can have that.
inline void insertAgain(QVariantMap &map, const QString &key, const QVariant &value)
{
    static_cast<QMultiMap<QString, QVariant> &>(map).insert(key, value);
}

#else

inline QVariant nullVariant(QMetaType::Type type)
{
    return QVariant(QMetaType(type));
}

inline QVariant variantOfVariant(const QVariant *inner)
{
    return QVariant(QMetaType(QMetaType::QVariant), inner);
}

inline void insertAgain(QVariantMap &map, const QString &key, const QVariant &value)
{
    map.insert(key, value);
}

#endif

} // namespace KelStd::test
