#include "Host.h"

#include "Raised.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/proj/ProjInspection.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <cstdio>

namespace KelStd::python {

namespace {

/// The directory that the program `kelstd` has as its application's data. Qt would put it together
/// from the name of the application, which is that of somebody else's process here.
void useHomeOfProgram()
{
    if (!qEnvironmentVariableIsEmpty("KELSTD_HOME_DIR"))
        return;
    const QDir home(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                    + QStringLiteral("/kelstd"));
    home.mkpath(QStringLiteral(".")); // nobody chose it, so nobody else will make it
    AppConfig::setHomeDir(home);
}

/// Every failure that is logged is also raised or returned. What PROJ adds is for those who ask.
void quietenLog()
{
    const bool showsProj = qEnvironmentVariableIsSet("PROJ_DEBUG");
    LogLibrary::setSink([showsProj](const QString &module, const QString &text, ELogType, bool) {
        if (showsProj && module == QLatin1String("proj"))
            std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
    });
}

} // namespace

void prepareHost()
{
    static const bool isDone = [] {
        useHomeOfProgram();
        quietenLog();
        return true;
    }();
    static_cast<void>(isDone);
}

void requireHome()
{
    prepareHost();
    const QString home = AppConfig::getInstance().homeDir().absolutePath();
    if (!QFileInfo(home).isDir()) {
        throw Raised(Raise::NotReady, QStringLiteral("the home directory %1 is no directory; "
                                                     "create it, or set KELSTD_HOME_DIR to "
                                                     "another one")
                                          .arg(home));
    }
}

void requireProj()
{
    static bool isReady = false;
    if (isReady)
        return;
    requireHome();
    const ProjInspection places;
    // With a valid marker nothing is emptied.
    if (places.markerState() != ProjInspection::MarkerState::Current
        && places.holdsSomethingElse()) {
        throw Raised(Raise::NotReady,
                     QStringLiteral("PROJ is not ready: %1 holds something else and is not "
                                    "emptied; move it away, or set KELSTD_HOME_DIR to another "
                                    "directory")
                         .arg(places.privateDirectory()));
    }
    if (!ProjLib::___InitializeEnviroment()) {
        throw Raised(
            Raise::NotReady,
            QStringLiteral("PROJ is not ready: %1").arg(ProjLib::initializationFailure().text));
    }
    isReady = true;
}

} // namespace KelStd::python
