#include <cli/commands/Command.h>

#include <cli/catalogue/SystemTarget.h>
#include <cli/geoids/GeoidModel.h>
#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryOptions.h>
#include <cli/library/RecordProposals.h>
#include <cli/proj/ProjEnvironment.h>
#include <cli/systems/ComposedSystem.h>
#include <cli/systems/OriginTrial.h>
#include <cli/systems/SystemFile.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/ProjEllipsoid.h>

#include <QtCore/QTemporaryDir>

namespace KelStd::cli {

namespace {

const QString ellipsoidOption = QStringLiteral("ellipsoid");
const QString projectionOption = QStringLiteral("projection");
const QString setOption = QStringLiteral("set");
const QString shiftOption = QStringLiteral("shift-parameters");
const QString geoidOption = QStringLiteral("geoid");
const QString nameOption = QStringLiteral("name");

/// The ellipsoids of the library, and PROJ's names.
QList<Proposal> ellipsoidProposals(const TypedLine &line)
{
    QList<Proposal> ellipsoids = recordValues({RecordKind::Ellipsoid}).source(line);
    for (const QString &name : io::ellipsoidNamesOfProj())
        ellipsoids.append({name, QStringLiteral("PROJ's name")});
    return ellipsoids;
}

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("--ellipsoid E --projection P [OPTIONS]"),
        QStringLiteral("Makes a coordinate system from an ellipsoid and a projection."),
        QStringLiteral(
            "  kelstd system compose --ellipsoid GRS80 --projection tmerc \\\n"
            "      --set lon_0=15 --set k=0.9996 --set x_0=500000 -o site.xml\n"
            "\n"
            "A projection of the library brings values of its parameters; --set changes\n"
            "them. One of PROJ has those that are set, and PROJ's defaults for the others.\n"
            "Longitudes and latitudes are degrees, or typed as in 52d30'15.5\"N, false origins\n"
            "metres. Parameters without a value are set by their names alone: --set south of\n"
            "a zone of UTM in the south, --set no_uoff.\n"
            "\n"
            "--shift-parameters has the signs of PROJ's +towgs84: the way from the local\n"
            "ellipsoid to WGS 84, translations [m], rotations [arc seconds] by the position\n"
            "vector convention, scale [ppm]. The coordinate frame convention has the three\n"
            "rotations with other signs. The document keeps translations and scale with\n"
            "their signs reversed, as all documents do; 'kelstd system show' says so.\n"
            "\n"
            "Without -o or --add the document goes to standard output. A system is only\n"
            "written when PROJ converts positions around its origin there and back.\n"
            "\n"
            "Exit status: 0 written, 1 refused, 2 usage or a file that exists, 3 no PROJ, or\n"
            "it cannot be written, 4 written, but standard output cannot be written."));
    line.setExamples(
        QStringLiteral("kelstd system compose --ellipsoid GRS80 --projection tmerc --set lon_0=15"),
        QStringLiteral("kelstd system compose --ellipsoid bessel --projection utm --set zone=32"));
    line.addOption({ellipsoidOption,
                    QStringLiteral("PROJ's name of an ellipsoid, one of the library,\n"
                                   "or A,RF: semi-major axis [m] and 1/flattening."),
                    QStringLiteral("E")},
                   Values::ofSource(&ellipsoidProposals));
    line.addOption({projectionOption,
                    QStringLiteral("A projection of the library, or PROJ's name of\none."),
                    QStringLiteral("P")},
                   recordValues({RecordKind::Projection}));
    line.addRepeatedOption({setOption,
                            QStringLiteral("The value of a parameter of PROJ's, or the name\n"
                                           "of one without a value; any number of times."),
                            QStringLiteral("KEY=VALUE")});
    line.addOption({shiftOption,
                    QStringLiteral("X,Y,Z or X,Y,Z,RX,RY,RZ,S: the datum shift to\n"
                                   "WGS 84. Default: none."),
                    QStringLiteral("LIST")});
    line.addOption({geoidOption,
                    QStringLiteral("The geoid model that heights refer to, one of\n"
                                   "'kelstd geoid list'. Default: none."),
                    QStringLiteral("NAME")},
                   geoidModelValues());
    line.addOption({nameOption,
                    QStringLiteral("The name of the system. Default: those of the\n"
                                   "ellipsoid and the projection."),
                    QStringLiteral("NAME")});
    SystemTarget::addOptions(line);
    return line;
}

/// Whether a document of the system would be understood as it is written; false after reports.
bool isUnderstood(const Coord &coord, Console &console)
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("system.xml"));
    QString error = directory.errorString();
    Coord read;
    QList<io::DocumentFinding> findings;
    if (!directory.isValid() || !Coord_IO::xml_write(coord, file, &error)
        || !io::reviewCoord(file, read, findings, &error)) {
        console.report(QStringLiteral("cannot make the document: %1").arg(error));
        return false;
    }
    for (const io::DocumentFinding &finding : findings)
        console.report(io::describedFinding(finding));
    if (findings.isEmpty())
        return true;
    console.report(QStringLiteral("the system is refused: not all of it would be used as it is "
                                  "given"));
    return false;
}

/// Whether PROJ takes the system and converts by it; false after a report.
bool isAccepted(const Coord &coord, Console &console)
{
    QString reason;
    const auto definitions = definitionsOf(coord, reason);
    if (definitions && acceptedByProj(*definitions, reason) && convertsAroundOrigin(coord, reason))
        return true;
    console.report(QStringLiteral("the system is refused: %1").arg(reason));
    return false;
}

} // namespace

ExitStatus runSystemCompose(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    SystemTarget target;
    QString mistake;
    for (const QString &option : {ellipsoidOption, projectionOption}) {
        if (line.value(option).trimmed().isEmpty())
            return line.refuse(QStringLiteral("--%1 is missing").arg(option), console);
    }
    if (!target.takeOptions(line, mistake))
        return line.refuse(mistake, console);
    if (line.isSet(nameOption) && line.value(nameOption).trimmed().isEmpty())
        return line.refuse(QStringLiteral("--name is empty"), console);
    if (const auto status = target.refusal({}, console))
        return *status;

    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library || !loadRecords(*library, console))
        return ExitStatus::Environment;
    const ProjEnvironment environment; // which also copies the delivered geoid models
    if (!environment.isReady(console))
        return ExitStatus::Environment;
    const SystemPieces pieces = {line.value(ellipsoidOption), line.value(projectionOption),
                                 line.values(setOption),      line.value(shiftOption),
                                 line.value(geoidOption),     line.value(nameOption)};
    const auto coord = composedSystem(pieces, mistake);
    if (!coord)
        return line.refuse(mistake, console);
    if (!isUnderstood(*coord, console) || !isAccepted(*coord, console))
        return ExitStatus::SomeFailed;
    const QStringList brought = broughtParameters(pieces, *coord);
    if (!brought.isEmpty()) {
        console.report(QStringLiteral("note: from the library's projection: %1")
                           .arg(brought.join(QStringLiteral(", "))));
    }
    if (!target.isNamed())
        return SystemTarget::print(*coord, {}, console);
    return target.put(*coord, {}, line, false, console);
}

} // namespace KelStd::cli
