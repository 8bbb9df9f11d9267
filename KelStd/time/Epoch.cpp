#include <KelStd/time/Epoch.h>

#include <KelStd/time/Calendar.h>

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <iterator>

namespace KelStd {

namespace {

constexpr TimeScaleRow timeScaleRows[] = {
    {TimeScale::Utc, "utc", "UTC", "2024-02-29 12:34:56, 2024-02-29T12:34:56.789Z"},
    {TimeScale::GpsT, "gpst", "GPS time", "2024-02-29 12:35:14, 2024-02-29T12:35:14.789"},
    {TimeScale::GpsW, "gpsw", "GPS week", "2303:390914, \"2303 390914.2\", \"2303week 390914sec\""},
    {TimeScale::Local, "local", "local time", "2024-02-29 13:34:56, 2024-02-29T13:34:56.789"},
};

constexpr int secondsPerWeek = 604800;
constexpr int lastWeek = 65535;

// Calendar times have four digits of years, in every scale that is shown.
constexpr long long lastCount = calendar::daysSince1970(10000, 1, 1) * calendar::msPerDay - 1;

bool isInRange(long long count)
{
    return count >= calendar::firstCount && count <= lastCount;
}

/// The milliseconds of the digits behind a decimal point: ".5" is half a second.
std::optional<int> readMilliseconds(const QString &digits, EpochFailure &failure)
{
    constexpr int kept = 3;
    const QString beyond = digits.mid(kept);
    if (beyond.count(QLatin1Char('0')) != beyond.size()) {
        failure = {
            EpochMistake::TooFine,
            QStringLiteral("times are kept to the millisecond; its decimals go beyond that")};
        return std::nullopt;
    }
    return digits.left(kept).leftJustified(kept, QLatin1Char('0')).toInt();
}

/// Calendar fields of any scale, as a count of that scale.
std::optional<long long> readCalendarTime(const QString &text, TimeScale scale,
                                          EpochFailure &failure)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A([0-9]{4})-([0-9]{2})-([0-9]{2})[ T]"
                       "([0-9]{2}):([0-9]{2}):([0-9]{2})(?:\\.([0-9]+))?(Z?)\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch() || (scale != TimeScale::Utc && !match.captured(8).isEmpty())) {
        failure = {EpochMistake::WrongForm, QStringLiteral("it is not written as one")};
        return std::nullopt;
    }
    const auto number = [&](int group) { return match.captured(group).toUShort(); };
    const auto byte = [&](int group) { return static_cast<unsigned char>(number(group)); };
    const auto milliseconds = readMilliseconds(match.captured(7), failure);
    if (!milliseconds)
        return std::nullopt;
    const TimeUtc fields(number(1), byte(2), byte(3), byte(4), byte(5), byte(6),
                         static_cast<unsigned short>(*milliseconds));
    if (fields.toString().isEmpty()) {
        // Only the last minute of a day has a second 60.
        const bool isLeapSecond =
            scale == TimeScale::Utc && number(4) == 23 && number(5) == 59 && number(6) == 60
            && !TimeUtc(number(1), byte(2), byte(3), 23, 59, 59, 0).toString().isEmpty();
        failure =
            isLeapSecond
                ? EpochFailure{EpochMistake::LeapSecondInUtc,
                               QStringLiteral("a leap second has no UTC here; give its GPS time")}
                : EpochFailure{EpochMistake::NoSuchTime,
                               QStringLiteral("there is no such date or time of day")};
        return std::nullopt;
    }
    return fields.toValueTime();
}

std::optional<TimeGpsT> readWeek(const QString &text, EpochFailure &failure)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A([0-9]{1,5})(?:[:, ] *([0-9]{1,6})(?:\\.([0-9]+))?"
                       "|week ([0-9]{1,6})sec)\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch()) {
        failure = {EpochMistake::WrongForm, QStringLiteral("it is not written as one")};
        return std::nullopt;
    }
    const int week = match.captured(1).toInt();
    const int seconds = (match.captured(2) + match.captured(4)).toInt();
    if (week > lastWeek || seconds >= secondsPerWeek) {
        failure = {EpochMistake::WeekOutOfRange,
                   QStringLiteral("weeks are 0 to %1, seconds 0 to %2")
                       .arg(lastWeek)
                       .arg(secondsPerWeek - 1)};
        return std::nullopt;
    }
    const auto milliseconds = readMilliseconds(match.captured(3), failure);
    if (!milliseconds)
        return std::nullopt;
    return TimeGpsW(static_cast<unsigned short>(week), static_cast<unsigned int>(seconds)).toGpsT()
           + *milliseconds;
}

TimeGpsT gpsFields(long long gps)
{
    const TimeUtc fields(gps);
    return TimeGpsT(fields.year(), fields.month(), fields.day(), fields.hour(), fields.minute(),
                    fields.second(), fields.millionSecond());
}

Epoch fromGps(const TimeGpsT &gpsT, std::optional<int> offset)
{
    const TimeUtc utc = gpsT.toUtc();
    return {gpsT, gpsT.toGpsW(), utc, offset ? TimeLocal(utc, *offset) : TimeLocal(utc)};
}

int systemOffset()
{
    return TimeLocal::makeCurrent().timeZoneSeconds();
}

/// Reads a value; where it is none, the failure is written.
std::optional<Epoch> readEpoch(const QString &text, TimeScale scale, std::optional<int> offset,
                               EpochFailure &failure)
{
    if (scale == TimeScale::GpsW) {
        const auto week = readWeek(text, failure);
        return week ? std::make_optional(fromGps(*week, offset)) : std::nullopt;
    }
    const auto count = readCalendarTime(text, scale, failure);
    if (!count)
        return std::nullopt;
    const int shown = offset ? *offset : systemOffset();
    const long long instant =
        scale == TimeScale::Local ? *count - shown * calendar::msPerSecond : *count;
    // Wide enough on both sides for the leap seconds between the scales.
    constexpr long long margin = 60 * calendar::msPerSecond;
    if (!isInRange(instant - margin) || !isInRange(instant + margin)
        || !isInRange(instant - margin + shown * calendar::msPerSecond)
        || !isInRange(instant + margin + shown * calendar::msPerSecond)) {
        failure = {EpochMistake::YearOutOfRange,
                   QStringLiteral("in one of the scales it is not between the years 1 and 9999")};
        return std::nullopt;
    }
    return fromGps(scale == TimeScale::GpsT ? gpsFields(instant) : TimeUtc(instant).toGpsT(),
                   offset);
}

} // namespace

QVector<TimeScaleRow> timeScales()
{
    return {std::begin(timeScaleRows), std::end(timeScaleRows)};
}

const TimeScaleRow *findTimeScale(const QString &name)
{
    const auto found =
        std::find_if(std::begin(timeScaleRows), std::end(timeScaleRows),
                     [&name](const TimeScaleRow &row) { return name == QLatin1String(row.name); });
    return found != std::end(timeScaleRows) ? found : nullptr;
}

std::optional<Epoch> Epoch::read(const QString &text, TimeScale scale, std::optional<int> offset,
                                 EpochFailure *failure)
{
    EpochFailure found;
    auto epoch = readEpoch(text, scale, offset, found);
    if (failure != nullptr)
        *failure = found;
    return epoch;
}

Epoch Epoch::current(std::optional<int> offset)
{
    return fromGps(TimeGpsT::makeCurrent(), offset);
}

bool Epoch::isLeapSecond() const
{
    return utc.toGpsT().toString(true) != gpsT.toString(true);
}

} // namespace KelStd
