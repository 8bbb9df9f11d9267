#pragma once

#include <KelStd/Export.h>
#include <KelStd/catalogue/CatalogueFailure.h>
#include <KelStd/catalogue/CatalogueWords.h>
#include <KelStd/catalogue/DatumShift.h>
#include <KelStd/catalogue/FoundSystem.h>
#include <KelStd/catalogue/SystemExport.h>
#include <KelStd/catalogue/SystemImport.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <optional>
#include <vector>

/// Coordinate systems found, imported and exported by PROJ's database.
namespace KelStd::catalogue {

/// The systems that PROJ knows.
///
///     Catalogue catalogue;
///     const ImportedSystem imported = catalogue.importSystem("EPSG:28992");
///     if (imported.system)
///         Coord_IO::xml_write(*imported.system, "rd_new.xml", nullptr);
///     else
///         qWarning() << imported.refusal.text;
///
/// PROJ has to be loaded (`ProjLib::___InitializeEnviroment`). A catalogue has a PROJ context of
/// its own, whose network stays off, and neither touches the current directory nor what other
/// threads convert; one catalogue belongs to one thread. It reads the list of systems once, with
/// the first search. It survives the unloading of PROJ, and then answers `NotLoaded` until PROJ is
/// loaded again.
///
/// A source is one of: a code ("EPSG:28992", also of ESRI, IGNF and others; a number alone is one
/// of EPSG), two codes of a projected and a vertical system ("EPSG:28992+5773"), a URN
/// ("urn:ogc:def:crs:EPSG::28992"), a system's name ("Amersfoort / RD New"), or a definition as a
/// text: WKT 1, WKT 2, an ESRI .prj, PROJJSON or a PROJ string, in UTF-8, with a byte-order mark or
/// without, or in UTF-16 with one. A definition has at most `maxSourceBytes` bytes and
/// `maxSourceDepth` levels of brackets. A PROJ string that is a pipeline, includes a file or leads
/// to files of its own choice is refused.
class KELSTD_EXPORT Catalogue
{
public:
    /// Messages name what helps by `words`.
    explicit Catalogue(CatalogueWords words = {});
    ~Catalogue();
    /// One that was moved from can only be assigned to or destroyed.
    Catalogue(Catalogue &&other) noexcept;
    /// As the move constructor.
    Catalogue &operator=(Catalogue &&other) noexcept;

    /// How long the text of a system may be [bytes].
    static constexpr int maxSourceBytes = 1'000'000;
    /// How deeply the brackets of a text may be nested.
    static constexpr int maxSourceDepth = 64;

    /// The systems that meet `query`, best first: names and codes that are exactly what was looked
    /// for, then those that have the words in their names, projected systems before others, and
    /// larger areas before smaller ones; about a place the smaller ones first. Empty, with the
    /// reason in `failure` (when given), where PROJ or its database is not there; empty without a
    /// failure where nothing meets the query.
    std::vector<FoundSystem> search(const SystemQuery &query, CatalogueFailure *failure = nullptr);

    /// The datum shifts between the system of a source and WGS 84, best first at `at` (else at the
    /// centre of the system's area): those that contain the place, then the best accuracy, then the
    /// largest coverage. Ballpark ones are not among them. Nothing, with the reason in `failure`
    /// (when given), where the source is not understood.
    std::optional<DatumShifts> datumShifts(const QByteArray &source,
                                           const std::optional<GroundPoint> &at = std::nullopt,
                                           CatalogueFailure *failure = nullptr);

    /// Imports the system of a source. The result has run through the conversions of a `Coord` at
    /// positions all over its area, and agrees with PROJ's own result by the same operation to what
    /// the report says; where it does not, the import is refused.
    ///
    /// The conversions use the display configuration as it is now (see `Coord`).
    ImportedSystem importSystem(const QByteArray &source, const ImportOptions &options = {});

    /// Writes a system as a text. `code` is that of the database's system which it may be, as a
    /// document keeps it, or empty: whether it is, is found out by numbers. Nothing, with the
    /// reason in `failure` (when given), where it cannot be written.
    ///
    /// A text by the parameters of the system counts northing and easting in `planeUnit`, in which
    /// those of the system are customarily given, else in metres; a text by the database's words
    /// in the database's unit. `ExportedSystem::lost` tells of another one.
    std::optional<ExportedSystem>
    exportSystem(const Coord &system, ExportForm form, const QString &code = QString(),
                 CatalogueFailure *failure = nullptr,
                 const std::optional<SystemOrigin::PlaneUnit> &planeUnit = {});

    /// Versions of the database, such as "EPSG v10.076"; empty where there is none.
    QString databaseVersion();

private:
    class Session;
    std::unique_ptr<Session> m_session;
};

} // namespace KelStd::catalogue
