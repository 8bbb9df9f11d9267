#include <cli/catalogue/LastResort.h>

#include <cli/catalogue/CatalogueStatus.h>
#include <cli/catalogue/CatalogueText.h>
#include <cli/catalogue/ProgramCatalogue.h>
#include <cli/catalogue/SourceArgument.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <KelStd/catalogue/ImportedOrigin.h>
#include <KelStd/library/RecordNames.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// Whether a text can be nothing but a definition: a PROJ string, JSON, or WKT with a keyword and a
/// bracket.
bool beginsLikeDefinition(const QByteArray &source)
{
    constexpr int longestKeyword = 24; // "DERIVEDPROJCRS" and blanks
    const QByteArray start = source.left(1000).trimmed();
    if (start.startsWith('+') || start.startsWith('{'))
        return true;
    const auto bracket = start.indexOf('[');
    if (bracket <= 0 || bracket > longestKeyword)
        return false;
    const QByteArray keyword = start.left(bracket).trimmed();
    return std::all_of(keyword.cbegin(), keyword.cend(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    });
}

/// A code of EPSG, to PROJ.
bool isNumber(const QString &given)
{
    return !given.isEmpty() && std::all_of(given.cbegin(), given.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

} // namespace

LastResort importAsLastResort(const QString &given, Console &console)
{
    QString reason;
    // Standard input is for positions.
    const auto source = given == QLatin1String("-") ? std::nullopt : readSource(given, reason);
    if (!source)
        return {};
    const ProjEnvironment environment;
    if (!environment.isReady())
        return {}; // whoever needs PROJ says so
    catalogue::Catalogue catalogue = programCatalogue(CatalogueUse::OfOthers);
    const auto imported = catalogue.importSystem(*source);
    if (imported.system) {
        for (const QString &text : essentialLines(imported.report))
            console.report(text);
        return {imported.system, originOf(imported.report), false, false, {}};
    }
    // What is no source at all is a mistyped name or file, of which the caller says more.
    const bool isNone = imported.refusal.kind == catalogue::CatalogueFailureKind::NotUnderstood
                        && !beginsLikeDefinition(*source);
    if (isNone)
        return {std::nullopt,
                {},
                false,
                !library::codeOfForm(given).isEmpty() || isNumber(given),
                nearSystems(catalogue, given)};
    if (!isRefusal(imported.refusal))
        return {};
    console.report(QStringLiteral("cannot use the coordinate system %1: %2")
                       .arg(shown(given), imported.refusal.text));
    return {std::nullopt, {}, true, false, {}};
}

} // namespace KelStd::cli
