#include <KelStd/catalogue/Catalogue.h>

namespace KelStd::catalogue {

class Catalogue::Session
{};

Catalogue::Catalogue() : m_session(std::make_unique<Session>()) {}
Catalogue::~Catalogue() = default;
Catalogue::Catalogue(Catalogue &&other) noexcept = default;
Catalogue &Catalogue::operator=(Catalogue &&other) noexcept = default;

namespace {

CatalogueFailure notUnderstood()
{
    return {CatalogueFailureKind::NotUnderstood,
            QStringLiteral("the source is not understood; give a code such as EPSG:28992")};
}

template <typename Result>
Result refuse(CatalogueFailure *failure)
{
    if (failure != nullptr)
        *failure = notUnderstood();
    return {};
}

} // namespace

std::vector<FoundSystem> Catalogue::search(const SystemQuery & /*query*/, CatalogueFailure *failure)
{
    return refuse<std::vector<FoundSystem>>(failure);
}

std::optional<DatumShifts> Catalogue::datumShifts(const QByteArray & /*source*/,
                                                  const std::optional<GroundPoint> & /*at*/,
                                                  CatalogueFailure *failure)
{
    return refuse<std::optional<DatumShifts>>(failure);
}

ImportedSystem Catalogue::importSystem(const QByteArray & /*source*/,
                                       const ImportOptions & /*options*/)
{
    ImportedSystem imported;
    imported.refusal = notUnderstood();
    return imported;
}

std::optional<ExportedSystem> Catalogue::exportSystem(const Coord & /*system*/, ExportForm /*form*/,
                                                      const QString & /*code*/,
                                                      CatalogueFailure *failure)
{
    return refuse<std::optional<ExportedSystem>>(failure);
}

QString Catalogue::databaseVersion()
{
    return {};
}

} // namespace KelStd::catalogue
