#include <cli/systems/RecordReview.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>

namespace KelStd::cli {

namespace {

const QString lenientOption = QStringLiteral("lenient");

void reportFindings(const RecordReview &review, const QString &before, Console &console)
{
    for (const io::DocumentFinding &finding : review.findings) {
        console.report(
            QStringLiteral("%1%2: %3").arg(before, review.file, io::describedFinding(finding)));
    }
    if (review.findings.size() >= io::maxFindings)
        console.report(QStringLiteral("%1%2: there may be more").arg(before, review.file));
}

} // namespace

void addLenientOption(CommandLine &line)
{
    line.addOption(
        {lenientOption, QStringLiteral("Use a document that is not understood as it is\n"
                                       "written all the same, after a list of warnings.")});
}

QString reviewHelp()
{
    return QStringLiteral("A document that has more, or something else, than is understood and "
                          "used, or\nvalues that cannot be meant, is refused with a list of them; "
                          "--lenient uses it\nall the same.");
}

bool mayBeUsed(const RecordReview &review, const CommandLine &line, Console &console)
{
    if (review.findings.isEmpty())
        return true;
    const bool isLenient = line.isSet(lenientOption);
    reportFindings(review, isLenient ? QStringLiteral("warning: ") : QString(), console);
    if (!isLenient) {
        console.report(QStringLiteral("%1 is refused: not all of it is used as it is written; "
                                      "mend it, or use it all the same with --lenient")
                           .arg(review.file));
    }
    return isLenient;
}

bool mayBeWritten(const RecordReview &review, Console &console)
{
    if (review.findings.isEmpty())
        return true;
    reportFindings(review, {}, console);
    console.report(QStringLiteral("%1 is refused: not all of it is used as it is written, and it "
                                  "would be written so into the library; mend it first")
                       .arg(review.file));
    return false;
}

} // namespace KelStd::cli
