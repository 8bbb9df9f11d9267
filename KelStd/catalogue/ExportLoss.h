#pragma once

#include <KelStd/catalogue/DefinedSystem.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/SystemExport.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// What texts do not say of a system, in English sentences.
namespace KelStd::catalogue {

/// Whether a system names a datum shift: by parameters or by a grid.
bool isShiftSet(const Coord &coord);

/// A text that was written for a system.
struct WrittenText
{
    ExportForm form = ExportForm::Wkt2;
    QString text;
    const PJ *system = nullptr; ///< that the text is of
    const PJ *known = nullptr;  ///< the database's system that it was verified to be; or null
    bool isByOperation = false; ///< it has a published operation instead of the parameters
    PlaneUnit unit;             ///< that northing and easting are customarily given in
    double difference = 0.0;    ///< of its plane from that of the system [m]
};

/// What is lost of a system.
QStringList lostOf(const ProjSession &session, const Coord &coord, const WrittenText &written);

/// What a pipeline of the site does not say.
QStringList lostOfPipeline(const Coord &coord, const QByteArray &pipeline);

} // namespace KelStd::catalogue
