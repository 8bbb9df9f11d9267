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

/// A whole number of digits alone, at most `max`.
std::optional<long long> readNumber(const QByteArray &word, long long max)
{
    long long number = 0;
    for (const char c : word) {
        if (c < '0' || c > '9')
            return std::nullopt;
        number = number * 10 + (c - '0');
        if (number > max)
            return std::nullopt;
    }
    return word.isEmpty() ? std::nullopt : std::optional(number);
}

/// A time of the list. Those beyond the year 9999 are none.
std::optional<TimeUtc> readTime(const QByteArray &word)
{
    constexpr long long last = 255611289599; // 9999-12-31 23:59:59
    const auto seconds = readNumber(word, last);
    if (!seconds)
        return std::nullopt;
    return TimeUtc((*seconds - secondsFrom1900To1970) * msPerSecond);
}

/// A row: a time, a count, and behind them nothing but a note.
std::optional<LeapSecondRow> readRow(const QByteArray &line)
{
    constexpr long long largestCount = 1000; // [s], some centuries away
    const QList<QByteArray> words = line.split(' ');
    const auto from = readTime(words.value(0));
    const auto taiMinusUtc = readNumber(words.value(1), largestCount);
    if (!from || !taiMinusUtc || (words.size() > 2 && !words.at(2).startsWith('#')))
        return std::nullopt;
    return LeapSecondRow{*from, static_cast<int>(*taiMinusUtc) - taiMinusGps};
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
        if (line.startsWith("#@")) {
            list.expiry = readTime(line.mid(2).trimmed());
            if (!list.expiry) {
                reason = QStringLiteral("line %1 does not say until when it is valid").arg(number);
                return std::nullopt;
            }
        }
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const auto row = readRow(line);
        if (!row || (!list.rows.isEmpty() && !(list.rows.last().from < row->from))) {
            reason = QStringLiteral("line %1 is no leap second").arg(number);
            return std::nullopt;
        }
        list.rows += *row;
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
