#include <cli/commands/Command.h>

#include <cli/catalogue/CatalogueStatus.h>
#include <cli/catalogue/ProgramCatalogue.h>
#include <cli/library/DirectoryOption.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/systems/SystemChoice.h>
#include <cli/systems/SystemProposals.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShownText.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/terminal/UnknownWord.h>
#include <cli/terminal/WholeFile.h>
#include <cli/terminal/WithoutRaising.h>

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/io/SystemDocument.h>
#include <KelStd/library/RecordLoss.h>

#include <QtCore/QFileInfo>

#include <optional>

namespace KelStd::cli {

namespace {

const QString formOption = QStringLiteral("as");
const QString outputOption = QStringLiteral("output");
const QString forceOption = QStringLiteral("force");

struct FormRow
{
    const char *word;
    std::optional<catalogue::ExportForm> form; ///< nothing for a document
    const char *help;
};

constexpr FormRow forms[] = {
    {"wkt2", catalogue::ExportForm::Wkt2, "WKT 2 of 2019, the datum shift as a bound system"},
    {"projjson", catalogue::ExportForm::ProjJson, "the same as JSON"},
    {"proj", catalogue::ExportForm::Proj, "a PROJ string"},
    {"esri", catalogue::ExportForm::Esri, "WKT 1 as in .prj files, which has no datum shift"},
    {"xml", std::nullopt, "a document, which 'kelstd library add' takes; 15 digits"},
};

const FormRow *findForm(const QString &word)
{
    for (const FormRow &row : forms) {
        if (word == QLatin1String(row.word))
            return &row;
    }
    return nullptr;
}

QStringList formWords()
{
    QStringList words;
    for (const FormRow &row : forms)
        words += QString::fromLatin1(row.word);
    return words;
}

CommandLine makeCommandLine()
{
    QString help = systemChoiceHelp() + QStringLiteral("\n\n") + reviewHelp()
                   + QStringLiteral("\n\nThe forms are\n");
    for (const FormRow &row : forms) {
        help += QStringLiteral("  %1  %2\n")
                    .arg(QLatin1String(row.word), -8)
                    .arg(QLatin1String(row.help));
    }
    help += QStringLiteral(
        "Northing and easting of a text count in the unit that the system is given in.\n"
        "Of a system with a site (a planar transformation, a height fitting), proj is one\n"
        "pipeline from WGS84 longitude, latitude [deg] and height to easting, northing\n"
        "and height at the site; wkt2 and projjson have its plane as a derived system.\n"
        "What a form cannot say of the system is listed on standard error. A .prj is that\n"
        "of the database's system which this one was found to be, by numbers.\n"
        "\n"
        "Exit status: 0 written, 1 the system cannot be written in this form, 2 usage or\n"
        "a file that exists, 3 no PROJ, no usable system, or output that cannot be\n"
        "written, 4 written, but standard output cannot be written.");
    CommandLine line(QStringLiteral("SYSTEM --as FORM [OPTIONS]"),
                     QStringLiteral("Writes a coordinate system as a text for other programs."),
                     help);
    line.setExamples(QStringLiteral("kelstd system export \"Amersfoort / RD New\" --as wkt2"),
                     QStringLiteral("kelstd system export site.xml --as proj -o site.txt"));
    line.addOption(
        {formOption, QStringLiteral("wkt2, projjson, proj, esri or xml."), QStringLiteral("FORM")},
        Values::ofWords(formWords()));
    line.setPositionals({systemValues()});
    line.addOption({{QStringLiteral("o"), outputOption},
                    QStringLiteral("The file to write. Default: standard output."),
                    QStringLiteral("FILE")});
    line.addOption({forceOption, QStringLiteral("Replace a file that exists.")});
    addDirectoryOption(line);
    addLenientOption(line);
    return line;
}

/// What is written, and what there is to say of it.
struct Exported
{
    QByteArray bytes;
    QString code;
    QStringList lost;
};

/// The system in a form of PROJ's; nothing, with the status, after a report.
std::optional<Exported> textOf(const ChosenSystem &system, const QString &given,
                               const FormRow &form, ExitStatus &status, Console &console)
{
    const ProjEnvironment environment;
    if (!environment.isReady(console)) {
        status = ExitStatus::Environment;
        return std::nullopt;
    }
    catalogue::Catalogue catalogue = programCatalogue(CatalogueUse::OfOthers);
    catalogue::CatalogueFailure failure;
    const auto exported = catalogue.exportSystem(system.coord, *form.form, system.origin.fullCode(),
                                                 &failure, system.origin.planeUnit);
    if (exported)
        return Exported{exported->text.toUtf8() + '\n', exported->code, exported->lost};
    console.report(QStringLiteral("cannot write %1 as %2: %3")
                       .arg(shown(given), QLatin1String(form.word), failure.text));
    status = statusOf(failure);
    return std::nullopt;
}

/// The same for the system's document, which has to keep all of it.
std::optional<Exported> documentOf(const ChosenSystem &system, const QString &given,
                                   ExitStatus &status, Console &console)
{
    Exported exported;
    QString reason;
    io::DocumentFailure failure;
    const auto make = [&] {
        const library::LossCheck check = library::checkLoss(LibraryRecord(system.coord));
        reason = check.failure.isEmpty() ? check.loss : check.failure;
        if (reason.isEmpty()
            && !io::systemDocument(system.coord, system.origin, exported.bytes, failure))
            reason = io::describedFailure(failure);
    };
    if (withoutRaising(make, reason) && reason.isEmpty())
        return exported;
    console.report(QStringLiteral("cannot write %1 as xml: %2").arg(shown(given), shown(reason)));
    status = ExitStatus::SomeFailed;
    return std::nullopt;
}

} // namespace

ExitStatus runSystemExport(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 1))
        return *status;
    const QString given = line.positionals().value(0);
    const QString word = line.value(formOption);
    const QString fileName = onDisk(line.value(outputOption));
    const FormRow *form = findForm(word);
    if (given.isEmpty())
        return line.refuse(QStringLiteral("the coordinate system is missing"), console);
    if (word.isEmpty())
        return line.refuse(QStringLiteral("--as FORM is missing"), console);
    if (form == nullptr) {
        return line.refuse(unknownWord(formOption, word, QStringLiteral("form"), formWords()),
                           console);
    }
    if (line.isSet(outputOption) && (fileName.isEmpty() || fileName == QLatin1String("-")))
        return line.refuse(QStringLiteral("-o has no file's name"), console);
    if (!fileName.isEmpty() && streams::areSameFile(fileName, onDisk(given))) {
        console.report(QStringLiteral("cannot write %1: it is the system").arg(fileName));
        return ExitStatus::Usage;
    }
    if (QFileInfo::exists(fileName) && !line.isSet(forceOption)) {
        console.report(QStringLiteral("%1 exists; --force replaces it").arg(fileName));
        return ExitStatus::Usage;
    }

    const auto chosen = readChosenSystem(given, line, console);
    if (!chosen || !mayBeUsed(chosen->review, line, console))
        return ExitStatus::Environment;
    ExitStatus status = ExitStatus::Success;
    const auto exported = form->form ? textOf(*chosen, given, *form, status, console)
                                     : documentOf(*chosen, given, status, console);
    if (!exported)
        return status;
    const QByteArray &bytes = exported->bytes;
    if (fileName.isEmpty())
        console.write(bytes);
    else if (!writeWholeFile(fileName, bytes, console))
        return ExitStatus::Environment;
    if (!exported->code.isEmpty())
        console.report(QStringLiteral("note: the system is %1").arg(shown(exported->code)));
    for (const QString &lost : exported->lost)
        console.report(QStringLiteral("lost: %1").arg(shown(lost)));
    if (!fileName.isEmpty()) {
        console.printChange(
            QStringLiteral("Wrote %1: %2").arg(fileName, shown(chosen->coord.coord_name)));
    }
    return ExitStatus::Success;
}

} // namespace KelStd::cli
