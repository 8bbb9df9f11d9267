#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace KelStd {

/// One typed value with its unit, optionally chosen from a small dictionary of named values.
class KELSTD_EXPORT Param
{
public:
    /// A plain number without unit whose value is the `int` 0.
    Param();
    Param(EValueType valType, EUnit unit, const QVariant &value);

    /// Back to a plain number without unit, with a null `value`. The null is deliberate: a fresh
    /// `Param` holds an `int` 0 and does not equal a cleared one.
    void clear();

    /// Every member is equal; `value` as `QVariant` compares, without tolerance of its own.
    bool operator==(const Param &other) const;
    bool operator!=(const Param &other) const;

    EValueType valType; ///< the kind of `value`
    EUnit unit;         ///< the unit in which `value` is stored
    QVariant value;
    bool isDictionary; ///< true when the value is chosen from `dictionaryValues`
    QString dictionarySelKey;
    QMap<QString, QVariant> dictionaryValues;
    QString dictionaryBindParamName; ///< the parameter to which the dictionary is bound
};

} // namespace KelStd
