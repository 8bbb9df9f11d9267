#include "SystemFinder.h"

#include "Host.h"

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/catalogue/CatalogueJson.h>
#include <KelStd/catalogue/ImportedOrigin.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/library/LibraryDirectory.h>
#include <KelStd/library/LibraryRecord.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/platform/Toolkits.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace KelStd::python {

namespace {

/// The custom systems hide standard ones of their name.
constexpr RecordKind systemKinds[] = {RecordKind::Custom, RecordKind::Standard};

LibraryDirectory openLibrary(const QString &named)
{
    const LibraryDirectory library =
        named.isEmpty() ? LibraryDirectory::ofHome() : LibraryDirectory(named);
    if (!named.isEmpty()) {
        if (!library.holdsLibrary())
            throw Raised(Raise::NotFound, QStringLiteral("%1 holds no library").arg(named));
        return library;
    }
    requireHome();
    bool isNew = false;
    if (const auto failure = library::prepare(library, LibraryDirectory::delivered(), isNew))
        throw Raised(Raise::NotReady, failure.text);
    return library;
}

void load(const LibraryDirectory &library, RecordKind kind)
{
    if (const auto failure = library::loadPlaces(library, {library::placeOf(kind)}))
        throw Raised(Raise::NotReady, failure.text);
}

UsedSystem readRegistered(const LibraryDirectory &library, RecordKind kind, const QString &name,
                          bool isLenient)
{
    if (const auto several = library::ambiguityFailure(library, kind, name))
        refuse(name, several.text);
    return readSystemFile(library::documentsHolding(library, kind, name).value(0), name, isLenient);
}

/// The code that a text means: "EPSG:28992", and "28992", which is the same to PROJ.
QString codeMeantBy(const QString &given)
{
    static const QRegularExpression number(QStringLiteral("\\A[0-9]+\\z"));
    return number.match(given).hasMatch() ? QLatin1String("EPSG:") + given
                                          : library::codeOfForm(given);
}

bool hasCode(const SystemOrigin &origin, const QString &code)
{
    return origin.fullCode().compare(code, Qt::CaseInsensitive) == 0;
}

std::optional<UsedSystem> findName(const LibraryDirectory &library, const QString &given,
                                   const FindOptions &options)
{
    const QString name = library::withoutMarks(given);
    for (const RecordKind kind : systemKinds) {
        load(library, kind);
        if (!library::find(kind, name))
            continue;
        UsedSystem system = readRegistered(library, kind, name, options.isLenient);
        const QString code = codeMeantBy(given);
        if (!code.isEmpty() && !hasCode(system.origin, code)) {
            system.warnings += QStringLiteral("%1 is the system of this name of the library, "
                                              "which is not known to be %2")
                                   .arg(given, code);
        }
        return system;
    }
    return std::nullopt;
}

std::optional<UsedSystem> findCode(const LibraryDirectory &library, const QString &given,
                                   const FindOptions &options)
{
    const QString code = codeMeantBy(given);
    if (code.isEmpty())
        return std::nullopt;
    for (const RecordKind kind : systemKinds) {
        load(library, kind);
        const QStringList names = library::namesOfCode(kind, code);
        if (names.isEmpty())
            continue;
        if (names.size() > 1) {
            refuse(code, QStringLiteral("%1 %2s of the library have this code: %3; name one of "
                                        "them")
                             .arg(names.size())
                             .arg(library::titleOf(kind), names.join(QLatin1String(", "))));
        }
        UsedSystem system = readRegistered(library, kind, names.constFirst(), options.isLenient);
        // One of the user's own may have another datum shift, or be fitted to a site.
        if (kind == RecordKind::Custom) {
            system.warnings += QStringLiteral("%1 is the %2 \"%3\" of the library")
                                   .arg(given, library::titleOf(kind), names.constFirst());
        }
        return system;
    }
    return std::nullopt;
}

/// What has to be known before the numbers of an import are used.
QStringList warningsOf(const catalogue::ImportReport &report)
{
    const auto &shift = report.shift;
    const QString accuracy =
        shift.accuracy ? tk::Toolkits::DoubleToString(*shift.accuracy, 3) + QLatin1String(" m")
                       : QStringLiteral("not known");
    QString described = shift.name.isEmpty() ? QStringLiteral("none") : shift.name;
    if (!shift.code.isEmpty())
        described += QStringLiteral(" (%1)").arg(shift.code);
    QStringList warnings = {QStringLiteral("%1 (%2) is taken from PROJ's database; datum shift: "
                                           "%3; accuracy %4")
                                .arg(report.name, report.code, described, accuracy)};
    if (!report.missingGrid.isEmpty()) {
        warnings += QStringLiteral("heights are ellipsoidal; the geoid grid %1 is not there")
                        .arg(report.missingGrid);
    }
    return warnings + report.warnings;
}

catalogue::CatalogueWords ourWords()
{
    catalogue::CatalogueWords words;
    words.place = QStringLiteral("at=(longitude, latitude)");
    words.shift = QStringLiteral("shift=");
    words.consent = QStringLiteral("take_as_wgs84=True");
    words.fit = QStringLiteral("fit=True");
    return words;
}

UsedSystem importSystem(const QString &given, const catalogue::ImportOptions &options)
{
    requireProj();
    catalogue::Catalogue catalogue(ourWords());
    catalogue::ImportedSystem imported = catalogue.importSystem(given.toUtf8(), options);
    if (!imported.system) {
        using Kind = catalogue::CatalogueFailureKind;
        const Kind kind = imported.refusal.kind;
        if (kind == Kind::NotLoaded || kind == Kind::NoDatabase)
            throw Raised(Raise::NotReady, imported.refusal.text);
        if (kind == Kind::NotUnderstood || kind == Kind::NoSuchShift) {
            throw Raised(Raise::NotFound, QStringLiteral("there is no coordinate system %1: %2")
                                              .arg(given.left(100), imported.refusal.text));
        }
        refuse(given.left(100), imported.refusal.text);
    }
    UsedSystem system;
    system.source = given.left(100);
    system.origin = catalogue::originOf(imported.report);
    system.warnings = warningsOf(imported.report);
    system.report = catalogue::jsonLine(imported).trimmed();
    // With the digits of a document, so that a copy by way of one gives the same numbers.
    raisingRefused(system.source, [&] { io::readBackFromMemory(*imported.system, system.coord); });
    return system;
}

/// The library's systems of what a text means.
std::optional<UsedSystem> lookUp(const LibraryDirectory &library, const QString &given,
                                 const FindOptions &options)
{
    // What has the form of a code is no name before the database was asked, too.
    if (!library::codeOfForm(given).isEmpty())
        return findCode(library, given, options);
    auto found = findName(library, given, options);
    return found ? found : findCode(library, given, options);
}

} // namespace

UsedSystem findSystem(const QString &given, const FindOptions &options)
{
    if (given.trimmed().isEmpty())
        throw Raised(Raise::Value, QStringLiteral("the system has no name"));
    prepareHost();
    if (options.import)
        return importSystem(given, *options.import);
    const LibraryDirectory library = openLibrary(options.library);
    if (auto found = lookUp(library, given, options))
        return *found;
    try {
        return importSystem(given, {});
    } catch (const Raised &raised) {
        if (raised.type() != Raise::NotFound)
            throw;
        if (!library::codeOfForm(given).isEmpty()) {
            if (auto found = findName(library, given, options))
                return *found;
        }
        if (!QFileInfo::exists(given))
            throw;
        throw Raised(Raise::NotFound,
                     raised.text()
                         + QStringLiteral("; a file of this name is read by System.open"));
    }
}

} // namespace KelStd::python
