#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string>
#include <vector>

/// The delivered library as a build lays it out.
namespace KelStd::test {

/// The absolute path of a document, such as "standard/CH1903_LV03.xml".
QString deliveredPath(const QString &relative);

/// The file names of a folder of the delivered library, in alphabetical order.
std::vector<std::string> deliveredFiles(const QString &folder);

/// The delivered systems that are no UTM zones.
std::vector<std::string> nationalSystems();

bool isUtmZone(const std::string &fileName);

/// A delivered system; one that is not read fails the test.
Coord deliveredSystem(const std::string &fileName);

/// Where a delivered system came from; one that is not read fails the test.
SystemOrigin deliveredOrigin(const std::string &fileName);

/// What the comment at the top of a delivered system cites.
struct Citation
{
    QString parameters; ///< the EPSG code of the projected system, "EPSG:27700"
    QString shift;      ///< the EPSG code of the datum transformation; empty for none
};

/// The citation of a delivered system; a comment of another form fails the test.
Citation citationOf(const std::string &fileName);

} // namespace KelStd::test
