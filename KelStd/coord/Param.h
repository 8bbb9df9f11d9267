#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// One typed value with its unit, optionally chosen from a small dictionary of named values.
class KELSTD_EXPORT Param
{
public:
    /// A plain number without unit whose value is the `int` 0.
    Param();
    /// A value of this kind, in this unit, without a dictionary.
    Param(EValueType valType, EUnit unit, const QVariant &value);

    /// Back to a plain number without unit, with a null `value`. The null is deliberate: a fresh
    /// `Param` holds an `int` 0 and does not equal a cleared one.
    void clear();

    /// Every member is equal; `value` as `QVariant` compares, without tolerance of its own.
    bool operator==(const Param &other) const;
    /// The negation of `operator==`.
    bool operator!=(const Param &other) const;

    /// Writes the block of version 1: the version [int32], then every member in declaration order
    /// by Qt's operators, enumerations as int32. Byte order and stream version are the caller's.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block. False when its version is not 1: the object is then cleared.
    ///
    /// This and every other `load` of the coordinate model neither inspects nor resets the stream's
    /// status: what a short stream lacks is read as zero or empty, and the result can still be
    /// true. A caller who needs more looks at `QDataStream::status()`.
    ///
    /// A variant is read as Qt reads it, but for what streams made to do harm can hold: one that
    /// nests deeper than 256 lists, maps or variants, whose value does not fit the memory, whose
    /// type number or size Qt cannot hold, or which is an easing curve (a function's address) is an
    /// invalid variant with the status `ReadCorruptData`, like one of an unknown type; a time of an
    /// unknown zone is an invalid time.
    bool load(QDataStream &stream);

    EValueType valType;       ///< the kind of `value`
    EUnit unit;               ///< the unit in which `value` is stored
    QVariant value;           ///< of the kind of `valType`, in `unit`
    bool isDictionary;        ///< true when the value is chosen from `dictionaryValues`
    QString dictionarySelKey; ///< the key that is chosen
    QMap<QString, QVariant> dictionaryValues; ///< the values to choose from, by their keys
    QString dictionaryBindParamName;          ///< the parameter to which the dictionary is bound
};

} // namespace KelStd
