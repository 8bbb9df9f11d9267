#include <cli/conversion/ColumnOptions.h>

#include <cli/conversion/FieldProposals.h>
#include <cli/conversion/FrameWords.h>
#include <cli/terminal/CommandLine.h>

namespace KelStd::cli {

namespace {

const QString framesOption = QStringLiteral("frames");
const QString fieldsOption = QStringLiteral("fields");
const QString factorsOption = QStringLiteral("factors");

} // namespace

void addColumnOptions(CommandLine &line)
{
    line.addOption({framesOption,
                    QStringLiteral("Print only these frames, in this order, named as\n"
                                   "for --from, site-neh too."),
                    QStringLiteral("FRAME,...")},
                   Values::listOf(&frameProposals));
    line.addOption({fieldsOption,
                    QStringLiteral("Print only these columns, in this order: names of\n"
                                   "the CSV's columns, with or without their units;\n"
                                   "\"point\", the factors and carried ones are among\n"
                                   "them."),
                    QStringLiteral("NAME,...")},
                   Values::listOf(&fieldProposals));
    line.addOption(
        {factorsOption, QStringLiteral("Print point scale, elevation factor, combined\n"
                                       "factor and meridian convergence behind the frames.")});
}

std::optional<positions::ColumnSelection> columnOptions(const CommandLine &line, QString &mistake)
{
    positions::ColumnSelection selection;
    const bool hasFields = line.isSet(fieldsOption);
    selection.hasFactors = line.isSet(factorsOption);
    for (const QString &other : {framesOption, factorsOption}) {
        if (hasFields && line.isSet(other)) {
            mistake = QStringLiteral("--%1 and --%2 exclude each other").arg(other, fieldsOption);
            return std::nullopt;
        }
    }
    QString reason;
    if (line.isSet(framesOption)
        && !positions::readFrames(line.value(framesOption), selection.frames, reason))
        mistake = QStringLiteral("--%1: %2").arg(framesOption, reason);
    else if (hasFields
             && !positions::readFields(line.value(fieldsOption), selection.fields, reason))
        mistake = QStringLiteral("--%1: %2").arg(fieldsOption, reason);
    else
        return selection;
    return std::nullopt;
}

} // namespace KelStd::cli
