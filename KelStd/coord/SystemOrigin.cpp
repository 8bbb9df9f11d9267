#include <KelStd/coord/SystemOrigin.h>

namespace KelStd {

bool SystemOrigin::Operation::operator==(const Operation &other) const
{
    return code == other.code && name == other.name && accuracyM == other.accuracyM;
}

bool SystemOrigin::PlaneUnit::operator==(const PlaneUnit &other) const
{
    return name == other.name && metres == other.metres;
}

bool SystemOrigin::isEmpty() const
{
    return *this == SystemOrigin();
}

QString SystemOrigin::fullCode() const
{
    return authority.isEmpty() || code.isEmpty() ? QString() : authority + QLatin1Char(':') + code;
}

bool SystemOrigin::operator==(const SystemOrigin &other) const
{
    return authority == other.authority && code == other.code
           && databaseVersion == other.databaseVersion && operation == other.operation
           && area == other.area && areaName == other.areaName && countries == other.countries
           && planeUnit == other.planeUnit && control == other.control;
}

} // namespace KelStd
