#include <KelStd/nmea/FieldReader.h>

#include <algorithm>
#include <cmath>

namespace KelStd::nmea {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool areDigits(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

QByteArray bytesOf(std::string_view text)
{
    return {text.data(), static_cast<int>(text.size())};
}

/// Of a few digits.
int numberOf(std::string_view digits)
{
    int number = 0;
    for (const char c : digits)
        number = number * 10 + c - '0';
    return number;
}

/// A plain decimal number, without an exponent. All digits are kept, in the form that JSON has.
std::optional<Decimal> decimalOf(std::string_view text)
{
    const bool isNegative = !text.empty() && text.front() == '-';
    if (isNegative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    const std::size_t point = text.find('.');
    std::string_view whole = text.substr(0, point);
    const std::string_view decimals =
        point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
    if ((whole.empty() && decimals.empty()) || (!whole.empty() && !areDigits(whole))
        || (!decimals.empty() && !areDigits(decimals)))
        return std::nullopt;
    while (whole.size() > 1 && whole.front() == '0')
        whole.remove_prefix(1);
    QByteArray plain = isNegative ? QByteArrayLiteral("-") : QByteArray();
    plain += whole.empty() ? QByteArrayLiteral("0") : bytesOf(whole);
    if (!decimals.empty())
        plain += '.' + bytesOf(decimals);
    const double value = plain.toDouble();
    return Decimal{value, plain};
}

struct ModeRow
{
    char letter;
    int quality; ///< as GGA counts
};

/// From the best to the least.
constexpr ModeRow modeRows[] = {{'R', 4}, {'F', 5}, {'P', 3}, {'D', 2}, {'A', 1},
                                {'E', 6}, {'M', 7}, {'S', 8}, {'N', 0}};

/// What one of the last digit of an angle in degrees and minutes is [deg].
double lastDigitOf(std::string_view field)
{
    constexpr double minute = 1.0 / 60;
    const std::size_t point = field.find('.');
    const std::size_t decimals = point == std::string_view::npos ? 0 : field.size() - point - 1;
    return minute * std::pow(10.0, -static_cast<double>(decimals));
}

} // namespace

std::nullopt_t FieldReader::fail(std::size_t place, const char *what)
{
    if (m_mistake.isEmpty()) {
        m_mistake = QStringLiteral("field %1 is no %2").arg(place).arg(QString::fromLatin1(what));
    }
    return std::nullopt;
}

std::optional<TimeOfDay> FieldReader::time(std::size_t place)
{
    if (text(place).empty())
        return std::nullopt;
    auto time = TimeOfDay::read(text(place));
    if (!time)
        fail(place, "time of day");
    return time;
}

std::optional<int> FieldReader::digit(std::size_t place)
{
    const std::string_view field = text(place);
    if (field.empty())
        return std::nullopt;
    return field.size() == 1 && isDigit(field[0]) ? std::optional(field[0] - '0')
                                                  : fail(place, "digit");
}

std::optional<int> FieldReader::count(std::size_t place)
{
    constexpr std::size_t maxDigits = 3;
    const std::string_view field = text(place);
    if (field.empty())
        return std::nullopt;
    return field.size() <= maxDigits && areDigits(field) ? std::optional(numberOf(field))
                                                         : fail(place, "number of satellites");
}

std::optional<Decimal> FieldReader::number(std::size_t place)
{
    if (text(place).empty())
        return std::nullopt;
    auto number = decimalOf(text(place));
    if (!number)
        fail(place, "number");
    return number;
}

std::optional<Decimal> FieldReader::notNegative(std::size_t place)
{
    auto found = number(place);
    if (found && found->text.startsWith('-'))
        return fail(place, "number from 0 up");
    return found;
}

std::optional<Decimal> FieldReader::metres(std::size_t place, std::size_t unitPlace)
{
    auto found = number(place);
    if (found && text(unitPlace) != "M")
        return fail(unitPlace, "M for metres");
    return found;
}

char FieldReader::letter(std::size_t place, std::string_view letters)
{
    const std::string_view field = text(place);
    if (field.empty())
        return 0;
    if (field.size() == 1 && letters.find(field[0]) != std::string_view::npos)
        return field[0];
    fail(place, "letter that stands there");
    return 0;
}

std::optional<int> FieldReader::modes(std::size_t place)
{
    const std::string_view field = text(place);
    if (field.empty())
        return std::nullopt;
    // A position is as good as the least of the systems that it is made of.
    const ModeRow *least = nullptr;
    for (const char c : field) {
        const auto *row = std::find_if(std::begin(modeRows), std::end(modeRows),
                                       [c](const ModeRow &known) { return known.letter == c; });
        if (row == std::end(modeRows))
            return fail(place, "row of modes");
        if (row->quality != 0 && (least == nullptr || row > least))
            least = row;
    }
    return least != nullptr ? least->quality : 0;
}

std::optional<double> FieldReader::angle(std::size_t place, int maxDegrees,
                                         std::string_view letters)
{
    constexpr double minutesPerDegree = 60;
    constexpr std::size_t minuteDigits = 2;
    constexpr std::size_t maxDegreeDigits = 3;
    const std::string_view field = text(place);
    const std::size_t whole = std::min(field.find('.'), field.size());
    const std::size_t degreeDigits = whole > minuteDigits ? whole - minuteDigits : 0;
    const std::string_view degrees = field.substr(0, degreeDigits);
    const auto minutes = decimalOf(field.substr(degreeDigits));
    if (degreeDigits > maxDegreeDigits || (!degrees.empty() && !areDigits(degrees)) || whole == 0
        || !isDigit(field[degreeDigits]) || !minutes || minutes->value >= minutesPerDegree)
        return fail(place, letters[0] == 'N' ? "latitude" : "longitude");
    const double angle = numberOf(degrees) + minutes->value / minutesPerDegree;
    if (angle > maxDegrees)
        return fail(place, letters[0] == 'N' ? "latitude" : "longitude");
    const char side = letter(place + 1, letters);
    if (side == 0)
        return fail(place + 1, letters[0] == 'N' ? "N or S" : "E or W");
    return side == letters[0] ? angle : -angle;
}

void FieldReader::position(std::size_t place, Message &message)
{
    const std::size_t other = place + 2;
    if (text(place).empty() && text(other).empty())
        return;
    message.latitude = angle(place, 90, "NS");
    message.longitude = angle(other, 180, "EW");
    message.latitudeDigit = lastDigitOf(text(place));
    message.longitudeDigit = lastDigitOf(text(other));
}

std::optional<ReceivedDate> FieldReader::checked(std::size_t place, const ReceivedDate &date)
{
    // The years of two digits that have a 29th of February are those of this century.
    constexpr int thisCentury = 2000;
    const int year = date.hasFullYear ? date.year : thisCentury + date.year;
    return QDate::isValid(year, date.month, date.day) ? std::optional(date) : fail(place, "date");
}

std::optional<ReceivedDate> FieldReader::shortDate(std::size_t place)
{
    const std::string_view field = text(place);
    if (field.empty())
        return std::nullopt;
    if (field.size() != 6 || !areDigits(field)) // ddmmyy
        return fail(place, "date");
    return checked(place, {numberOf(field.substr(4)), numberOf(field.substr(2, 2)),
                           numberOf(field.substr(0, 2)), false});
}

std::optional<ReceivedDate> FieldReader::fullDate(std::size_t place)
{
    const std::string_view day = text(place);
    const std::string_view month = text(place + 1);
    const std::string_view year = text(place + 2);
    if (day.empty() && month.empty() && year.empty())
        return std::nullopt;
    const auto isShort = [](std::string_view field) {
        return areDigits(field) && field.size() <= 2;
    };
    if (!isShort(day) || !isShort(month) || !areDigits(year) || year.size() != 4)
        return fail(place, "date");
    return checked(place, {numberOf(year), numberOf(month), numberOf(day), true});
}

} // namespace KelStd::nmea
