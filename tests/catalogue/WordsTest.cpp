// What messages about a system call the settings and lists that help further.

#include "catalogue/CatalogueTest.h"
#include "support/Mentions.h"
#include "support/Printers.h"

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;
using test::Mentions;

/// A source with advice in its refusal or its warnings, in the library's words and in others.
struct Advice
{
    const char *source;
    const char *shift; ///< that is asked for
    const char *usual;
    const char *other;
};

constexpr Advice rows[] = {
    {"EPSG:4533", "",
     "; use an import with consent, which takes its positions as WGS 84 ones, without any shift",
     "; use Consent, which takes its positions as WGS 84 ones"},
    {"EPSG:2017", "", "; add one, or use an import with consent, which takes",
     "; add one, or use Consent, which takes"},
    {"EPSG:6784", "", "; use an import with consent, which takes", "; use Consent, which takes"},
    {"EPSG:3303", "", ": a fit makes up for it.", ": Fit makes up for it."},
    {"EPSG:28992", "", ": asking for EPSG:", ": Shift EPSG:"},
    {"EPSG:28992", "EPSG:1", "has no datum shift \"EPSG:1\"; a list of its shifts shows them",
     "has no datum shift \"EPSG:1\"; Shifts shows them"},
    // The numbers of EPSG:15934 with the rotations of the other convention.
    {"+proj=sterea +lat_0=52.1561605555556 +lon_0=5.38763888888889 +k=0.9999079 +x_0=155000 "
     "+y_0=463000 +ellps=bessel "
     "+towgs84=565.2369,50.0087,465.658,0.406857,-0.350733,1.870347,4.0812 +units=m",
     "", "asking for EPSG:15934 takes the database's", "Shift EPSG:15934 takes the database's"},
    {"PROJCS[\"a\",GEOGCS[\"NAD27\",DATUM[\"North_American_Datum_1927\","
     "SPHEROID[\"Clarke 1866\",6378206.4,294.978698213898]],PRIMEM[\"Greenwich\",0],"
     "UNIT[\"degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
     "PARAMETER[\"latitude_of_origin\",0],PARAMETER[\"central_meridian\",-99],"
     "PARAMETER[\"scale_factor\",0.9996],PARAMETER[\"false_easting\",123456],"
     "PARAMETER[\"false_northing\",0],UNIT[\"metre\",1]]",
     "", "by its accuracy alone: a place says where", "by its accuracy alone: Place says where"},
    {"EPSG:999999", "", "; a search finds systems by words", "; Search finds systems by words"},
    {"EPSG:4326", "", "; a search finds them", "; Search finds them"},
};

class CatalogueMessages : public CatalogueTest
{
protected:
    static QString messageOf(const Advice &advice, const CatalogueWords &words)
    {
        Catalogue catalogue(words);
        ImportOptions options;
        options.shift = QString::fromLatin1(advice.shift);
        const ImportedSystem imported = catalogue.importSystem(advice.source, options);
        return imported.refusal.text + imported.report.warnings.join(QLatin1Char(' '));
    }
};

TEST_F(CatalogueMessages, NameWhatHelpsInTheGivenWords)
{
    CatalogueWords words;
    words.place = QStringLiteral("Place");
    words.shift = QStringLiteral("Shift");
    words.consent = QStringLiteral("Consent");
    words.fit = QStringLiteral("Fit");
    words.search = QStringLiteral("Search");
    words.shifts = QStringLiteral("Shifts");
    for (const Advice &row : rows) {
        const QString usual = messageOf(row, {});
        EXPECT_THAT(usual, Mentions(row.usual)) << row.source;
        EXPECT_FALSE(usual.contains(QLatin1String("--"))) << usual;
        EXPECT_FALSE(usual.contains(QLatin1String("kelstd"))) << usual;
        EXPECT_THAT(messageOf(row, words), Mentions(row.other)) << row.source;
    }
}

} // namespace
} // namespace KelStd::catalogue
