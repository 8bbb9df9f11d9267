#include <KelStd/time/TimeSpan.h>

#include <KelStd/time/Calendar.h>

#include <QtCore/QDataStream>
#include <QtCore/QObject>

namespace KelStd {

namespace {

constexpr qint32 streamVersion = 1;

using calendar::msPerDay;
using calendar::msPerHour;
using calendar::msPerMinute;
using calendar::msPerSecond;

// The unit of the milliseconds is a word of the translators' catalogues, but is never shown.
[[maybe_unused]] constexpr const char *wordNeverShown = QT_TRANSLATE_NOOP("QObject", "mSec");

/// Of every 64-bit number, the lowest included.
quint64 absoluteValue(qint64 number)
{
    const auto bits = static_cast<quint64>(number);
    return number < 0 ? 0 - bits : bits;
}

/// Moves the whole units out of `rest`; without a place for them, they stay.
void takeUnits(quint64 &rest, qint64 unit, unsigned long long *units)
{
    if (units == nullptr)
        return;
    *units = rest / static_cast<quint64>(unit);
    rest %= static_cast<quint64>(unit);
}

QString counted(unsigned long long number, const QString &word)
{
    return QStringLiteral("%1 %2").arg(QString::number(number), word) + QLatin1Char(' ');
}

QString padded(unsigned long long number, int digits)
{
    return QString::number(number).rightJustified(digits, QLatin1Char('0'));
}

/// The product as 32 bits hold it.
qint32 product(qint32 a, qint32 b)
{
    return static_cast<qint32>(static_cast<quint32>(a) * static_cast<quint32>(b));
}

} // namespace

TimeSpan::TimeSpan() = default;

TimeSpan::TimeSpan(long long milliseconds) : m_timeSpan(milliseconds) {}

void TimeSpan::clear()
{
    m_timeSpan = 0;
}

long long TimeSpan::toDays() const
{
    return m_timeSpan / msPerDay;
}

long long TimeSpan::toHours() const
{
    return m_timeSpan / msPerHour;
}

long long TimeSpan::toMinutes() const
{
    return m_timeSpan / msPerMinute;
}

long long TimeSpan::toSeconds() const
{
    return m_timeSpan / msPerSecond;
}

void TimeSpan::time_span(bool *positive, unsigned long long *days, unsigned long long *hours,
                         unsigned long long *minutes, unsigned long long *seconds,
                         unsigned long long *milliseconds) const
{
    if (positive != nullptr)
        *positive = m_timeSpan >= 0;
    quint64 rest = absoluteValue(m_timeSpan);
    takeUnits(rest, msPerDay, days);
    takeUnits(rest, msPerHour, hours);
    takeUnits(rest, msPerMinute, minutes);
    takeUnits(rest, msPerSecond, seconds);
    takeUnits(rest, 1, milliseconds);
}

QString TimeSpan::toString(bool withMilliseconds) const
{
    bool positive = true;
    unsigned long long days = 0;
    unsigned long long hours = 0;
    unsigned long long minutes = 0;
    unsigned long long seconds = 0;
    unsigned long long milliseconds = 0;
    time_span(&positive, &days, &hours, &minutes, &seconds, &milliseconds);

    QString text = positive ? QString() : QStringLiteral("-");
    if (days != 0)
        text += counted(days, QObject::tr("day"));
    if (days != 0 || hours != 0)
        text += counted(hours, QObject::tr("hour"));
    if (days != 0 || hours != 0 || minutes != 0)
        text += counted(minutes, QObject::tr("minute"));
    text += counted(seconds, QObject::tr("sec"));
    if (withMilliseconds)
        text += QLatin1Char('.') + QString::number(milliseconds);
    return text;
}

QString TimeSpan::toTimeSpanString(long long milliseconds)
{
    unsigned long long hours = 0;
    unsigned long long minutes = 0;
    unsigned long long seconds = 0;
    unsigned long long rest = 0;
    TimeSpan(milliseconds).time_span(nullptr, nullptr, &hours, &minutes, &seconds, &rest);
    return padded(hours, 2) + QLatin1Char(':') + padded(minutes, 2) + QLatin1Char(':')
           + padded(seconds, 2) + QLatin1Char('.') + padded(rest, 3);
}

long long TimeSpan::fromTimeSpanString(const QString &text)
{
    const auto first = text.indexOf(QLatin1Char(':'));
    const auto second = first < 0 ? -1 : text.indexOf(QLatin1Char(':'), first + 1);
    const auto point = second < 0 ? -1 : text.indexOf(QLatin1Char('.'), second + 1);
    if (point < 0)
        return 0;
    const qint32 hours = text.mid(0, first).toInt();
    const qint32 minutes = text.mid(first + 1, second - first - 1).toInt();
    const qint32 seconds = text.mid(second + 1, point - second - 1).toInt();
    const qint32 milliseconds = text.mid(point + 1).toInt();
    const qint64 wholeSeconds =
        static_cast<qint64>(product(minutes, 60)) + product(hours, 3600) + seconds;
    return wholeSeconds * msPerSecond + milliseconds;
}

void TimeSpan::save(QDataStream &stream) const
{
    stream << streamVersion << m_timeSpan;
}

bool TimeSpan::load(QDataStream &stream)
{
    clear();
    qint32 version = 0;
    stream >> version;
    if (version != streamVersion)
        return false;
    stream >> m_timeSpan;
    return true;
}

} // namespace KelStd
