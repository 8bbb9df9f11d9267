// Converts a position through a platform implementation of its own: host HOME PROGRAM SYSTEM.xml

#include "HostPlatform.h"

#include <KelStd/KelStd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <cmath>
#include <cstdio>

namespace {

int complain(const char *what, const QString &detail = QString())
{
    std::fprintf(stderr, "%s %s\n", what, qPrintable(detail));
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    HostPlatform &platform = HostPlatform::instance();
    platform.home = QDir(arguments.value(1));
    platform.program = QDir(arguments.value(2));

    KelStd::Coord coord;
    KelStd::Location location;
    QString error;
    // The log entry of a conversion without PROJ must reach the host's log.
    if (KelStd::Coord::MakeLocation_byWGS84LatLongH(KelStd::Pos(), location, nullptr, &coord))
        return complain("converted without PROJ");
    if (platform.log.size() != 1 || !platform.log.first().startsWith(QLatin1String("app_log: ")))
        return complain("the host's log was not used:", platform.log.join(QLatin1Char('|')));

    if (!KelStd::ProjLib::___InitializeEnviroment())
        return complain("PROJ could not be prepared");
    if (!KelStd::Coord_IO::xml_read(arguments.value(3), coord, &error)
        || !KelStd::Coord::MakeLocation_byLocalLatLongH(KelStd::Pos::fromLongLatH(6.0, 53.0, 0.0),
                                                        location, nullptr, &coord, &error))
        return complain("not converted:", error);
    // EPSG Guidance Note 7-2, Amersfoort / RD New: 196105.283, 557057.739.
    if (std::abs(location.get_NEH_E() - 196105.283) > 0.0005
        || std::abs(location.get_NEH_N() - 557057.739) > 0.0005)
        return complain("a wrong position");
    if (platform.numberTexts == 0)
        return complain("the host's toolkit was not used");

    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly) || maps.readAll().contains("libKelStdPlatform"))
        return complain("the default platform library is loaded");
    std::puts("host platform in place");
    return 0;
}
