#include <cli/systems/OriginReport.h>

#include <cli/terminal/Report.h>

#include <KelStd/platform/Toolkits.h>

namespace KelStd::cli {

namespace {

QString number(double value)
{
    constexpr int decimals = 15;
    return tk::Toolkits::DoubleToString(value, decimals);
}

QString describedOperation(const SystemOrigin::Operation &operation)
{
    QString text = operation.name;
    if (!operation.code.isEmpty())
        text += text.isEmpty() ? operation.code : QStringLiteral(" (%1)").arg(operation.code);
    return text
           + (operation.accuracyM
                  ? QStringLiteral(", accuracy %1 m").arg(number(*operation.accuracyM))
                  : QStringLiteral(", accuracy not known"));
}

/// Longitudes may lead across 180 degrees: "177 to -178".
QString describedBox(const AreaOfUse &area)
{
    return QStringLiteral("longitudes %1 to %2, latitudes %3 to %4")
        .arg(number(area.west), number(area.east), number(area.south), number(area.north));
}

} // namespace

void reportOrigin(const SystemOrigin &origin, Report &report)
{
    if (origin.isEmpty())
        return;
    const QString code = origin.fullCode();
    report.section(QStringLiteral("Origin"), code.isEmpty() ? QStringLiteral("(no code)") : code);
    const auto line = [&report](const char *label, const QString &text) {
        if (!text.isEmpty())
            report.value(QString::fromLatin1(label), text);
    };
    line("database", origin.databaseVersion);
    if (origin.operation)
        line("datum shift", describedOperation(*origin.operation));
    line("area of use", origin.areaName);
    if (origin.area)
        line(origin.areaName.isEmpty() ? "area of use" : "", describedBox(*origin.area));
    line("countries", origin.countries.join(QStringLiteral(", ")));
    if (origin.planeUnit) {
        line("unit of the plane",
             QStringLiteral("%1, %2 m")
                 .arg(origin.planeUnit->name, number(origin.planeUnit->metres)));
    }
}

} // namespace KelStd::cli
