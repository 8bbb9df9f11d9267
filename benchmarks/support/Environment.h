#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>

namespace KelStd::bench {

/// PROJ unpacked into a temporary home and loaded, for as long as the object lives. Ends the
/// program when that fails.
class Environment
{
public:
    Environment(int &argc, char **argv);
    ~Environment();

private:
    QCoreApplication m_application;
    QTemporaryDir m_home;
};

/// ED50 / UTM zone 31N: a datum shift and a transverse Mercator projection.
const Coord &benchmarkSystem();

/// A system of the published figures, by its document's name.
Coord publishedSystem(const char *document);

} // namespace KelStd::bench
