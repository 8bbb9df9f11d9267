#include <cli/commands/ProgramHelp.h>

namespace KelStd::cli {

namespace {

QString helpOf(const QList<const Command *> &commands)
{
    QString help = QStringLiteral(
        "Examples:\n"
        "  kelstd convert --system \"Amersfoort / RD New\" points.csv\n"
        "  kelstd help convert\n"
        "\n"
        "Usage: kelstd COMMAND [OPTIONS] [ARGUMENTS]\n"
        "Coordinate systems for GNSS surveying: a measured position in every frame.\n"
        "\n"
        "Commands:\n");
    for (const Command *command : commands)
        help += listed(*command) + QLatin1Char('\n');
    help += QStringLiteral(
        "\n"
        "Options:\n"
        "  -h, --help      Show this help; 'kelstd help COMMAND' that of a command, and\n"
        "                  'kelstd help COMMAND full' all of it.\n"
        "  -v, --version   Show the version, and those of Qt, PROJ, its database, GDAL.\n"
        "\n"
        "Exit status:\n"
        "  0  everything was done\n"
        "  1  some positions or values failed; standard error lists them with their\n"
        "     lines. Or the leap seconds differ from the list, a change of the library\n"
        "     was refused, or its check found something\n"
        "  2  the command line, the input's header line or a time was not understood\n"
        "  3  no PROJ ('kelstd doctor' tells why), no usable coordinate system, geoid\n"
        "     model or library, or output that cannot be written\n"
        "  4  the change was made, but standard output cannot be written to say so;\n"
        "     standard error does\n"
        "\n"
        "Environment:\n"
        "  KELSTD_HOME_DIR  Directory of the user's own files, with the library; PROJ is\n"
        "                   unpacked into it.\n"
        "                   Default: the user's application-data directory.\n"
        "  KELSTD_BIN_DIR   Directory of the program's files, with proj/proj.zip.\n"
        "                   Default: the program's own.\n"
        "  PROJ_DEBUG       Set to 1, 2 or 3, it lets PROJ's notes on the coordinate\n"
        "                   systems through to standard error.");
    return help;
}

} // namespace

QString listed(const Command &command)
{
    return QStringLiteral("  %1  %2")
        .arg(QString::fromLatin1(command.name), -17)
        .arg(QString::fromLatin1(command.summary));
}

QString programHelp(const QList<const Command *> &commands, HelpForm form)
{
    const QString text = helpOf(commands);
    if (form != HelpForm::Manual)
        return text;
    QStringList names;
    for (const Command *command : commands)
        names += QString::fromLatin1(command->name);
    return programPage(QStringLiteral("coordinate systems for GNSS surveying"), text, names);
}

} // namespace KelStd::cli
