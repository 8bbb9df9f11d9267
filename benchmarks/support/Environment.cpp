#include "support/Environment.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/ProjLib.h>

namespace KelStd::bench {

Environment::Environment(int &argc, char **argv) : m_application(argc, argv)
{
    AppConfig::setHomeDir(QDir(m_home.path()));
    if (!ProjLib::___InitializeEnviroment())
        qFatal("PROJ could not be prepared in %s", qPrintable(m_home.path()));
}

Environment::~Environment()
{
    ProjLib::___unloadEnviroment();
}

const Coord &benchmarkSystem()
{
    static const Coord system = [] {
        Coord coord;
        if (!Coord_IO::xml_read(QStringLiteral(KELSTD_SYSTEMS_DIR "/ed50_utm_31n.xml"), coord))
            qFatal("the benchmark's coordinate system could not be read");
        return coord;
    }();
    return system;
}

} // namespace KelStd::bench
