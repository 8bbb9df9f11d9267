#include "location/LocationOperations.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QProcess>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <random>

namespace KelStd {
namespace {

/// One stage of the chain: its two definitions, and the frames that it leads from and to.
struct Stage
{
    int fromDefinition;
    int toDefinition;
    test::Frame from;
    test::Frame to;
};

constexpr Stage stages[] = {
    {0, 1, test::Frame::Wgs84LLH, test::Frame::Wgs84XYZ},
    {1, 0, test::Frame::Wgs84XYZ, test::Frame::Wgs84LLH},
    {1, 2, test::Frame::Wgs84XYZ, test::Frame::LocalLLH},
    {2, 1, test::Frame::LocalLLH, test::Frame::Wgs84XYZ},
    {2, 3, test::Frame::LocalLLH, test::Frame::LocalNEH},
    {3, 2, test::Frame::LocalNEH, test::Frame::LocalLLH},
};

/// PROJ's own program reads the definition as one of a coordinate reference system only when told.
QStringList asReferenceSystem(const QString &definition)
{
    return definition.split(QLatin1Char(' '), Qt::SkipEmptyParts) << QStringLiteral("+type=crs");
}

QList<Pos> runCs2cs(const QString &from, const QString &to, const QList<Pos> &positions)
{
    QByteArray input;
    for (const Pos &pos : positions) {
        for (const double component : test::componentsOf(pos))
            input += QByteArray::number(component, 'g', 17) + ' ';
        input += '\n';
    }
    QProcess cs2cs;
    cs2cs.start(QStringLiteral("cs2cs"),
                QStringList{QStringLiteral("-f"), QStringLiteral("%.12f")} + asReferenceSystem(from)
                    + QStringList{QStringLiteral("+to")} + asReferenceSystem(to));
    cs2cs.write(input);
    cs2cs.closeWriteChannel();
    EXPECT_TRUE(cs2cs.waitForFinished());
    EXPECT_EQ(cs2cs.exitCode(), 0) << cs2cs.readAllStandardError().toStdString();

    QList<Pos> results;
    for (const QByteArray &line : cs2cs.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() == 3)
            results << Pos::fromXYZ(words[0].toDouble(), words[1].toDouble(), words[2].toDouble());
    }
    return results;
}

class IndependentCheck : public test::ProjTest, public testing::WithParamInterface<std::string>
{};

TEST_P(IndependentCheck, EveryStageAgreesWithCs2csOnTheSameDefinitions)
{
    Coord coord;
    ASSERT_TRUE(Coord_IO::xml_read(test::systemPath(QString::fromStdString(GetParam())), coord));
    char definitions[4][512] = {};
    Coord::__MakeCoordStrings(nullptr, &coord, definitions[0], definitions[1], definitions[2],
                              definitions[3]);

    QList<Location> locations;
    for (const test::PublishedCase &published : test::publishedFigures().cases) {
        if (published.system.toStdString() != GetParam())
            continue;
        Location location;
        ASSERT_TRUE(test::operationFrom(published.from)
                        .make(published.start, location, nullptr, &coord, nullptr));
        locations << location;
    }
    std::mt19937 random(7);
    std::uniform_real_distribution<double> offset(-0.5, 0.5);
    const Pos centre = locations.first().wgs84LLH;
    for (int i = 0; i < 50; ++i) {
        Location location;
        const double latitude =
            std::max(-89.9, std::min(89.9, centre.getLongLatH().latitude + offset(random)));
        ASSERT_TRUE(Coord::MakeLocation_byWGS84LatLongH(
            Pos::fromLongLatH(centre.getLongLatH().longitude + offset(random), latitude,
                              1000.0 * offset(random)),
            location, nullptr, &coord, nullptr));
        locations << location;
    }

    // Both start from the same doubles and differ by the last bits of reading and printing: the
    // spacing of doubles is 1e-9 at 6,000,000 m.
    constexpr double tolerance = 4e-9;
    for (const Stage &stage : stages) {
        QList<Pos> inputs;
        for (const Location &location : locations)
            inputs << test::frameOf(location, stage.from);
        QList<Pos> ours = inputs;
        QString error;
        ASSERT_TRUE(ProjLib::ConvertPosList(QString::fromUtf8(definitions[stage.fromDefinition]),
                                            QString::fromUtf8(definitions[stage.toDefinition]),
                                            ours, ProjLib::WGS84XYZ_to_WGS84LatLongH, &error))
            << error;
        const QList<Pos> theirs =
            runCs2cs(QString::fromUtf8(definitions[stage.fromDefinition]),
                     QString::fromUtf8(definitions[stage.toDefinition]), inputs);
        ASSERT_EQ(theirs.size(), inputs.size());
        for (int i = 0; i < inputs.size(); ++i) {
            const auto a = test::componentsOf(ours[i]);
            const auto b = test::componentsOf(theirs[i]);
            for (std::size_t c = 0; c < a.size(); ++c)
                EXPECT_NEAR(a[c], b[c], tolerance) << "component " << c << ", point " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Systems, IndependentCheck, testing::ValuesIn(test::publishedSystems()),
                         [](const auto &row) {
                             return test::testName(QString::fromStdString(row.param));
                         });

} // namespace
} // namespace KelStd
