#include <KelStd/coord/Param.h>

#include <KelStd/coord/MapEquality.h>
#include <KelStd/stream/BlockVersion.h>
#include <KelStd/stream/VariantReader.h>
#include <KelStd/stream/VariantWriter.h>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

} // namespace

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

void Param::save(QDataStream &stream) const
{
    stream << streamVersion << valType << unit;
    writeVariant(stream, value);
    stream << isDictionary << dictionarySelKey;
    writeVariants(stream, dictionaryValues);
    stream << dictionaryBindParamName;
}

bool Param::load(QDataStream &stream)
{
    clear();
    if (readVersion(stream) != streamVersion)
        return false;
    stream >> valType >> unit;
    readVariant(stream, value);
    stream >> isDictionary >> dictionarySelKey;
    readVariants(stream, dictionaryValues);
    stream >> dictionaryBindParamName;
    return true;
}

} // namespace KelStd
