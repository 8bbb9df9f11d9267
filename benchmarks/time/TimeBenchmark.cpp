// Each conversion and comparison beside the QDateTime calls that it cannot do without: those that
// take the fields in, move or compare, and give the fields out.

#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

using namespace KelStd;

/// The same epoch in every scale, between 1980 and 2100.
struct Epoch
{
    qint64 count = 0;
    TimeUtc utc;
    TimeGpsT gpsT;
    TimeGpsW gpsW;
    TimeLocal local;
};

const std::vector<Epoch> &epochs()
{
    static const std::vector<Epoch> made = [] {
        std::mt19937_64 random(1);
        std::uniform_int_distribution<qint64> counts(315964800000, 4102444800000);
        std::vector<Epoch> list(1024);
        for (Epoch &epoch : list) {
            epoch.count = counts(random);
            epoch.utc = TimeUtc(epoch.count);
            epoch.gpsT = epoch.utc.toGpsT();
            epoch.gpsW = epoch.utc.toGpsW();
            epoch.local = TimeLocal(epoch.utc, 3600);
        }
        return list;
    }();
    return made;
}

// --- The bare calls --------------------------------------------------------------------------

template <typename Fields>
QDateTime bareTaken(const Fields &fields)
{
    return QDateTime(QDate(fields.year(), fields.month(), fields.day()),
                     QTime(fields.hour(), fields.minute(), fields.second(), fields.millionSecond()),
                     Qt::UTC);
}

struct BareFields
{
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;
    int millisecond;
};

BareFields bareGiven(const QDateTime &dateTime)
{
    BareFields fields{};
    dateTime.date().getDate(&fields.year, &fields.month, &fields.day);
    const QTime time = dateTime.time();
    fields.hour = time.hour();
    fields.minute = time.minute();
    fields.second = time.second();
    fields.millisecond = time.msec();
    return fields;
}

BareFields bareOfCount(qint64 count)
{
    return bareGiven(QDateTime::fromMSecsSinceEpoch(count, Qt::UTC));
}

int bareSystemOffset()
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.timeZone().offsetFromUtc(now);
}

// --- Pairs -----------------------------------------------------------------------------------

using Run = void (*)(benchmark::State &);

/// Calls an operation on every epoch and the one after it.
template <typename Operation>
void eachEpoch(benchmark::State &state, Operation operation)
{
    const std::vector<Epoch> &list = epochs();
    std::size_t i = 0;
    for (auto _ : state) {
        const std::size_t next = (i + 1) % list.size();
        auto result = operation(list[i], list[next]);
        benchmark::DoNotOptimize(result);
        i = next;
    }
}

struct Pair
{
    const char *name;
    Run ours;
    Run bare;
};

#define KELSTD_EACH(expression)                                                                    \
    [](benchmark::State &state) {                                                                  \
        eachEpoch(state,                                                                           \
                  [](const Epoch &e, [[maybe_unused]] const Epoch &next) { return expression; });  \
    }

const QString pattern = QStringLiteral("yyyy-MM-dd hh:mm:ss");

const Pair pairs[] = {
    {"utcToCount", KELSTD_EACH(e.utc.toValueTime()),
     KELSTD_EACH(bareTaken(e.utc).toMSecsSinceEpoch())},
    {"utcFromCount", KELSTD_EACH(TimeUtc(e.count)), KELSTD_EACH(bareOfCount(e.count))},
    {"utcMove", KELSTD_EACH(e.utc + 86400000),
     KELSTD_EACH(bareGiven(bareTaken(e.utc).addMSecs(86400000)))},
    {"utcLess", KELSTD_EACH(e.utc < next.utc), KELSTD_EACH(bareTaken(e.utc) < bareTaken(next.utc))},
    {"utcEqual", KELSTD_EACH(e.utc == next.utc),
     KELSTD_EACH(bareTaken(e.utc) == bareTaken(next.utc))},
    {"utcCompare", KELSTD_EACH(e.utc.compare(next.utc)),
     KELSTD_EACH(bareTaken(e.utc).toMSecsSinceEpoch() < bareTaken(next.utc).toMSecsSinceEpoch())},
    {"utcText", KELSTD_EACH(e.utc.toString()), KELSTD_EACH(bareTaken(e.utc).toString(pattern))},
    {"utcToGpsT", KELSTD_EACH(e.utc.toGpsT()),
     KELSTD_EACH(bareGiven(bareTaken(e.utc).addSecs(e.gpsT.leapSeconds())))},
    {"utcToGpsW", KELSTD_EACH(e.utc.toGpsW()), KELSTD_EACH(bareTaken(e.utc).toMSecsSinceEpoch())},
    {"gpsTToUtc", KELSTD_EACH(e.gpsT.toUtc()),
     KELSTD_EACH(bareGiven(bareTaken(e.gpsT).addSecs(-e.gpsT.leapSeconds())))},
    {"gpsTToGpsW", KELSTD_EACH(e.gpsT.toGpsW()),
     KELSTD_EACH(bareTaken(e.gpsT).toMSecsSinceEpoch())},
    {"gpsTMove", KELSTD_EACH(e.gpsT + 86400000),
     KELSTD_EACH(bareGiven(bareTaken(e.gpsT).addMSecs(86400000)))},
    {"gpsTLess", KELSTD_EACH(e.gpsT < next.gpsT),
     KELSTD_EACH(bareTaken(e.gpsT).addSecs(-e.gpsT.leapSeconds())
                 < bareTaken(next.gpsT).addSecs(-next.gpsT.leapSeconds()))},
    {"gpsWToUtc", KELSTD_EACH(e.gpsW.toUtc()), KELSTD_EACH(bareOfCount(e.count))},
    {"gpsWToGpsT", KELSTD_EACH(e.gpsW.toGpsT()), KELSTD_EACH(bareOfCount(e.count))},
    {"gpsWFromCount", KELSTD_EACH([](qint64 count) {
         TimeGpsW time;
         time.fromValueTime(count);
         return time;
     }(e.count)),
     KELSTD_EACH(QDateTime::fromMSecsSinceEpoch(e.count, Qt::UTC))},
    {"gpsWLess", KELSTD_EACH(e.gpsW < next.gpsW),
     KELSTD_EACH(QDateTime::fromMSecsSinceEpoch(e.count, Qt::UTC)
                 < QDateTime::fromMSecsSinceEpoch(next.count, Qt::UTC))},
    {"utcToLocal", KELSTD_EACH(e.utc.toLocal()),
     KELSTD_EACH(bareSystemOffset() + bareTaken(e.utc).isValid())},
    {"localLess", KELSTD_EACH(e.local < next.local),
     KELSTD_EACH(bareTaken(e.utc) < bareTaken(next.utc))},
    {"localText", KELSTD_EACH(e.local.toString()),
     KELSTD_EACH(bareTaken(e.utc).addSecs(3600).toString(pattern))},
};

#undef KELSTD_EACH

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    for (const Pair &pair : pairs) {
        benchmark::RegisterBenchmark(pair.name, pair.ours);
        benchmark::RegisterBenchmark((std::string(pair.name) + "Bare").c_str(), pair.bare);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
