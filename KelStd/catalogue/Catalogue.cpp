#include <KelStd/catalogue/Catalogue.h>

#include <KelStd/catalogue/Export.h>
#include <KelStd/catalogue/Import.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/catalogue/SourceSystem.h>
#include <KelStd/catalogue/SystemList.h>

#include <utility>

namespace KelStd::catalogue {

class Catalogue::Session
{
public:
    ProjSession proj;
    SystemList list;
    ShiftMemory shifts;
    CatalogueWords words;
};

Catalogue::Catalogue(CatalogueWords words) : m_session(std::make_unique<Session>())
{
    m_session->words = std::move(words);
}
Catalogue::~Catalogue() = default;
Catalogue::Catalogue(Catalogue &&other) noexcept = default;
Catalogue &Catalogue::operator=(Catalogue &&other) noexcept = default;

std::vector<FoundSystem> Catalogue::search(const SystemQuery &query, CatalogueFailure *failure)
{
    if (!m_session->proj.open(failure))
        return {};
    m_session->list.read(m_session->proj);
    return m_session->list.search(query);
}

std::optional<DatumShifts> Catalogue::datumShifts(const QByteArray &source,
                                                  const std::optional<GroundPoint> &at,
                                                  CatalogueFailure *failure)
{
    ProjSession &session = m_session->proj;
    if (!session.open(failure))
        return std::nullopt;
    const auto found = sourceSystem(session, m_session->list, source, m_session->words, failure);
    if (!found)
        return std::nullopt;
    DatumShifts result;
    result.source = found->source;
    result.system = found->system;
    result.at = at.value_or(found->system.area.centre());
    for (ShiftCandidate &candidate :
         shiftCandidates(session, m_session->shifts, found->geodetic.get(), found->system.area, at))
        result.shifts.push_back(std::move(candidate.row));
    return result;
}

ImportedSystem Catalogue::importSystem(const QByteArray &source, const ImportOptions &options)
{
    ImportedSystem result;
    ProjSession &session = m_session->proj;
    if (!session.open(&result.refusal))
        return result;
    const auto found =
        sourceSystem(session, m_session->list, source, m_session->words, &result.refusal);
    if (found)
        result = imported(session, m_session->shifts, *found, options, m_session->words);
    result.report.databaseVersion = databaseVersion();
    if (!found)
        result.report.source = QString::fromUtf8(source.left(200)).simplified();
    return result;
}

std::optional<ExportedSystem>
Catalogue::exportSystem(const Coord &system, ExportForm form, const QString &code,
                        CatalogueFailure *failure,
                        const std::optional<SystemOrigin::PlaneUnit> &planeUnit)
{
    if (!m_session->proj.open(failure))
        return std::nullopt;
    return exported(m_session->proj, m_session->shifts, system, form, code, planeUnit, failure);
}

QString Catalogue::databaseVersion()
{
    const ProjSession &session = m_session->proj;
    if (!m_session->proj.open(nullptr))
        return {};
    const char *const version =
        session.functions().proj_context_get_database_metadata(session.context(), "EPSG.VERSION");
    return version == nullptr ? QString() : QStringLiteral("EPSG ") + QString::fromUtf8(version);
}

} // namespace KelStd::catalogue
