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
    static const Coord system = publishedSystem("ed50_utm_31n.xml");
    return system;
}

Coord publishedSystem(const char *document)
{
    Coord coord;
    if (!Coord_IO::xml_read(QStringLiteral(KELSTD_SYSTEMS_DIR "/") + QLatin1String(document),
                            coord))
        qFatal("the coordinate system %s could not be read", document);
    return coord;
}

} // namespace KelStd::bench
