#include <cli/values/DisplaySettings.h>

#include <KelStd/positions/PrintOptions.h>
#include <KelStd/text/UnitWords.h>

#include <algorithm>
#include <vector>

namespace KelStd::cli {

namespace {

using Config = stShowConfig;
using Kind = SettingKind;

struct WordRow
{
    Kind kind;
    const char *word;
    int value;
};

constexpr WordRow fixedWords[] = {
    {Kind::Order, "north-east", Format_NorthEastHeight},
    {Kind::Order, "east-north", Format_EastNorthHeight},
    {Kind::Scale, "utc", Format_UTC},
    {Kind::Scale, "local", Format_Local},
    {Kind::Scale, "gpst", Format_GPST},
    {Kind::Scale, "gpsw", Format_GPSW},
    {Kind::Pressure, "bar", Unit_Bar},
    {Kind::Pressure, "Pa", Unit_Pascal},
    {Kind::Pressure, "mbar", Unit_MilliBar},
    {Kind::Pressure, "hPa", Unit_MilliBar}, // 100 Pa, both
    {Kind::Pressure, "mmHg", Unit_MmHg},
    {Kind::Pressure, "inHg", Unit_InHg},
    {Kind::Temperature, "Celsius", Unit_Celsius},
    {Kind::Temperature, "Fahrenheit", Unit_Fahrenheit},
    {Kind::Temperature, "Kelvin", Unit_Kelvin},
    {Kind::Flag, "no", 0},
    {Kind::Flag, "yes", 1},
};

struct Word
{
    QString word;
    int value;
};

std::vector<Word> wordsOf(Kind kind)
{
    std::vector<Word> words;
    if (kind == Kind::Style) {
        for (const AngleStyle &style : angleStyles())
            words.push_back({QString::fromLatin1(style.name), style.format});
    } else if (kind == Kind::Length) {
        for (const LengthUnit &unit : lengthUnits())
            words.push_back({QString::fromLatin1(unit.symbol), unit.unit});
    }
    for (const WordRow &row : fixedWords) {
        if (row.kind == kind)
            words.push_back({QString::fromLatin1(row.word), row.value});
    }
    return words;
}

DisplaySetting style(const char *name, const char *meaning, Kind kind, EFormat Config::*member)
{
    return {name, meaning, kind, member, nullptr, nullptr, nullptr};
}

DisplaySetting unit(const char *name, const char *meaning, Kind kind, EUnit Config::*member)
{
    return {name, meaning, kind, nullptr, member, nullptr, nullptr};
}

DisplaySetting decimals(const char *name, unsigned char Config::*member)
{
    return {name, "decimals", Kind::Decimals, nullptr, nullptr, member, nullptr};
}

DisplaySetting zeros(const char *name, bool Config::*member)
{
    return {name, "whether zeros at the end stay", Kind::Flag, nullptr, nullptr, nullptr, member};
}

int valueOf(const DisplaySetting &setting, const Config &config)
{
    if (setting.format != nullptr)
        return config.*setting.format;
    if (setting.unit != nullptr)
        return config.*setting.unit;
    return setting.decimals != nullptr ? config.*setting.decimals
                                       : static_cast<int>(config.*setting.flag);
}

void setValue(const DisplaySetting &setting, int value, Config &config)
{
    if (setting.format != nullptr)
        config.*setting.format = static_cast<EFormat>(value);
    else if (setting.unit != nullptr)
        config.*setting.unit = static_cast<EUnit>(value);
    else if (setting.decimals != nullptr)
        config.*setting.decimals = static_cast<unsigned char>(value);
    else
        config.*setting.flag = value != 0;
}

} // namespace

const QVector<DisplaySetting> &displaySettings()
{
    static const QVector<DisplaySetting> rows = {
        style("latlong-style", "longitudes and latitudes", Kind::Style, &Config::latLongFormat),
        decimals("latlong-decimals", &Config::latLongPrecision),
        zeros("latlong-zeros", &Config::latLongKeepZero),
        unit("ellipsoidal-height-unit", "heights above an ellipsoid", Kind::Length,
             &Config::earthHeightUnit),
        decimals("ellipsoidal-height-decimals", &Config::earthHeightPrecision),
        zeros("ellipsoidal-height-zeros", &Config::earthHeightKeepZero),
        unit("plane-unit", "northing and easting", Kind::Length, &Config::xyUnit),
        decimals("plane-decimals", &Config::xyPrecision),
        zeros("plane-zeros", &Config::xyKeepZero),
        unit("local-height-unit", "local heights", Kind::Length, &Config::elevationHeightUnit),
        decimals("local-height-decimals", &Config::elevationHeightPrecision),
        zeros("local-height-zeros", &Config::elevationHeightKeepZero),
        unit("distance-unit", "distances, and cartesian X, Y, Z", Kind::Length,
             &Config::distanceUnit),
        decimals("distance-decimals", &Config::distancePrecision),
        zeros("distance-zeros", &Config::distanceKeepZero),
        unit("height-unit", "heights of antennas and the like", Kind::Length, &Config::heightUnit),
        decimals("height-decimals", &Config::heightPrecision),
        zeros("height-zeros", &Config::heightKeepZero),
        style("angle-style", "other angles", Kind::Style, &Config::angleFormat),
        decimals("angle-decimals", &Config::anglePrecision),
        zeros("angle-zeros", &Config::angleKeepZero),
        decimals("number-decimals", &Config::doublePrecision),
        zeros("number-zeros", &Config::doubleKeepZero),
        unit("pressure-unit", "pressures", Kind::Pressure, &Config::pressureUnit),
        decimals("pressure-decimals", &Config::pressurePrecision),
        zeros("pressure-zeros", &Config::pressureKeepZero),
        unit("temperature-unit", "temperatures", Kind::Temperature, &Config::tempratureUnit),
        decimals("temperature-decimals", &Config::tempraturePrecision),
        zeros("temperature-zeros", &Config::tempratureKeepZero),
        style("time-scale", "instants", Kind::Scale, &Config::timeFormat),
        style("coordinate-order", "for the application alone", Kind::Order, &Config::coordOrder),
    };
    return rows;
}

const DisplaySetting *findDisplaySetting(const QString &name)
{
    const auto &rows = displaySettings();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const DisplaySetting &row) {
        return name == QLatin1String(row.name);
    });
    return found != rows.end() ? &*found : nullptr;
}

QString settingText(const DisplaySetting &setting, const stShowConfig &config)
{
    const int value = valueOf(setting, config);
    if (setting.kind == Kind::Decimals)
        return QString::number(value);
    for (const Word &row : wordsOf(setting.kind)) {
        if (row.value == value)
            return row.word;
    }
    return QStringLiteral("? (%1)").arg(value);
}

QStringList settingWords(const DisplaySetting &setting)
{
    if (setting.kind == Kind::Decimals)
        return {QStringLiteral("0 to %1").arg(int{positions::PrintOptions::maxDecimals})};
    QStringList words;
    for (const Word &row : wordsOf(setting.kind))
        words += row.word;
    return words;
}

bool takeSetting(const DisplaySetting &setting, const QString &word, stShowConfig &config)
{
    if (setting.kind == Kind::Decimals) {
        bool ok = false;
        const int number = word.toInt(&ok);
        const bool isWithin = ok && number >= 0 && number <= positions::PrintOptions::maxDecimals;
        if (isWithin)
            setValue(setting, number, config);
        return isWithin;
    }
    for (const Word &row : wordsOf(setting.kind)) {
        if (row.word == word) {
            setValue(setting, row.value, config);
            return true;
        }
    }
    return false;
}

} // namespace KelStd::cli
