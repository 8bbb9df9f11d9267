#include <cli/proj/ProjEnvironment.h>

#include <cli/proj/HomeDirectory.h>
#include <cli/proj/ProjAdvice.h>
#include <cli/terminal/Console.h>

#include <KelStd/proj/ProjInspection.h>

namespace KelStd::cli {

ProjEnvironment::ProjEnvironment()
{
    m_failure = homeFailure();
    if (!m_failure.isEmpty())
        return;
    const ProjInspection places;
    // With a valid marker nothing is emptied.
    if (places.markerState() != ProjInspection::MarkerState::Current
        && places.holdsSomethingElse()) {
        m_failure = QStringLiteral("PROJ is not ready: %1 holds something else and is not "
                                   "emptied; %2")
                        .arg(places.privateDirectory(), makeRoomAdvice());
        return;
    }
    m_isReady = ProjLib::___InitializeEnviroment();
    if (!m_isReady) {
        m_failure = QStringLiteral("PROJ is not ready: %1 ('kelstd doctor' says what to do)")
                        .arg(ProjLib::initializationFailure().text);
    }
}

ProjEnvironment::~ProjEnvironment()
{
    ProjLib::___unloadEnviroment();
}

bool ProjEnvironment::isReady(Console &console) const
{
    if (!m_isReady)
        console.report(m_failure);
    return m_isReady;
}

} // namespace KelStd::cli
