#include <KelStd/catalogue/ImportedOrigin.h>

namespace KelStd::catalogue {

SystemOrigin originOf(const ImportReport &report)
{
    SystemOrigin origin;
    origin.authority = report.code.section(QLatin1Char(':'), 0, 0);
    origin.code = report.code.section(QLatin1Char(':'), 1);
    origin.databaseVersion = report.databaseVersion;
    const auto &shift = report.shift;
    if (!shift.code.isEmpty() || !shift.name.isEmpty())
        origin.operation = SystemOrigin::Operation{shift.code, shift.name, shift.accuracy};
    if (report.area.isKnown) {
        origin.area =
            AreaOfUse{report.area.west, report.area.south, report.area.east, report.area.north};
        origin.areaName = report.area.name;
    }
    if (report.metresPerUnit != 1.0)
        origin.planeUnit = SystemOrigin::PlaneUnit{report.axisUnit, report.metresPerUnit};
    return origin;
}

} // namespace KelStd::catalogue
