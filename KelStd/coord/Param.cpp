#include <KelStd/coord/Param.h>

#include <KelStd/coord/MapEquality.h>

namespace KelStd {

Param::Param() : Param(ValueType_Double, Unit_None, QVariant(0)) {}

Param::Param(EValueType valType_, EUnit unit_, const QVariant &value_)
    : valType(valType_), unit(unit_), value(value_), isDictionary(false)
{}

void Param::clear()
{
    valType = ValueType_Double;
    unit = Unit_None;
    value.clear();
    isDictionary = false;
    dictionarySelKey.clear();
    dictionaryValues.clear();
    dictionaryBindParamName.clear();
}

bool Param::operator==(const Param &other) const
{
    return this == &other
           || (valType == other.valType && unit == other.unit && value == other.value
               && isDictionary == other.isDictionary && dictionarySelKey == other.dictionarySelKey
               && sameEntries(dictionaryValues, other.dictionaryValues)
               && dictionaryBindParamName == other.dictionaryBindParamName);
}

bool Param::operator!=(const Param &other) const
{
    return !(*this == other);
}

} // namespace KelStd
