#include <cli/Epoch.h>

#include <QtCore/QRegularExpression>

namespace KelStd::cli {

namespace {

constexpr TimeScaleRow timeScales[] = {
    {TimeScale::Utc, "utc", "UTC", "2024-02-29 12:34:56, 2024-02-29T12:34:56.789Z"},
    {TimeScale::GpsT, "gpst", "GPS time", "2024-02-29 12:35:14, 2024-02-29T12:35:14.789"},
    {TimeScale::GpsW, "gpsw", "GPS week", "2303:390914, \"2303 390914\", \"2303week 390914sec\""},
    {TimeScale::Local, "local", "local time", "2024-02-29 13:34:56, 2024-02-29T13:34:56.789"},
};

constexpr long long msPerSecond = 1000;
constexpr int secondsPerWeek = 604800;
constexpr int lastWeek = 65535;

// Calendar times have four digits of years, in every scale that is shown.
constexpr long long firstCount = -62135596800000; // 0001-01-01 00:00:00
constexpr long long lastCount = 253402300799999;  // 9999-12-31 23:59:59.999

bool isInRange(long long count)
{
    return count >= firstCount && count <= lastCount;
}

/// Calendar fields of any scale, as a count of that scale.
std::optional<long long> readCalendarTime(const QString &text, TimeScale scale, QString &reason)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A([0-9]{4})-([0-9]{2})-([0-9]{2})[ T]"
                       "([0-9]{2}):([0-9]{2}):([0-9]{2})(?:\\.([0-9]{1,3}))?(Z?)\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch() || (scale != TimeScale::Utc && !match.captured(8).isEmpty())) {
        reason = QStringLiteral("it is not written as one");
        return std::nullopt;
    }
    const auto number = [&](int group) { return match.captured(group).toUShort(); };
    const auto byte = [&](int group) { return static_cast<unsigned char>(number(group)); };
    // ".5" is half a second.
    const auto milliseconds = match.captured(7).leftJustified(3, QLatin1Char('0')).toUShort();
    const TimeUtc fields(number(1), byte(2), byte(3), byte(4), byte(5), byte(6), milliseconds);
    if (fields.toString().isEmpty()) {
        const bool isLeapSecond = scale == TimeScale::Utc && number(6) == 60;
        reason = isLeapSecond ? QStringLiteral("a leap second has no UTC here; give its GPS time")
                              : QStringLiteral("there is no such date or time of day");
        return std::nullopt;
    }
    return fields.toValueTime();
}

std::optional<TimeGpsW> readWeek(const QString &text, QString &reason)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\A([0-9]{1,5})(?:[:, ] *([0-9]{1,6})|week ([0-9]{1,6})sec)\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch()) {
        reason = QStringLiteral("it is not written as one");
        return std::nullopt;
    }
    const int week = match.captured(1).toInt();
    const int seconds = (match.captured(2) + match.captured(3)).toInt();
    if (week > lastWeek || seconds >= secondsPerWeek) {
        reason = QStringLiteral("weeks are 0 to %1, seconds 0 to %2")
                     .arg(lastWeek)
                     .arg(secondsPerWeek - 1);
        return std::nullopt;
    }
    return TimeGpsW(static_cast<unsigned short>(week), static_cast<unsigned int>(seconds));
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

} // namespace

const TimeScaleRow *findTimeScale(const QString &option)
{
    for (const TimeScaleRow &row : timeScales) {
        if (option == QLatin1String(row.option))
            return &row;
    }
    return nullptr;
}

QString timeScaleNames(const QString &separator)
{
    QStringList names;
    for (const TimeScaleRow &row : timeScales)
        names += QString::fromLatin1(row.option);
    return names.join(separator);
}

QString timeScaleForms()
{
    QString text;
    for (const TimeScaleRow &row : timeScales) {
        text += QStringLiteral("  %1  %2\n")
                    .arg(QString::fromLatin1(row.option), -5)
                    .arg(QString::fromLatin1(row.forms));
    }
    return text;
}

std::optional<Epoch> Epoch::read(const QString &text, TimeScale scale, std::optional<int> offset,
                                 QString &reason)
{
    if (scale == TimeScale::GpsW) {
        const auto week = readWeek(text, reason);
        return week ? std::make_optional(fromGps(week->toGpsT(), offset)) : std::nullopt;
    }
    const auto count = readCalendarTime(text, scale, reason);
    if (!count)
        return std::nullopt;
    const int shown = offset ? *offset : systemOffset();
    const long long instant = scale == TimeScale::Local ? *count - shown * msPerSecond : *count;
    // Wide enough on both sides for the leap seconds between the scales.
    constexpr long long margin = 60 * msPerSecond;
    if (!isInRange(instant - margin) || !isInRange(instant + margin)
        || !isInRange(instant - margin + shown * msPerSecond)
        || !isInRange(instant + margin + shown * msPerSecond)) {
        reason = QStringLiteral("in one of the scales it is not between the years 1 and 9999");
        return std::nullopt;
    }
    return fromGps(scale == TimeScale::GpsT ? gpsFields(instant) : TimeUtc(instant).toGpsT(),
                   offset);
}

Epoch Epoch::current(std::optional<int> offset)
{
    return fromGps(TimeGpsT::makeCurrent(), offset);
}

bool Epoch::isLeapSecond() const
{
    return utc.toGpsT().toString(true) != gpsT.toString(true);
}

} // namespace KelStd::cli
