// Systems written as texts, and read back by PROJ's own program cs2cs.

#include "catalogue/CatalogueTest.h"
#include "support/Printers.h"

#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

namespace KelStd::catalogue {
namespace {

using test::CatalogueTest;

class SystemExport : public CatalogueTest
{};

/// Northing and easting, in whichever order and unit, of a place in WGS 84.
QStringList cs2cs(const QString &target, const GroundPoint &place)
{
    const auto number = [](double value) { return QByteArray::number(value, 'g', 17); };
    QStringList arguments = {QStringLiteral("-f"), QStringLiteral("%.7f")};
    QByteArray input = number(place.latitude) + ' ' + number(place.longitude) + '\n';
    if (target.startsWith(QLatin1Char('+'))) {
        // The program wants the words of a PROJ string one by one, then longitudes come first.
        arguments += {QStringLiteral("+proj=longlat"), QStringLiteral("+datum=WGS84"),
                      QStringLiteral("+type=crs"), QStringLiteral("+to")};
        arguments += target.split(QLatin1Char(' '));
        input = number(place.longitude) + ' ' + number(place.latitude) + '\n';
    } else {
        arguments += {QStringLiteral("EPSG:4326"), target};
    }
    QProcess process;
    process.start(QStringLiteral("cs2cs"), arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished());
    return QString::fromUtf8(process.readAllStandardOutput())
        .simplified()
        .split(QLatin1Char(' '))
        .mid(0, 2);
}

double distance(const QStringList &a, const QStringList &b)
{
    return std::hypot(a.value(0).toDouble() - b.value(0).toDouble(),
                      a.value(1).toDouble() - b.value(1).toDouble());
}

TEST_F(SystemExport, IsReadBackByProjWithTheSameShift)
{
    // Systems with one shift to WGS 84, so that cs2cs takes it by itself; three translations,
    // seven parameters, none, feet, a prime meridian, a southern and a Krovak's axes.
    for (const char *code : {"EPSG:27561", "EPSG:2154", "EPSG:32631", "EPSG:4400", "EPSG:29385",
                             "EPSG:5880", "EPSG:3067", "EPSG:23700", "EPSG:21781"}) {
        const ImportedSystem imported = import(code);
        ASSERT_TRUE(imported.system) << code;
        const GroundPoint at = imported.report.area.centre();
        const QStringList known = cs2cs(QString::fromLatin1(code), at);
        for (const ExportForm form : {ExportForm::Wkt2, ExportForm::ProjJson}) {
            CatalogueFailure failure;
            const auto text = catalogue().exportSystem(*imported.system, form,
                                                       QString::fromLatin1(code), &failure);
            ASSERT_TRUE(text) << code << ' ' << failure.text.toStdString();
            EXPECT_EQ(text->code, QLatin1String(code));
            const QStringList back = cs2cs(text->text, at);
            ASSERT_EQ(back.size(), 2) << code;
            if (imported.report.alternatives.empty()) {
                EXPECT_LT(distance(back, known), 1e-6) << code;
            }
        }
    }
}

TEST_F(SystemExport, GivesWhatTheSystemGives)
{
    for (const char *code : {"EPSG:28992", "EPSG:31370", "EPSG:27700", "EPSG:5514", "EPSG:3857",
                             "EPSG:31467", "EPSG:27561", "EPSG:2056"}) {
        const ImportedSystem imported = import(code);
        ASSERT_TRUE(imported.system) << code;
        const GroundPoint at = imported.report.area.centre();
        LocationBuilder builder(*imported.system);
        Location location;
        ASSERT_TRUE(builder.make(LocationBuilder::Frame::Wgs84Geographic,
                                 Pos::fromLongLatH(at.longitude, at.latitude, 0.0), location));
        // Without the code the text is made of the records alone.
        for (const ExportForm form : {ExportForm::Wkt2, ExportForm::ProjJson, ExportForm::Proj}) {
            const auto text = catalogue().exportSystem(*imported.system, form);
            ASSERT_TRUE(text) << code;
            EXPECT_TRUE(text->code.isEmpty());
            const QStringList back = cs2cs(text->text, at);
            const QStringList own = {QString::number(location.get_NEH_E(), 'f', 7),
                                     QString::number(location.get_NEH_N(), 'f', 7)};
            EXPECT_LT(distance(back, own), imported.report.difference + 1e-6)
                << code << '\n'
                << text->text.toStdString();
        }
    }
}

TEST_F(SystemExport, WritesEsriTextsOfSystemsOfTheDatabase)
{
    const ImportedSystem rd = import("EPSG:28992");
    const auto text =
        catalogue().exportSystem(*rd.system, ExportForm::Esri, QStringLiteral("EPSG:28992"));
    ASSERT_TRUE(text);
    EXPECT_TRUE(
        text->text.startsWith(QLatin1String("PROJCS[\"RD_New\",GEOGCS[\"GCS_Amersfoort\"")));
    EXPECT_FALSE(text->lost.isEmpty());
    EXPECT_EQ(import(text->text.toUtf8()).report.code, QStringLiteral("EPSG:28992"));
}

TEST_F(SystemExport, RefusesAnEsriTextThatWouldLoseTheShift)
{
    const ImportedSystem rd = import("EPSG:28992");
    CatalogueFailure failure;
    EXPECT_FALSE(catalogue().exportSystem(*rd.system, ExportForm::Esri, {}, &failure));
    EXPECT_EQ(failure.kind, CatalogueFailureKind::NotExportable);
    // Another system's code is no help.
    EXPECT_FALSE(catalogue().exportSystem(*rd.system, ExportForm::Esri,
                                          QStringLiteral("EPSG:28991"), &failure));
    // Without a shift there is none to lose.
    EXPECT_TRUE(catalogue().exportSystem(*import("EPSG:2154").system, ExportForm::Esri));
}

TEST_F(SystemExport, DoesNotBelieveACode)
{
    Coord changed = *import("EPSG:28992").system;
    changed.projection.param[QStringLiteral("FalseEast")].value = 155001.0;
    const auto text =
        catalogue().exportSystem(changed, ExportForm::Wkt2, QStringLiteral("EPSG:28992"));
    ASSERT_TRUE(text);
    EXPECT_TRUE(text->code.isEmpty());
    EXPECT_FALSE(text->text.contains(QLatin1String("28992")));
    EXPECT_TRUE(text->text.contains(QLatin1String("155001")));
}

// Large rotations about a point in Macao. Seven parameters that are fitted to the operation would
// be 0.28 m off where they are applied linearly, as PROJ does.
TEST_F(SystemExport, HasAnOperationAboutAPointAsItIsPublished)
{
    const ImportedSystem macao = import("EPSG:8433");
    const GroundPoint at{113.55, 22.15};
    const QStringList known = cs2cs(QStringLiteral("EPSG:8433"), at);
    for (const ExportForm form : {ExportForm::Wkt2, ExportForm::ProjJson}) {
        const auto text =
            catalogue().exportSystem(*macao.system, form, QStringLiteral("EPSG:8433"));
        ASSERT_TRUE(text);
        EXPECT_LT(distance(cs2cs(text->text, at), known), 1e-6);
        EXPECT_FALSE(text->lost.join(QLatin1Char(' ')).contains(QLatin1String("linearly")));
        const ImportedSystem back = import(text->text.toUtf8());
        EXPECT_EQ(back.report.shift.code, QStringLiteral("EPSG:8438"));
        EXPECT_EQ(back.report.code, QStringLiteral("EPSG:8433"));
    }
    const auto proj =
        catalogue().exportSystem(*macao.system, ExportForm::Proj, QStringLiteral("EPSG:8433"));
    ASSERT_TRUE(proj);
    EXPECT_NEAR(distance(cs2cs(proj->text, at), {known.value(1), known.value(0)}), 0.281, 0.002);
    EXPECT_TRUE(proj->lost.join(QLatin1Char(' '))
                    .contains(QLatin1String("linearly, which moves positions by up to 0.28")));
}

// What is none of the database's is not taken for one of them by its code.
TEST_F(SystemExport, ReadsBackOnlyAPublishedOperationAboutAPoint)
{
    const ImportedSystem macao = import("EPSG:8433");
    const auto text =
        catalogue().exportSystem(*macao.system, ExportForm::Wkt2, QStringLiteral("EPSG:8433"));
    ASSERT_TRUE(text);
    QByteArray changed = text->text.toUtf8();
    ASSERT_TRUE(changed.contains("-202.865"));
    EXPECT_EQ(refusal(changed.replace("-202.865", "-203.865")), QStringLiteral("not-understood"));
}

TEST_F(SystemExport, SaysWhatIsLost)
{
    const ImportedSystem compound = import("EPSG:28992+5773");
    const auto text = catalogue().exportSystem(*compound.system, ExportForm::Wkt2);
    ASSERT_TRUE(text);
    EXPECT_TRUE(text->lost.join(QLatin1Char(' ')).contains(QLatin1String("egm96_15.gtx")));
}

TEST_F(SystemExport, RefusesASystemThatIsNone)
{
    CatalogueFailure failure;
    EXPECT_FALSE(catalogue().exportSystem(Coord(), ExportForm::Wkt2, {}, &failure));
    EXPECT_EQ(failure.kind, CatalogueFailureKind::NotExportable);
    Coord hostile = *import("EPSG:28992").system;
    hostile.coord_name = QStringLiteral("\"],EVIL[\"\n{}");
    const auto text = catalogue().exportSystem(hostile, ExportForm::Wkt2);
    ASSERT_TRUE(text);
    EXPECT_TRUE(import(text->text.toUtf8()).system);
}

} // namespace
} // namespace KelStd::catalogue
