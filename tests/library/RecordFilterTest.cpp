// Records found by words.

#include "library/RecordKinds.h"

#include <KelStd/library/RecordFilter.h>

namespace KelStd::test {
namespace {

class RecordFilters : public LibraryTest
{
protected:
    void SetUp() override
    {
        LibraryTest::SetUp();
        add("RD New", "28992", "Netherlands - onshore.", {"Nederland", "Holland"});
        add("S-JTSK / Krovak", "5514", "Czechia; Slovakia.",
            {"\xC4\x8C"
             "esko"});
        add("UTM zone 31N", "32631", "Benin. C\xC3\xB4te d'Ivoire. Faroe Islands.", {});
        add("Mine", "", "",
            {"F\xC3\xB8royar", "Stra\xC3\x9F"
                               "e"});
    }

    static void add(const char *name, const char *code, const char *area,
                    std::initializer_list<const char *> countries)
    {
        SystemOrigin origin;
        origin.authority = QStringLiteral("EPSG");
        origin.code = QString::fromUtf8(code);
        origin.areaName = QString::fromUtf8(area);
        for (const char *country : countries)
            origin.countries += QString::fromUtf8(country);
        const Coord coord = SystemKind::record(QString::fromUtf8(name), 1);
        library().setSafeFileNames(true);
        ASSERT_TRUE(library().addCoordWithOrigin(QString::fromUtf8(name), &coord, origin));
        library().setSafeFileNames(false);
    }

    static QStringList found(const char *words)
    {
        const library::RecordFilter filter(
            QString::fromUtf8(words).split(QLatin1Char('|'), Qt::SkipEmptyParts));
        QStringList names;
        for (const QString &name : library::namesOf(RecordKind::Custom)) {
            if (filter.matches(RecordKind::Custom, name))
                names += name;
        }
        return names;
    }
};

TEST_F(RecordFilters, FindByEveryWordInAnyOrder)
{
    struct Row
    {
        const char *words; ///< of a command line, separated by bars
        const char *names; ///< as above
    };
    const Row rows[] = {
        {"", "Mine|RD New|S-JTSK / Krovak|UTM zone 31N"},
        {"rd", "RD New"},
        {"new|RD", "RD New"},
        {"new rd", "RD New"},
        {"new|utm", ""},
        {"28992", "RD New"},
        {"epsg:28992", "RD New"},
        {"EPSG|28", "RD New"},
        {"8992", ""}, // the beginning of a word, not its end
        {"nether", "RD New"},
        {"HOLLAND", "RD New"},
        {"cesko", "S-JTSK / Krovak"},
        {"\xC4\x8C"
         "ESKO",
         "S-JTSK / Krovak"},
        {"c\xCC\x8C"
         "esko",
         "S-JTSK / Krovak"}, // with the accent apart
        {"slovakia|krovak", "S-JTSK / Krovak"},
        {"s-jtsk", "S-JTSK / Krovak"},
        {"cote|ivoire", "UTM zone 31N"},
        {"utm|31n", "UTM zone 31N"},
        {"31", "UTM zone 31N"},
        {"foroyar", "Mine"},
        {"strasse", "Mine"},
        {"/", "Mine|RD New|S-JTSK / Krovak|UTM zone 31N"}, // no word
        {"nothing", ""},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.words);
        EXPECT_EQ(found(row.words),
                  QString::fromUtf8(row.names).split(QLatin1Char('|'), Qt::SkipEmptyParts));
    }
}

} // namespace
} // namespace KelStd::test
