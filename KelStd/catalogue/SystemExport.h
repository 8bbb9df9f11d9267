#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::catalogue {

/// How a system is written as a text.
enum class ExportForm
{
    Wkt2,     ///< ISO 19162:2019, the datum shift as a bound system, the plane of a site as derived
    ProjJson, ///< the same as JSON
    Proj,     ///< a PROJ string; of a system with a site a pipeline to its coordinates
    Esri      ///< WKT 1 as ESRI writes it in .prj files, which has no datum shift
};

/// A system as a text for other programs.
struct ExportedSystem
{
    QString text;     ///< UTF-8 in a file; in the form that was asked for
    QStringList lost; ///< English sentences on what the text does not say of the system
    QString code;     ///< the code of the database's system that it was verified to be; or empty
};

} // namespace KelStd::catalogue
