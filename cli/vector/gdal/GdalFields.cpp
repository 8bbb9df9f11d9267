#include <cli/vector/gdal/GdalFields.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace KelStd::cli::vector {

namespace {

struct MadeUpField
{
    const char *driver;
    const char *field;
};

constexpr MadeUpField madeUpFields[] = {
    {"LIBKML", "tessellate"}, {"LIBKML", "extrude"},    {"LIBKML", "visibility"},
    {"LIBKML", "drawOrder"},  {"DXF", "PaperSpace"},    {"DXF", "SubClasses"},
    {"GPX", "ele"},           {"DXF", "EntityHandle"},  {"DXF", "Linetype"},
    {"DXF", "RawCodeValues"}, {"LIBKML", altitudeMode},
};

bool isTime(OGRFieldType type)
{
    return type == OFTDate || type == OFTTime || type == OFTDateTime;
}

constexpr int secondUnits = 100000;    ///< parts of a second that a time can tell
constexpr std::size_t minFraction = 4; ///< a point and milliseconds

/// As ISO 8601 has it: "2024-05-01T10:20:30.5Z". The zone is written where the field has one.
std::string timeText(OGRFeatureH feature, int field, OGRFieldType type)
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    float second = 0.0F;
    int zone = 0;
    if (OGR_F_GetFieldAsDateTimeEx(feature, field, &year, &month, &day, &hour, &minute, &second,
                                   &zone)
        == 0)
        return OGR_F_GetFieldAsString(feature, field);
    std::array<char, 64> text = {};
    std::string result;
    if (type != OFTTime) {
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, day);
        result = text.data();
    }
    if (type == OFTDate)
        return result;
    // As many digits as the number has; a second just before the minute's end stays in it.
    constexpr int minuteUnits = 60 * secondUnits;
    int units = static_cast<int>(std::lround(static_cast<double>(second) * secondUnits));
    const bool mayBeLeapSecond = hour == 23 && minute == 59 && second >= 60.0F;
    if (units >= minuteUnits && !mayBeLeapSecond)
        units = minuteUnits - 1;
    std::snprintf(text.data(), text.size(), "%s%02d:%02d:%02d", result.empty() ? "" : "T", hour,
                  minute, units / secondUnits);
    result += text.data();
    if (units % secondUnits != 0) {
        std::snprintf(text.data(), text.size(), ".%05d", units % secondUnits);
        std::string fraction = text.data();
        fraction.erase(fraction.find_last_not_of('0') + 1);
        fraction.append(fraction.size() < minFraction ? minFraction - fraction.size() : 0, '0');
        result += fraction;
    }
    constexpr int local = 1; // below it the zone is not known either
    constexpr int utc = 100; // others count quarters of an hour from it
    if (zone == utc) {
        result += 'Z';
    } else if (zone > local) {
        const int minutes = std::abs(zone - utc) * 15;
        std::snprintf(text.data(), text.size(), "%c%02d:%02d", zone < utc ? '-' : '+', minutes / 60,
                      minutes % 60);
        result += text.data();
    }
    return result;
}

} // namespace

bool isMadeUp(const std::string &driver, const std::string &field)
{
    for (const MadeUpField &row : madeUpFields) {
        if (driver == row.driver && field == row.field)
            return true;
    }
    return false;
}

bool hasUnusedFields(const std::string &driver)
{
    return driver == "LIBKML" || driver == "GPX" || driver == "DXF";
}

FieldType typeOf(OGRFieldDefnH field)
{
    switch (OGR_Fld_GetType(field)) {
    case OFTInteger:
        return OGR_Fld_GetSubType(field) == OFSTBoolean ? FieldType::Boolean : FieldType::Integer;
    case OFTInteger64: return FieldType::Integer;
    case OFTReal: return FieldType::Real;
    case OFTDate: return FieldType::Date;
    default: return FieldType::Text;
    }
}

bool guessesTypes(const std::string &driver)
{
    return driver == "GPX";
}

bool isPlainNumber(const std::string &text)
{
    constexpr std::size_t maxSize = 18; // more digits than that, no number of the machine has
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const std::size_t begin = !text.empty() && text[0] == '-' ? 1 : 0;
    const std::size_t point = std::min(text.find('.'), text.size());
    const bool hasZeros = point > begin + 1 && text[begin] == '0';
    const bool endsInPoint = point + 1 == text.size();
    for (std::size_t i = begin; i < text.size(); ++i) {
        if (i != point && !isDigit(text[i]))
            return false;
    }
    return point > begin && text.size() <= maxSize && !hasZeros && !endsInPoint;
}

bool hasDatesAsTexts(const std::string &driver)
{
    return driver == "GeoJSON";
}

bool isGuessedTime(const std::string &driver, OGRFieldDefnH field)
{
    return driver == "GeoJSONSeq" && isTime(OGR_Fld_GetType(field));
}

bool isDate(const std::string &text)
{
    static const std::string form = "dddd-dd-dd";
    static constexpr std::array<int, 12> days = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (text.size() != form.size())
        return false;
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == 'd' ? !isDigit : text[i] != form[i])
            return false;
    }
    const int year = std::atoi(text.c_str());
    const int month = std::atoi(text.c_str() + 5);
    const int day = std::atoi(text.c_str() + 8);
    const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month >= 1 && month <= 12 && day >= 1 && day <= days[static_cast<std::size_t>(month - 1)]
           && (month != 2 || day < 29 || isLeap);
}

Value valueOf(OGRFeatureH feature, int field)
{
    if (OGR_F_IsFieldSetAndNotNull(feature, field) == 0)
        return {};
    const OGRFieldDefnH definition = OGR_F_GetFieldDefnRef(feature, field);
    const OGRFieldType type = OGR_Fld_GetType(definition);
    if (isTime(type))
        return timeText(feature, field, type);
    switch (typeOf(definition)) {
    case FieldType::Integer:
    case FieldType::Boolean:
        return static_cast<long long>(OGR_F_GetFieldAsInteger64(feature, field));
    case FieldType::Real: return OGR_F_GetFieldAsDouble(feature, field);
    case FieldType::Text:
    case FieldType::Date: break;
    }
    return std::string(OGR_F_GetFieldAsString(feature, field));
}

} // namespace KelStd::cli::vector
