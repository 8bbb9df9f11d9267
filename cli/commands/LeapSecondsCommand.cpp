#include <cli/commands/Command.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/Report.h>

#include <KelStd/time/LeapSecondList.h>
#include <KelStd/time/LeapSecondTable.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace KelStd::cli {

namespace {

constexpr long long msPerDay = 86400000;
constexpr qint64 maxListBytes = 1 << 20;
const QString usualList = QStringLiteral("/usr/share/zoneinfo/leap-seconds.list");

/// What is known of the table and of the list.
struct Comparison
{
    QList<LeapSecondRow> table;
    QString file;
    QString problem; ///< why there is no list
    std::optional<LeapSecondList> list;
    QStringList differences;
};

/// The date of an instant.
QString dateText(const TimeUtc &time)
{
    return time.toString().left(10);
}

/// Every difference between the library's table and a list, a line each.
QStringList differenceTexts(const QList<LeapSecondRow> &table, const QList<LeapSecondRow> &list)
{
    const auto text = [](const std::optional<int> &count) {
        return count ? QString::number(*count) : QStringLiteral("no row");
    };
    QStringList texts;
    for (const LeapSecondDifference &difference : leapSecondDifferences(table, list)) {
        texts += QStringLiteral("%1: %2 here, %3 in the list")
                     .arg(difference.from.toString(), text(difference.firstCount),
                          text(difference.otherCount));
    }
    return texts;
}

QString daysFromNow(const TimeUtc &time)
{
    const long long days = (time - TimeUtc::makeCurrent()) / msPerDay;
    return days < 0 ? QStringLiteral("%1 days ago").arg(-days)
                    : QStringLiteral("in %1 days").arg(days);
}

Comparison compare(const QString &fileName)
{
    Comparison result{leapSecondTable(), fileName, {}, {}, {}};
    LeapSecondListFailure failure;
    QFile file(fileName);
    if (QFileInfo(fileName).isDir())
        result.problem = QStringLiteral("it is a directory");
    else if (!file.open(QIODevice::ReadOnly))
        result.problem = file.errorString();
    else if (const QByteArray bytes = file.read(maxListBytes + 1); bytes.size() > maxListBytes)
        result.problem = QStringLiteral("it is longer than a list of leap seconds can be");
    else if (result.list = LeapSecondList::parse(bytes, &failure); !result.list)
        result.problem = failure.text;
    if (result.list)
        result.differences = differenceTexts(result.table, result.list->rows);
    return result;
}

void showText(const Comparison &comparison, Console &console)
{
    Report report(console);
    report.section(QStringLiteral("From (UTC, 00:00:00)"), QStringLiteral("GPS minus UTC [s]"));
    for (const LeapSecondRow &row : comparison.table)
        report.value(dateText(row.from), QString::number(row.gpsMinusUtc));
    report.section(QStringLiteral("Table"));
    const TimeUtc last = comparison.table.last().from;
    report.value(QStringLiteral("last leap second"),
                 QStringLiteral("%1, %2").arg(dateText(last), daysFromNow(last)));
    report.section(QStringLiteral("List"), comparison.file);
    if (!comparison.list) {
        report.line(QStringLiteral("It is not compared: %1.").arg(comparison.problem));
        return;
    }
    const auto &expiry = comparison.list->expiry;
    report.value(QStringLiteral("valid until"),
                 expiry ? QStringLiteral("%1, %2").arg(dateText(*expiry), daysFromNow(*expiry))
                        : QStringLiteral("(not said)"));
    report.value(QStringLiteral("differences"),
                 comparison.differences.isEmpty() ? QStringLiteral("none")
                                                  : QString::number(comparison.differences.size()));
    for (const QString &difference : comparison.differences)
        report.line(difference);
}

void showJson(const Comparison &comparison, Console &console)
{
    QJsonArray rows;
    for (const LeapSecondRow &row : comparison.table) {
        rows += QJsonObject{{QStringLiteral("from"), dateText(row.from)},
                            {QStringLiteral("gps_minus_utc"), row.gpsMinusUtc}};
    }
    QJsonObject object{{QStringLiteral("table"), rows}, {QStringLiteral("list"), comparison.file}};
    if (comparison.list) {
        object.insert(QStringLiteral("differences"),
                      QJsonArray::fromStringList(comparison.differences));
        if (comparison.list->expiry)
            object.insert(QStringLiteral("list_expiry"), dateText(*comparison.list->expiry));
    } else {
        object.insert(QStringLiteral("not_compared"), comparison.problem);
    }
    console.print(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

} // namespace

ExitStatus runLeapSeconds(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS]"),
        QStringLiteral("Shows the table of leap seconds, says how old it is, and compares it with "
                       "the\ntz database's list."),
        QStringLiteral(
            "Exit status: 0 they agree or there is no list, 1 they differ, 2 usage or a\n"
            "FILE that cannot be read."));
    line.setExamples(QStringLiteral("kelstd time leap-seconds"),
                     QStringLiteral("kelstd time leap-seconds --list leap-seconds.list --json"));
    line.addOption({QStringLiteral("list"),
                    QStringLiteral("The list to compare with.\nDefault: %1").arg(usualList),
                    QStringLiteral("FILE")});
    line.addOption(
        {QStringLiteral("json"), QStringLiteral("Print a JSON object in a single line.")});
    if (const auto status = line.parse(arguments, console, 0))
        return *status;

    const bool isChosen = line.isSet(QStringLiteral("list"));
    const Comparison comparison =
        compare(isChosen ? onDisk(line.value(QStringLiteral("list"))) : usualList);
    if (isChosen && !comparison.list) {
        console.report(
            QStringLiteral("cannot read the list %1: %2").arg(comparison.file, comparison.problem));
        return ExitStatus::Usage;
    }
    if (line.isSet(QStringLiteral("json")))
        showJson(comparison, console);
    else
        showText(comparison, console);
    if (!comparison.differences.isEmpty()) {
        console.report(QStringLiteral("the table of leap seconds and the list %1 differ")
                           .arg(comparison.file));
        return ExitStatus::SomeFailed;
    }
    return ExitStatus::Success;
}

} // namespace KelStd::cli
