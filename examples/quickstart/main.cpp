#include <KelStd/KelStd.h>

#include <QtCore/QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    KelStd::Coord rdNew;
    KelStd::Location point;
    QString error;
    if (!KelStd::ProjLib::___InitializeEnviroment() ||
        !KelStd::Coord_IO::xml_read(application.arguments().value(1), rdNew, &error) ||
        !KelStd::Coord::MakeLocation_byWGS84LatLongH(
            KelStd::Pos::fromLongLatH(5.81015219, 52.17852792, 90.865), // degrees, metres
            point, nullptr, &rdNew, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    std::printf("easting %.2f m, northing %.2f m, height %.2f m\n", point.get_NEH_E(),
                point.get_NEH_N(), point.get_NEH_H());
}
