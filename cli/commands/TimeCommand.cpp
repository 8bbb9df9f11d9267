#include <cli/commands/Command.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/Report.h>
#include <cli/terminal/UnknownWord.h>
#include <cli/values/ValueArguments.h>

#include <KelStd/time/Epoch.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstdlib>
#include <limits>

namespace KelStd::cli {

namespace {

constexpr int maxOffset = 86400; // [s]: a day, which no clock is away from UTC

QStringList timeScaleNames()
{
    QStringList names;
    for (const TimeScaleRow &row : timeScales())
        names += QString::fromLatin1(row.name);
    return names;
}

/// The scales, a line each with the accepted forms.
QString timeScaleForms()
{
    QString text;
    for (const TimeScaleRow &row : timeScales()) {
        text += QStringLiteral("  %1  %2\n")
                    .arg(QString::fromLatin1(row.name), -5)
                    .arg(QString::fromLatin1(row.forms));
    }
    return text;
}

CommandLine makeCommandLine()
{
    CommandLine line(
        QStringLiteral("[OPTIONS] VALUE...|now|-"),
        QStringLiteral("Shows an instant in UTC, GPS calendar time, GPS week and seconds, and "
                       "local\ntime, with its leap-second count (GPS minus UTC)."),
        QStringLiteral("A VALUE is written as\n") + timeScaleForms()
            + QStringLiteral(
                "with decimals of the second, which are kept to the millisecond: a finer value\n"
                "is refused unless the rest is zeros. 'now' is the system's time. With -, values\n"
                "are read from standard input, one a line; blank lines and lines that begin with\n"
                "# are skipped.\n"
                "\n"
                "Exit status: 0 all shown, 2 usage or a value that cannot be read (it is\n"
                "reported on standard error, and the run goes on)."));
    line.setExamples(QStringLiteral("kelstd time now"),
                     QStringLiteral("kelstd time --from gpsw 2303:390914"));
    line.addOption({QStringLiteral("from"),
                    QStringLiteral("The scale of the values:\n%1.\nDefault: utc.")
                        .arg(timeScaleNames().join(QLatin1String(", "))),
                    QStringLiteral("SCALE"), QStringLiteral("utc")},
                   Values::ofWords(timeScaleNames()));
    line.setPositionals({Values::ofWords({QStringLiteral("now")})});
    line.addOption({QStringLiteral("offset"),
                    QStringLiteral("The offset of local times from UTC [s], east positive,\n"
                                   "at most 86400 either way.\n"
                                   "Default: the system's of this moment."),
                    QStringLiteral("SECONDS")});
    line.addOption(
        {QStringLiteral("json"), QStringLiteral("Print a JSON object a line for each instant.")});
    return line;
}

/// "+05:30", with seconds where there are any.
QString clockOffset(int offset)
{
    const int seconds = std::abs(offset);
    QString text = QStringLiteral("%1%2:%3")
                       .arg(offset < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                       .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
                       .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'));
    if (seconds % 60 != 0)
        text += QStringLiteral(":%1").arg(seconds % 60, 2, 10, QLatin1Char('0'));
    return text;
}

/// The seconds of the week, with three decimals where they are not whole.
QString secondsOfWeek(const Epoch &epoch)
{
    const QString whole = QString::number(epoch.gpsW.gps_seconds());
    const int milliseconds = epoch.gpsT.millionSecond();
    return milliseconds == 0
               ? whole
               : whole + QStringLiteral(".%1").arg(milliseconds, 3, 10, QLatin1Char('0'));
}

/// The values of one run, one after the other.
class TimeRun
{
public:
    TimeRun(const TimeScaleRow &scale, std::optional<int> offset, bool isJson, Console &console)
        : m_scale(scale), m_offset(offset), m_isJson(isJson), m_console(console), m_report(console)
    {}

    void take(const QString &value, const QString &place)
    {
        if (value == QLatin1String("now")) {
            show(value, Epoch::current(m_offset));
            return;
        }
        EpochFailure failure;
        if (const auto epoch = Epoch::read(value, m_scale.scale, m_offset, &failure)) {
            show(value, *epoch);
            return;
        }
        m_console.report(QStringLiteral("%1\"%2\" is no %3 (%4); write %5")
                             .arg(place, value.left(maxShown), QString::fromLatin1(m_scale.label),
                                  failure.text, QString::fromLatin1(m_scale.forms)));
        m_status = ExitStatus::Usage;
    }

    ExitStatus status() const { return m_status; }

private:
    static constexpr int maxShown = 60;

    void show(const QString &value, const Epoch &epoch)
    {
        if (m_isJson)
            showJson(epoch);
        else
            showText(value, epoch);
    }

    void showText(const QString &value, const Epoch &epoch)
    {
        const int offset = epoch.local.timeZoneSeconds();
        m_report.section(value);
        m_report.value(QStringLiteral("UTC"), epoch.utc.toString(true)
                                                  + (epoch.isLeapSecond() ? QStringLiteral(
                                                         " (in the leap second 23:59:60)")
                                                                          : QString()));
        m_report.value(QStringLiteral("GPS time"), epoch.gpsT.toString(true));
        m_report.value(
            QStringLiteral("GPS week and seconds"),
            QStringLiteral("%1 %2").arg(epoch.gpsW.gps_weeks()).arg(secondsOfWeek(epoch)));
        m_report.value(
            QStringLiteral("local time"),
            QStringLiteral("%1 (UTC%2)").arg(epoch.local.toString(true), clockOffset(offset)));
        m_report.value(QStringLiteral("leap seconds"),
                       QStringLiteral("%1 (GPS minus UTC)").arg(epoch.gpsT.leapSeconds()));
    }

    void showJson(const Epoch &epoch)
    {
        const auto iso = [](QString text) {
            return text.replace(QLatin1Char(' '), QLatin1Char('T'));
        };
        const QJsonObject object{
            {QStringLiteral("utc"), iso(epoch.utc.toString(true)) + QLatin1Char('Z')},
            {QStringLiteral("gpst"), iso(epoch.gpsT.toString(true))},
            {QStringLiteral("gps_week"), epoch.gpsW.gps_weeks()},
            {QStringLiteral("gps_seconds"), secondsOfWeek(epoch).toDouble()},
            {QStringLiteral("local"), iso(epoch.local.toString(true))},
            {QStringLiteral("offset"), epoch.local.timeZoneSeconds()},
            {QStringLiteral("leap_seconds"), epoch.gpsT.leapSeconds()},
            {QStringLiteral("is_leap_second"), epoch.isLeapSecond()},
            {QStringLiteral("milliseconds_since_1970"), epoch.utc.toValueTime()}};
        m_console.print(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    }

    const TimeScaleRow &m_scale;
    std::optional<int> m_offset;
    bool m_isJson;
    Console &m_console;
    Report m_report;
    ExitStatus m_status = ExitStatus::Success;
};

} // namespace

ExitStatus runTime(const QStringList &arguments, Console &console)
{
    CommandLine line = makeCommandLine();
    if (const auto status = line.parse(arguments, console, std::numeric_limits<int>::max()))
        return *status;
    const QString from = line.value(QStringLiteral("from"));
    const TimeScaleRow *scale = findTimeScale(from);
    if (scale == nullptr) {
        return line.refuse(unknownWord(QStringLiteral("from"), from, QStringLiteral("time scale"),
                                       timeScaleNames()),
                           console);
    }
    std::optional<int> offset;
    if (line.isSet(QStringLiteral("offset"))) {
        bool isNumber = false;
        offset = line.value(QStringLiteral("offset")).toInt(&isNumber);
        if (!isNumber || std::abs(static_cast<qint64>(*offset)) > maxOffset) {
            return line.refuse(QStringLiteral("--offset '%1' is no whole number of seconds between "
                                              "-%2 and %2")
                                   .arg(line.value(QStringLiteral("offset")))
                                   .arg(maxOffset),
                               console);
        }
    }
    const QStringList values = line.positionals();
    if (values.isEmpty())
        return line.refuse(QStringLiteral("a VALUE is missing"), console);

    TimeRun run(*scale, offset, line.isSet(QStringLiteral("json")), console);
    const auto take = [&run](const QString &value, const QString &place) {
        run.take(value, place);
    };
    return takeValues(values, console, take) ? run.status() : ExitStatus::Usage;
}

} // namespace KelStd::cli
