#include <KelStd/time/LeapSecondList.h>

#include <KelStd/time/Calendar.h>

#include <QtCore/QMap>

namespace KelStd {

namespace {

using Mistake = LeapSecondListMistake;

constexpr long long secondsFrom1900To1970 = 2208988800; // the list's times begin in 1900
constexpr int taiMinusGps = 19;                         // [s], always

/// A whole number, of digits alone, at most `max`.
std::optional<long long> readCount(const QByteArray &word, long long max)
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

/// A time of the list, at the latest in the year 9999.
std::optional<TimeUtc> readTime(const QByteArray &word)
{
    constexpr long long last = 255611289599; // 9999-12-31 23:59:59
    const auto seconds = readCount(word, last);
    if (!seconds)
        return std::nullopt;
    return TimeUtc((*seconds - secondsFrom1900To1970) * calendar::msPerSecond);
}

/// A row: a time, a count, and behind them nothing but a note.
std::optional<LeapSecondRow> readRow(const QByteArray &line)
{
    constexpr long long maxCount = 1000; // [s], some centuries away
    const QList<QByteArray> words = line.split(' ');
    const auto from = readTime(words.value(0));
    const auto taiMinusUtc = readCount(words.value(1), maxCount);
    if (!from || !taiMinusUtc || (words.size() > 2 && !words.at(2).startsWith('#')))
        return std::nullopt;
    return LeapSecondRow{*from, static_cast<int>(*taiMinusUtc) - taiMinusGps};
}

/// Adds what a line says to the list.
LeapSecondListFailure takeLine(const QByteArray &line, int number, LeapSecondList &list)
{
    if (line.startsWith("#@")) {
        list.expiry = readTime(line.mid(2).trimmed());
        if (!list.expiry) {
            return {Mistake::BadExpiry,
                    QStringLiteral("line %1 does not say until when it is valid").arg(number),
                    number};
        }
    }
    if (line.isEmpty() || line.startsWith('#'))
        return {};
    const auto row = readRow(line);
    if (!row)
        return {Mistake::BadRow, QStringLiteral("line %1 is no leap second").arg(number), number};
    if (!list.rows.isEmpty() && !(list.rows.last().from < row->from)) {
        return {
            Mistake::NotInOrder,
            QStringLiteral("line %1 is no leap second later than the one before it").arg(number),
            number};
    }
    list.rows += *row;
    return {};
}

} // namespace

std::optional<LeapSecondList> LeapSecondList::parse(const QByteArray &bytes,
                                                    LeapSecondListFailure *failure)
{
    LeapSecondListFailure unused;
    LeapSecondListFailure &found = failure != nullptr ? *failure : unused;
    found = {};
    LeapSecondList list;
    int line = 0;
    for (const QByteArray &raw : bytes.split('\n')) {
        ++line;
        found = takeLine(raw.simplified(), line, list);
        if (found)
            return std::nullopt;
    }
    if (list.rows.isEmpty()) {
        found = {Mistake::NoLeapSeconds, QStringLiteral("it has no leap seconds")};
        return std::nullopt;
    }
    return list;
}

QList<LeapSecondDifference> leapSecondDifferences(const QList<LeapSecondRow> &first,
                                                  const QList<LeapSecondRow> &other)
{
    QMap<long long, LeapSecondDifference> byInstant;
    for (const LeapSecondRow &row : first)
        byInstant[row.from.toValueTime()].firstCount = row.gpsMinusUtc;
    for (const LeapSecondRow &row : other)
        byInstant[row.from.toValueTime()].otherCount = row.gpsMinusUtc;

    QList<LeapSecondDifference> differences;
    for (auto row = byInstant.begin(); row != byInstant.end(); ++row) {
        if (row->firstCount == row->otherCount)
            continue;
        row->from = TimeUtc(row.key());
        differences += *row;
    }
    return differences;
}

} // namespace KelStd
