// Loading a library beside the parsing of the same documents by QDomDocument, and look-ups in it,
// for libraries of different sizes.

#include "support/Environment.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtXml/QDomDocument>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

using namespace KelStd;

constexpr int sizes[] = {200, 2'000, 20'000};

QString systemName(int number)
{
    return QStringLiteral("Measured system %1").arg(number, 5, 10, QLatin1Char('0'));
}

/// A directory of systems as the library writes them, one document each, and an empty one.
class Systems
{
public:
    explicit Systems(int count)
    {
        const QByteArray pattern = writtenSystem();
        QDir(m_dir.path()).mkdir(QStringLiteral("systems"));
        QDir(m_dir.path()).mkdir(QStringLiteral("empty"));
        for (int i = 0; i < count; ++i) {
            m_documents << m_dir.filePath(QStringLiteral("systems/%1.xml").arg(systemName(i)));
            QFile file(m_documents.constLast());
            QByteArray document = pattern;
            document.replace(placeholder, systemName(i).toUtf8());
            if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size())
                qFatal("the systems cannot be written");
        }
    }

    const QStringList &documents() const { return m_documents; }

    /// Makes the library load them.
    void load() const
    {
        loadFrom(QStringLiteral("systems"));
        if (StandardLibrary::getInstance().getCoordFromCustomLibrary(systemName(0)) == nullptr)
            qFatal("the systems cannot be loaded");
    }

    /// Empties the library.
    void unload() const { loadFrom(QStringLiteral("empty")); }

private:
    static constexpr const char *placeholder = "PLACEHOLDER";

    void loadFrom(const QString &folder) const
    {
        StandardLibrary &library = StandardLibrary::getInstance();
        const QString empty = m_dir.filePath(QStringLiteral("empty"));
        library.setEllipsoidListPath(empty);
        library.setProjectionListPath(empty);
        library.setStandardCoordPath(empty);
        library.setCustomCoordPath(m_dir.filePath(folder));
        library.loadLibrary();
    }

    QByteArray writtenSystem() const
    {
        Coord coord = bench::benchmarkSystem();
        coord.coord_name = QString::fromLatin1(placeholder);
        const QString path = m_dir.filePath(QStringLiteral("pattern.xml"));
        QFile file(path);
        if (!Coord_IO::xml_write(coord, path, nullptr) || !file.open(QIODevice::ReadOnly))
            qFatal("the system cannot be written");
        return file.readAll();
    }

    QTemporaryDir m_dir;
    QStringList m_documents;
};

const Systems &systems(int count)
{
    static std::map<int, std::unique_ptr<Systems>> made;
    std::unique_ptr<Systems> &entry = made[count];
    if (entry == nullptr)
        entry = std::make_unique<Systems>(count);
    return *entry;
}

void loading(benchmark::State &state, int count)
{
    const Systems &here = systems(count);
    for (auto _ : state) {
        here.load();
        state.PauseTiming(); // what is there before must not count
        here.unload();
        state.ResumeTiming();
    }
}

void loadingBare(benchmark::State &state, int count)
{
    const Systems &here = systems(count);
    for (auto _ : state) {
        for (const QString &path : here.documents()) {
            QFile file(path);
            QDomDocument document;
            if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
                qFatal("the document cannot be parsed");
            benchmark::DoNotOptimize(document);
        }
    }
}

void lookUp(benchmark::State &state, int count)
{
    if (StandardLibrary::getInstance().getCoordFromCustomLibrary(systemName(count - 1)) == nullptr)
        systems(count).load(); // and stays loaded for the next repetition
    constexpr int names = 128;
    QStringList sought;
    for (int i = 0; i < names; ++i)
        sought << systemName(i * (count / names));
    const StandardLibrary &library = StandardLibrary::getInstance();
    int i = 0;
    for (auto _ : state) {
        const Coord *coord = library.getCoordFromCustomLibrary(sought.at(i));
        benchmark::DoNotOptimize(coord);
        i = (i + 1) % names;
    }
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    const auto add = [](const char *name, void (*run)(benchmark::State &, int), int size) {
        return benchmark::RegisterBenchmark((name + ('/' + std::to_string(size))).c_str(), run,
                                            size);
    };
    for (const int size : sizes) {
        add("libraryLoading", loading, size)->Unit(benchmark::kMillisecond)->Iterations(1);
        add("libraryLookUp", lookUp, size)->Unit(benchmark::kNanosecond);
    }
    add("libraryLoadingBare", loadingBare, 2'000)->Unit(benchmark::kMillisecond)->Iterations(1);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
