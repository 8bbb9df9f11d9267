#include <cli/commands/ConvertCommandLine.h>

#include <cli/conversion/ColumnOptions.h>
#include <cli/conversion/FrameWords.h>
#include <cli/conversion/LocationForms.h>
#include <cli/library/DirectoryOption.h>
#include <cli/run/PositionInput.h>
#include <cli/systems/SystemChoice.h>
#include <cli/systems/SystemProposals.h>
#include <cli/values/DisplayOptions.h>
#include <cli/vector/FileOutput.h>
#include <cli/vector/VectorInput.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/ValuePrinter.h>

namespace KelStd::cli {

namespace {

QString details()
{
    QString text = systemChoiceHelp() + QStringLiteral("\n\n") + reviewHelp();
    text += QStringLiteral(
        "\n\n"
        "INPUT is a file, or - for standard input, which is the default, or two or three\n"
        "numbers or angles, which are one position. Several files are read one behind\n"
        "the other. A list holds one position a line, separated by commas, semicolons,\n"
        "tabulators or blanks, after a point name if the first line has one. Blank lines\n"
        "and lines that begin with # are skipped. The order is\n");
    for (const positions::FrameRow &row : positions::frames()) {
        text += QStringLiteral("  %1  %2\n")
                    .arg(QString::fromLatin1(row.option), -9)
                    .arg(componentLabels(row.frame));
    }
    text += QStringLiteral("  %1  %2\n")
                .arg(QString::fromLatin1(positions::siteFrameName), -9)
                .arg(componentLabels(positions::InputForm::atSite()));
    text += QStringLiteral(
        "unless a line of headings before them names the columns, in any order, such as\n"
        "  point,easting,northing,height     or     name;lat;lon;h\n"
        "Headings may stand behind a # and below a title. Further down they may be\n"
        "repeated; others end the run, and so does a first line that is neither headings\n"
        "nor a position: --skip N passes over it. Units in headings (northing_usft) go\n"
        "before all others; a heading of another frame is refused. Other columns are\n"
        "carried through, behind the frames. Two components alone have the height of\n"
        "--height, or 0.\n"
        "Every line has as many fields as the first; a separator may end it. With\n"
        "--columns the fields may stand anywhere and have any headings that do not say\n"
        "otherwise:\n"
        "  --columns 2,3,4     --columns \"station id,east,north,7\"\n"
        "picks those of the components, in the order above, after that of the point name\n"
        "if there is one. A heading with a comma stands in quotation marks, as in CSV:\n"
        "--columns '\"a,b\",2,3'. The other fields are carried through, behind the frames.\n"
        "\n"
        "Longitudes and latitudes are typed as decimal degrees or as in "
        "52\u00B030\u203215.5\u2033,\n"
        "52d30'15.5\", 52\u00B030.25', 52:30:15.5, with a sign before the whole angle or N, S,\n"
        "E or W before or behind it. Degree signs are \u00B0 \u00BA \u02DA d, minute signs \u2032 "
        "' \u2019, second\n"
        "signs \u2033 \" \u201D ''. Where blanks separate the fields, an angle holds none. "
        "Lengths\n"
        "are in the unit of --length-unit, or else in metres; without the option,\n"
        "northing and easting are in the system's own unit where it has one (feet,\n"
        "links), which the headings name, and so they are printed. Decimals stand behind\n"
        "a point, whatever the locale, or behind a comma where semicolons or tabulators\n"
        "separate the fields. A line that can be read in two ways is refused.\n"
        "\n"
        "INPUT may be a vector file as well (\"kelstd formats\"): points of one layer,\n"
        "whose attributes are carried through. Its coordinate reference system is held\n"
        "against --from and the system; without --from it says what the frame is.\n"
        "Features that are no points are reported by their number.\n"
        "\n"
        "-o FILE writes a file in place of printing, by its extension one of\n"
        "%6.\n"
        ".gpkg, .shp and .dxf hold easting, northing and local height, the others WGS84;\n"
        "all columns are attributes, and names are labels.\n"
        "\n"
        "The output has the name and all four frames: WGS84 longitude, latitude, height;\n"
        "WGS84 X, Y, Z; local longitude, latitude, height; northing, easting, height.\n"
        "Heights are ellipsoidal (ell.), but the last one is above the geoid in a system\n"
        "that names a geoid model; the output says which. Where the model cannot be used\n"
        "or has no value for a point, a warning says so, and the height is ellipsoidal.\n"
        "Behind them stand northing, easting and height at the site, where the system has\n"
        "a planar transformation or a height fitting; site-neh reads them back. A height\n"
        "that was fitted to those above the geoid is missing where there is none of them.\n"
        "A table has degrees, minutes and seconds with %1 decimals and metres with up to\n"
        "%2; --angle degree has %3 decimals. CSV has plain numbers, degrees with %4\n"
        "decimals and metres with %5, unless --format or --angle is given. Units stand in\n"
        "the headings. A display configuration in the library (its \"display.bin\") changes\n"
        "units, styles and decimals of a table and of --format configured; options go\n"
        "before it. JSON has the names of the CSV's columns, with numbers as they stand\n"
        "there; angles in another style are texts. GeoJSON has WGS84 longitude, latitude\n"
        "and height for coordinates.\n"
        "\n"
        "With --nmea the sentences GGA, GNS, RMC, ZDA and GST of any talker are combined\n"
        "by the time that they carry, an epoch a line, which is printed when the next\n"
        "epoch begins or nothing has come for 0.3 s:\n"
        "  gpspipe -r | kelstd convert --nmea --system NAME\n"
        "Ellipsoidal height = mean-sea-level height + separation. Behind the frames stand\n"
        "utc, gps_week, gps_seconds, quality, satellites, hdop, undulation_m,\n"
        "sd_latitude_m, sd_longitude_m and sd_height_m, empty where the receiver did not\n"
        "say. The date is that of RMC or ZDA, carried on over midnight. An epoch without\n"
        "a fix (quality 0, RMC void), a height or a separation fails; --rejects keeps its\n"
        "sentences. Broken sentences are not used, and counted at the end, as are other\n"
        "positions of one time, of which the first is taken. Several INPUTs are read one\n"
        "behind the other, as receivers log them by the hour. A stream that is stopped\n"
        "writes its -o FILE of what came before.\n"
        "\n"
        "--frames and --fields choose what is printed; behind chosen frames stand the\n"
        "factors if --factors asks for them, and what is carried through. A carried\n"
        "column of a name that one of the program's has gets a number behind it. Factors\n"
        "are those of the plane's system: the combined factor times a length on the\n"
        "ground is the length in the plane, and the convergence is positive where grid\n"
        "north is east of true north. Where the scale is not the same in all directions\n"
        "there is no point scale.\n"
        "--excel has the separator and the decimal sign of the locale (LC_ALL, LANG),\n"
        "and texts that a spreadsheet would change or compute, such as 00123 or =1+1, as\n"
        "formulas that give the text; the program reads them back.\n"
        "\n"
        "A line that cannot be read or converted is reported on standard error as\n"
        "INPUT:LINE: reason, and the run goes on. --rejects keeps such lines, below the\n"
        "header if there is one, to be mended and converted again; its FILE appears, in\n"
        "place of an older one, at the end of the run.\n"
        "\n"
        "At the end a warning counts the positions outside the area of use of the system,\n"
        "where that is known, and louder ones those that would lie inside with longitude\n"
        "and latitude (or northing and easting) swapped or a sign changed.\n"
        "\n"
        "The input may have any length: it is read, converted on all cores and printed\n"
        "in its order a piece at a time. Where it is a file, the output is no terminal\n"
        "and standard error is one, a bar there shows how far it is. The interrupt key\n"
        "ends the run behind a whole line, which is reported; a second one at once.\n"
        "\n"
        "Exit status: 0 all converted, 1 some failed or sentences were broken or\n"
        "contradicted each other, 2 usage, 3 no PROJ, no usable system, or output that\n"
        "cannot be written.");
    return text.arg(positions::defaultAngleStyle().decimals)
        .arg(stShowConfig().xyPrecision)
        .arg(findAngleStyle(QStringLiteral("degree"))->decimals)
        .arg(positions::csvAngleDecimals)
        .arg(positions::csvLengthDecimals)
        .arg(vector::FileOutput::extensions());
}

} // namespace

CommandLine convertCommandLine()
{
    CommandLine line(QStringLiteral("--system FILE.xml|NAME [OPTIONS] [INPUT...]"),
                     QStringLiteral("Converts positions of one frame to all four frames of a "
                                    "system."),
                     details());
    line.setExamples(
        QStringLiteral("kelstd convert --system \"Amersfoort / RD New\" points.csv"),
        QStringLiteral("kelstd convert --system EPSG:28992 --from local-neh --csv site.csv"));
    line.setUsual({QStringLiteral("system"), QStringLiteral("from"), QStringLiteral("columns"),
                   QStringLiteral("table"), QStringLiteral("csv"), QStringLiteral("json"),
                   QStringLiteral("geojson"), QStringLiteral("output"), QStringLiteral("nmea"),
                   QStringLiteral("to"), QStringLiteral("precision"), QStringLiteral("angle"),
                   QStringLiteral("rejects")});
    line.addOption({QStringLiteral("system"),
                    QStringLiteral("The coordinate system: its document, its name\n"
                                   "in the library, or its code."),
                    QStringLiteral("FILE.xml|NAME")},
                   systemValues());
    addDirectoryOption(line);
    addLenientOption(line);
    line.addOption({QStringLiteral("from"),
                    QStringLiteral("The frame of the input:\n%1,\n%2. Default: %3.")
                        .arg(frameNames(QStringLiteral(", ")).section(QLatin1String(", "), 0, -2),
                             QString::fromLatin1(positions::siteFrameName),
                             QString::fromLatin1(positions::frames().front().option)),
                    QStringLiteral("FRAME"),
                    QString::fromLatin1(positions::frames().front().option)},
                   Values::ofSource(&frameProposals));
    line.addOption(
        {QStringLiteral("nmea"), QStringLiteral("The input is what a receiver says in NMEA 0183,\n"
                                                "kept in a file or as it comes (see below).")});
    line.addOption({QStringLiteral("names"),
                    QStringLiteral("What names the points. With --nmea: 'number' (of\n"
                                   "the epoch; the default) or 'utc'. Of a vector\n"
                                   "file: a field; default: point, name, id or alike."),
                    QStringLiteral("WHAT")},
                   Values::ofWords({QStringLiteral("number"), QStringLiteral("utc")}));
    line.addOption({QStringLiteral("to"),
                    QStringLiteral("Print the frames of this system instead, through\n"
                                   "WGS84; the input is one of --system."),
                    QStringLiteral("FILE.xml|NAME")},
                   systemValues());
    PositionInput::addColumnsOption(
        line, QStringLiteral("The columns of longitude, latitude, height (or\n"
                             "those of the frame, in its order) and, before\n"
                             "them, of the point name if there is one: headings\n"
                             "or numbers. The others are carried through."));
    PositionInput::addSkipOption(line);
    vector::VectorInput::addOptions(line);
    line.addOption({QStringLiteral("height"),
                    QStringLiteral("The height of positions that have none, in the\n"
                                   "unit of lengths. Default: 0, with a note."),
                    QStringLiteral("H")});
    addFormOptions(line, locationOutputForms());
    vector::FileOutput::addOptions(line);
    addColumnOptions(line);
    line.addOption({QStringLiteral("no-header"),
                    QStringLiteral("Print comma-separated values without a header\nline.")});
    DisplayOptions::addTo(line);
    line.addOption({QStringLiteral("rejects"),
                    QStringLiteral("Write the lines that fail to FILE, as they stand,\n"
                                   "below the headings and what --skip passes over."),
                    QStringLiteral("FILE")});
    line.addOption({QStringLiteral("threads"),
                    QStringLiteral("On how many threads to convert. Default: one for\n"
                                   "each core."),
                    QStringLiteral("N")});
    return line;
}

} // namespace KelStd::cli
