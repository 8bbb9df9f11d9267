#include "SystemFinder.h"

#include "Host.h"

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/catalogue/CatalogueJson.h>
#include <KelStd/catalogue/ImportedOrigin.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/library/LibraryDirectory.h>
#include <KelStd/library/LibraryRecord.h>
#include <KelStd/library/RecordHolders.h>
#include <KelStd/library/RecordNames.h>
#include <KelStd/library/SystemLookup.h>
#include <KelStd/platform/Toolkits.h>

#include <QtCore/QFileInfo>

namespace KelStd::python {

namespace {

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

/// The system that was found, from the document that holds it.
std::optional<UsedSystem> readMatch(const LibraryDirectory &library,
                                    const library::SystemLookup &lookup, bool isLenient)
{
    using Kind = LibraryFailureKind;
    const LibraryFailure &failure = lookup.failure;
    if (failure.kind == Kind::SeveralFiles || failure.kind == Kind::SeveralSystems)
        refuse(lookup.subject, failure.text);
    if (failure)
        throw Raised(Raise::NotReady, failure.text);
    if (!lookup.match)
        return std::nullopt;
    const library::SystemMatch &match = *lookup.match;
    return readSystemFile(library::documentsHolding(library, match.kind, match.name).value(0),
                          match.name, isLenient);
}

bool hasCode(const SystemOrigin &origin, const QString &code)
{
    return origin.fullCode().compare(code, Qt::CaseInsensitive) == 0;
}

std::optional<UsedSystem> findName(const LibraryDirectory &library, const QString &given,
                                   const FindOptions &options)
{
    auto system = readMatch(library, library::systemOfName(library, given), options.isLenient);
    const QString code = library::codeMeantBy(given);
    if (system && !code.isEmpty() && !hasCode(system->origin, code)) {
        system->warnings += QStringLiteral("%1 is the system of this name of the library, "
                                           "which is not known to be %2")
                                .arg(given, code);
    }
    return system;
}

std::optional<UsedSystem> findCode(const LibraryDirectory &library, const QString &given,
                                   const FindOptions &options)
{
    const library::SystemLookup lookup = library::systemOfCode(library, given);
    auto system = readMatch(library, lookup, options.isLenient);
    if (!system)
        return system;
    const QString remark = library::remarkOn(*lookup.match, given);
    if (!remark.isEmpty())
        system->warnings += remark;
    return system;
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
