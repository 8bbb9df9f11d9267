// Angles as people type them. The first character of an input says of which kind: L a longitude, B
// a latitude, A another angle; a small letter reads a decimal comma.

#include "FuzzTarget.h"

#include <KelStd/text/TypedAngle.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

using namespace KelStd;
using KelStd::fuzz::require;

AngleSense senseOf(QChar kind)
{
    if (kind == QLatin1Char('l'))
        return AngleSense::Longitude;
    return kind == QLatin1Char('b') ? AngleSense::Latitude : AngleSense::Plain;
}

bool isSameBits(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

/// The angle; a failure, with its text, exactly when there is none.
std::optional<double> read(const QString &text, AngleSense sense, DecimalMark mark)
{
    TypedValueFailure failure;
    const auto angle = readTypedAngle(text, sense, mark, failure);
    require(angle.has_value() == !failure, "there is an angle or a failure");
    require(!failure == failure.text.isEmpty(), "a failure has a text");
    require(!angle || std::isfinite(*angle), "an angle is finite");
    return angle;
}

void requireSame(const std::optional<double> &one, const std::optional<double> &other,
                 const char *claim)
{
    require(one.has_value() == other.has_value() && (!one || isSameBits(*one, *other)), claim);
}

/// Whether a sign or a letter may be added. A number that begins or ends with its point is read,
/// but only by itself.
bool isFreeOfSigns(const QString &text)
{
    const auto isMark = [](QChar c) { return c == QLatin1Char('.') || c == QLatin1Char(','); };
    return !isMark(text.at(0)) && !isMark(text.at(text.size() - 1))
           && std::none_of(text.cbegin(), text.cend(), [](QChar c) {
                  return c == QLatin1Char('-') || c == QLatin1Char('+')
                         || QStringLiteral("NSEWnsew").contains(c);
              });
}

void readAngle(const QString &text, AngleSense sense, DecimalMark mark)
{
    const auto angle = read(text, sense, mark);
    requireSame(angle, read(QLatin1Char(' ') + text + QLatin1Char(' '), sense, mark),
                "blanks around an angle change nothing");
    if (text.count(QLatin1Char(',')) == 1 && !text.contains(QLatin1Char('.'))) {
        QString withPoint = text;
        requireSame(
            read(text, sense, DecimalMark::Comma),
            read(withPoint.replace(QLatin1Char(','), QLatin1Char('.')), sense, DecimalMark::Point),
            "a decimal comma is a decimal point");
    }
    hasAngleSigns(text);
    if (!angle)
        return;
    const QString printed = QString::number(*angle, 'f', QLocale::FloatingPointShortest);
    require(read(printed, sense, DecimalMark::Point) == angle, "a printed angle reads back");
    const QString bare = text.trimmed();
    if (!isFreeOfSigns(bare))
        return;
    requireSame(-*angle, read(QLatin1Char('-') + bare, sense, mark),
                "a minus counts for the whole angle");
    if (sense != AngleSense::Plain) {
        const QChar letter = QLatin1Char(sense == AngleSense::Longitude ? 'W' : 'S');
        requireSame(-*angle, read(bare + letter, sense, mark), "W and S are a minus");
        requireSame(-*angle, read(letter + bare, sense, mark), "W and S may stand in front");
        const QChar other = QLatin1Char(sense == AngleSense::Longitude ? 'N' : 'E');
        require(!read(bare + other, sense, mark), "a letter of the other coordinate is refused");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    if (text.isEmpty())
        return 0;
    const QChar kind = text.at(0);
    readAngle(text.mid(1), senseOf(kind.toLower()),
              kind.isLower() ? DecimalMark::Comma : DecimalMark::Point);
    return 0;
}
