// Values printed and read beside the bare QString::number and QString::toDouble calls that they
// cannot do without: one for a length, three for an angle in degrees, minutes and seconds.

#include <KelStd/coord/Param.h>
#include <KelStd/display/stShowConfig.h>
#include <KelStd/text/CoordStringHelper.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace KelStd;
using Helper = CoordStringHelper;

constexpr unsigned char lengthDecimals = 4;
constexpr unsigned char secondDecimals = 6;

/// A value as a number and as texts.
struct Sample
{
    double length = 0.0; ///< [m]
    double angle = 0.0;  ///< [deg], positive: the readers take no other in this style
    std::array<double, 3> angleParts{};
    QString lengthText;
    QString angleText;
    std::array<QString, 3> angleTexts;
};

const std::vector<Sample> &samples()
{
    static const std::vector<Sample> made = [] {
        std::mt19937_64 random(1);
        std::uniform_real_distribution<double> lengths(-1e6, 1e6);
        std::uniform_real_distribution<double> angles(1.0, 180.0);
        std::vector<Sample> list(1024);
        for (Sample &sample : list) {
            sample.length = lengths(random);
            sample.angle = angles(random);
            const double minutes = (sample.angle - std::floor(sample.angle)) * 60.0;
            sample.angleParts = {std::floor(sample.angle), std::floor(minutes),
                                 (minutes - std::floor(minutes)) * 60.0};
            sample.lengthText = QString::number(sample.length, 'f', lengthDecimals);
            sample.angleTexts = {QString::number(sample.angleParts[0], 'f', 0),
                                 QString::number(sample.angleParts[1], 'f', 0),
                                 QString::number(sample.angleParts[2], 'f', secondDecimals)};
            sample.angleText = sample.angleTexts[0] + Helper::SpecialSymbol_Degree()
                               + sample.angleTexts[1] + Helper::SpecialSymbol_Minute()
                               + sample.angleTexts[2] + Helper::SpecialSymbol_Second();
        }
        return list;
    }();
    return made;
}

/// Calls `operation` with one sample after another.
template <typename Operation>
void run(benchmark::State &state, Operation operation)
{
    const std::vector<Sample> &all = samples();
    std::size_t next = 0;
    for (auto _ : state) {
        operation(all[next]);
        next = (next + 1) % all.size();
    }
}

void printLength(benchmark::State &state)
{
    run(state, [](const Sample &sample) {
        benchmark::DoNotOptimize(Helper::GetFormatString(ValueType_Distance, sample.length,
                                                         Unit_Meter, Unit_Foot, Format_None,
                                                         lengthDecimals, true));
    });
}

void printLengthBare(benchmark::State &state)
{
    run(state, [](const Sample &sample) {
        benchmark::DoNotOptimize(QString::number(sample.length / 0.3048, 'f', lengthDecimals));
    });
}

void printAngle(benchmark::State &state)
{
    run(state, [](const Sample &sample) {
        benchmark::DoNotOptimize(Helper::GetFormatString(ValueType_Angle, sample.angle, Unit_Degree,
                                                         Unit_Degree, Format_DegreeMinuteSecond,
                                                         secondDecimals, true));
    });
}

/// What the core operation prints: all three parts with the same decimals.
void printAngleBare(benchmark::State &state)
{
    run(state, [](const Sample &sample) {
        for (const double part : sample.angleParts)
            benchmark::DoNotOptimize(QString::number(part, 'f', secondDecimals));
    });
}

void printTableAngle(benchmark::State &state)
{
    stShowConfig config;
    config.latLongPrecision = secondDecimals;
    Param longitude(ValueType_Longitude, Unit_Degree, 0.0);
    run(state, [&](const Sample &sample) {
        longitude.value = sample.angle;
        benchmark::DoNotOptimize(config.getParamValueString(longitude));
    });
}

void printTableAngleBare(benchmark::State &state)
{
    run(state, [](const Sample &sample) {
        benchmark::DoNotOptimize(QString::number(sample.angleParts[0], 'f', 0));
        benchmark::DoNotOptimize(QString::number(sample.angleParts[1], 'f', 0));
        benchmark::DoNotOptimize(QString::number(sample.angleParts[2], 'f', secondDecimals));
    });
}

void readLength(benchmark::State &state)
{
    QVariant value;
    run(state, [&value](const Sample &sample) {
        Helper::GetValueFromString(ValueType_Distance, Unit_Meter, sample.lengthText, value);
        benchmark::DoNotOptimize(value);
    });
}

void readLengthBare(benchmark::State &state)
{
    run(state,
        [](const Sample &sample) { benchmark::DoNotOptimize(sample.lengthText.toDouble()); });
}

void readAngle(benchmark::State &state)
{
    QVariant value;
    run(state, [&value](const Sample &sample) {
        Helper::GetValueFromString(ValueType_Angle, Unit_Degree, sample.angleText, value);
        benchmark::DoNotOptimize(value);
    });
}

void readAngleOfStyle(benchmark::State &state)
{
    double degrees = 0.0;
    run(state, [&degrees](const Sample &sample) {
        Helper::GetAngleValue(sample.angleText, Format_DegreeMinuteSecond, degrees);
        benchmark::DoNotOptimize(degrees);
    });
}

void readAngleBare(benchmark::State &state)
{
    run(state, [](const Sample &sample) {
        for (const QString &part : sample.angleTexts)
            benchmark::DoNotOptimize(part.toDouble());
    });
}

BENCHMARK(printLength);
BENCHMARK(printLengthBare);
BENCHMARK(printAngle);
BENCHMARK(printAngleBare);
BENCHMARK(printTableAngle);
BENCHMARK(printTableAngleBare);
BENCHMARK(readLength);
BENCHMARK(readLengthBare);
BENCHMARK(readAngle);
BENCHMARK(readAngleOfStyle);
BENCHMARK(readAngleBare);

} // namespace

BENCHMARK_MAIN();
