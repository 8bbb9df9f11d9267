#include <cli/LeapSecondList.h>

#include <KelStd/time/TimeGpsT.h>

#include <QtCore/QMap>
#include <QtCore/QStringList>

namespace KelStd::cli {

namespace {

constexpr long long msPerSecond = 1000;
constexpr long long msPerDay = 86400 * msPerSecond;
constexpr long long secondsFrom1900To1970 = 2208988800; // the list's times begin in 1900
constexpr int taiMinusGps = 19;                         // [s], always

/// A time of the list. Negative ones and those beyond the year 9999 are none.
std::optional<TimeUtc> readTime(const QByteArray &word)
{
    constexpr long long last = 255611289599; // 9999-12-31 23:59:59
    bool isNumber = false;
    const long long seconds = word.toLongLong(&isNumber);
    if (!isNumber || seconds < 0 || seconds > last)
        return std::nullopt;
    return TimeUtc((seconds - secondsFrom1900To1970) * msPerSecond);
}

int countAt(const TimeUtc &utc)
{
    return utc.toGpsT().leapSeconds();
}

} // namespace

QList<LeapSecondRow> libraryLeapSeconds()
{
    // The library answers for instants and shows no table. Leap seconds come at the end of a day,
    // and before 1972 there were none.
    TimeUtc day(1972, 1, 1, 0, 0, 0, 0);
    const TimeUtc end(2200, 1, 1, 0, 0, 0, 0);
    QList<LeapSecondRow> rows{{day, countAt(day)}};
    for (; day < end; day += msPerDay) {
        const int count = countAt(day);
        if (count != rows.last().gpsMinusUtc)
            rows += LeapSecondRow{day, count};
    }
    return rows;
}

std::optional<LeapSecondList> LeapSecondList::parse(const QByteArray &bytes, QString &reason)
{
    LeapSecondList list;
    int number = 0;
    for (const QByteArray &raw : bytes.split('\n')) {
        ++number;
        const QByteArray line = raw.simplified();
        if (line.startsWith("#@"))
            list.expiry = readTime(line.mid(2).trimmed());
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const QList<QByteArray> words = line.split(' ');
        const auto from = readTime(words.first());
        bool isNumber = false;
        const int taiMinusUtc = words.value(1).toInt(&isNumber);
        if (!from || !isNumber || (!list.rows.isEmpty() && !(list.rows.last().from < *from))) {
            reason = QStringLiteral("line %1 is no leap second").arg(number);
            return std::nullopt;
        }
        list.rows += LeapSecondRow{*from, taiMinusUtc - taiMinusGps};
    }
    if (list.rows.isEmpty()) {
        reason = QStringLiteral("it has no leap seconds");
        return std::nullopt;
    }
    return list;
}

QStringList differences(const QList<LeapSecondRow> &table, const QList<LeapSecondRow> &list)
{
    struct Counts
    {
        std::optional<int> ours;
        std::optional<int> listed;
    };
    QMap<long long, Counts> byInstant;
    for (const LeapSecondRow &row : table)
        byInstant[row.from.toValueTime()].ours = row.gpsMinusUtc;
    for (const LeapSecondRow &row : list)
        byInstant[row.from.toValueTime()].listed = row.gpsMinusUtc;

    QStringList found;
    for (auto row = byInstant.constBegin(); row != byInstant.constEnd(); ++row) {
        if (row->ours == row->listed)
            continue;
        const auto text = [](const std::optional<int> &count) {
            return count ? QString::number(*count) : QStringLiteral("no row");
        };
        found += QStringLiteral("%1: %2 here, %3 in the list")
                     .arg(TimeUtc(row.key()).toString(), text(row->ours), text(row->listed));
    }
    return found;
}

QString dateText(const TimeUtc &time)
{
    return time.toString().left(10);
}

} // namespace KelStd::cli
