// What somebody may have meant who mistyped a name. The systems' names are those of the EPSG
// Dataset.

#include "support/Printers.h"

#include <KelStd/text/NearNames.h>

#include <gtest/gtest.h>

#include <ostream>

namespace KelStd {
namespace {

const QStringList systems = {
    QStringLiteral("Amersfoort / RD New"),
    QStringLiteral("DHDN / 3-degree Gauss-Kruger zone 2"),
    QStringLiteral("DHDN / 3-degree Gauss-Kruger zone 3"),
    QStringLiteral("ETRS89 / UTM zone 32N"),
    QStringLiteral("ETRS89 / UTM zone 33N"),
    QStringLiteral("NAD27 / UTM zone 3N"),
    QStringLiteral("OSGB36 / British National Grid"),
    QStringLiteral("Trinidad 1903 / Trinidad Grid"),
    QStringLiteral("WGS 84 / UTM zone 32N"),
    QStringLiteral("WGS 84 / UTM zone 32S"),
    QStringLiteral("WGS 84 / UTM zone 33N"),
};

const QStringList words = {QStringLiteral("--system"),      QStringLiteral("--from"),
                           QStringLiteral("--format"),      QStringLiteral("--angle"),
                           QStringLiteral("--length-unit"), QStringLiteral("--precision")};

struct Meant
{
    const char *testName;
    QStringList known;
    const char *given;
    QList<const char *> names;
};

void PrintTo(const Meant &row, std::ostream *out)
{
    *out << row.testName;
}

class NearNames : public testing::TestWithParam<Meant>
{};

TEST_P(NearNames, AreThoseThatAreMeantBestFirst)
{
    QStringList names;
    for (const char *name : GetParam().names)
        names += QString::fromUtf8(name);
    EXPECT_EQ(nearNames(QString::fromUtf8(GetParam().given), GetParam().known), names);
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, NearNames,
    testing::Values(
        Meant{"Words", systems, "utm 32n", {"ETRS89 / UTM zone 32N", "WGS 84 / UTM zone 32N"}},
        Meant{"WordsInAnyOrder", systems, "zone 33 n utm wgs", {"WGS 84 / UTM zone 33N"}},
        Meant{"Together", systems, "utm32n", {"ETRS89 / UTM zone 32N", "WGS 84 / UTM zone 32N"}},
        Meant{"NoBlank", systems, "WGS84 / UTM zone 32N", {"WGS 84 / UTM zone 32N"}},
        Meant{"NoPunctuation", systems, "wgs84 utm 32s", {"WGS 84 / UTM zone 32S"}},
        Meant{"MissingLetter", systems, "Amersfort", {"Amersfoort / RD New"}},
        Meant{"ChangedLetter", systems, "Amersfoord RD", {"Amersfoort / RD New"}},
        Meant{"ExchangedLetters", systems, "brtiish grid", {"OSGB36 / British National Grid"}},
        Meant{"Accent",
              systems,
              "gauss-kr\u00FCger zone 3",
              {"DHDN / 3-degree Gauss-Kruger zone 3", "DHDN / 3-degree Gauss-Kruger zone "
                                                      "2"}},
        // A number is no misspelling of another one.
        Meant{"AnotherZone", systems, "utm 35n", {}},
        Meant{"AShorterNumber", systems, "WGS 84 / UTM zone 3N", {}},
        Meant{"LikeNothing", systems, "zanzibar", {}}, Meant{"Nothing", systems, "", {}},
        Meant{"Signs", systems, " / - ", {}}, Meant{"Option", words, "--sytem", {"--system"}},
        Meant{"OptionShortened", words, "--prec", {"--precision"}},
        Meant{"OptionOfOneWord", words, "--unit", {"--length-unit"}},
        Meant{"OptionNearTwo", words, "--forma", {"--format"}}),
    [](const auto &row) { return row.param.testName; });

TEST(NearNamesOfMany, AreAtMostThreeInTheirOrder)
{
    EXPECT_EQ(nearNames(QStringLiteral("utm"), systems), systems.mid(3, 3));
    EXPECT_EQ(nearNames(QStringLiteral("utm"), systems, 1), systems.mid(3, 1));
    EXPECT_EQ(nearNames(QStringLiteral("utm"), systems + systems, 2), systems.mid(3, 2));
}

TEST(NearNamesOfMany, AnyTextIsTaken)
{
    EXPECT_EQ(nearNames(QString(1000000, QLatin1Char('a')), systems), QStringList());
    EXPECT_EQ(nearNames(QStringLiteral("a"), {QString(1000000, QLatin1Char('b'))}), QStringList());
    EXPECT_EQ(nearNames(QString(200, QChar(0xD800)), systems), QStringList());
}

TEST(NearNamesOfMany, TheHintJoinsThem)
{
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    const QString c = QStringLiteral("c");
    EXPECT_EQ(hintAt({}), QString());
    EXPECT_EQ(hintAt({a}), QStringLiteral("did you mean a?"));
    EXPECT_EQ(hintAt({a, b}), QStringLiteral("did you mean a or b?"));
    EXPECT_EQ(hintAt({a, b, c}), QStringLiteral("did you mean a, b or c?"));
}

} // namespace
} // namespace KelStd
