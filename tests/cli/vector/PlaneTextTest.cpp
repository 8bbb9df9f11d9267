// What files say of a system whose document was changed: its code where it is that system, its
// definition in a drawing where it is not.

#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <QtCore/QRegularExpression>

namespace KelStd {
namespace {

using test::csvRows;
using test::mentionsAll;
using test::numberIn;
using test::ProgramResult;
using test::ProgramRun;
using test::words;

class ChangedSystems : public testing::Test
{
protected:
    ChangedSystems()
    {
        // From NAD83 to WGS 84 nothing is shifted; the false easting is 984250 feet, 300000 m.
        const QString imported = path(QStringLiteral("ny.xml"));
        const ProgramResult result = m_program.run(
            words(QStringLiteral("system import EPSG:2263 -o ")) + QStringList{imported});
        EXPECT_EQ(result.status, 0) << result.err;
        m_document = QString::fromUtf8(test::readFile(imported));
        m_list =
            m_program.file(QStringLiteral("list.csv"), "point,lon,lat,h\nA,-73.95,40.7,12.5\n");
    }

    QString path(const QString &name) const { return m_program.home().path(name); }

    QString system(const QString &name, const QString &text) const
    {
        return m_program.file(name, text.toUtf8());
    }

    static QString withOtherEasting(QString document)
    {
        return document.replace(QLatin1String(">300000<"), QLatin1String(">100000<"));
    }

    static QString withShift(QString document)
    {
        // The attributes of an element have no order.
        static const QRegularExpression function(
            QStringLiteral("(<Ellipsoid_Transform[^>]* fuction=\")None"));
        static const QRegularExpression x(QStringLiteral("(<x_translate[^>]*>)0<"));
        return document.replace(function, QStringLiteral("\\1Three"))
            .replace(x, QStringLiteral("\\1100<"));
    }

    static QString withoutOrigin(QString document)
    {
        static const QRegularExpression origin(QStringLiteral("<Origin.*</Origin>"),
                                               QRegularExpression::DotMatchesEverythingOption);
        return document.remove(origin);
    }

    ProgramResult write(const QString &system, const QString &name) const
    {
        return m_program.run({QStringLiteral("convert"), QStringLiteral("--system"), system,
                              QStringLiteral("-o"), path(name), m_list});
    }

    ProgramResult read(const QString &system, const QString &name) const
    {
        return m_program.run({QStringLiteral("convert"), QStringLiteral("--csv"),
                              QStringLiteral("--system"), system, path(name)});
    }

    ProgramRun m_program;
    QString m_document;
    QString m_list;
};

TEST_F(ChangedSystems, AreNotTakenForTheOnesTheyWere)
{
    const struct
    {
        const char *name;
        QString document;
        QList<const char *> mentioned; ///< where it is read as the system that it was
    } rows[] = {
        {"plane", withOtherEasting(m_document), {"x_0 is 100000 there and 300000 here"}},
        {"plane_by_name",
         withoutOrigin(withOtherEasting(m_document)),
         {"x_0 is 100000 there and 300000 here"}},
        {"shift_by_name",
         withoutOrigin(withShift(m_document)),
         {"states the datum shift -100,0,0,0,0,0,0"}},
    };
    const QString ny = path(QStringLiteral("ny.xml"));
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_NE(row.document, m_document);
        const QString changed =
            system(QString::fromLatin1(row.name) + QStringLiteral(".xml"), row.document);
        const QString file = QString::fromLatin1(row.name) + QStringLiteral(".dxf");
        ASSERT_EQ(write(changed, file).status, 0);
        EXPECT_FALSE(test::readFile(path(file)).contains("EPSG:2263"));
        const ProgramResult back = read(changed, file);
        EXPECT_EQ(back.status, 0) << back.err;
        EXPECT_NEAR(numberIn(csvRows(back.out).value(0), QStringLiteral("wgs84_longitude_deg")),
                    -73.95, 1e-9);
        const ProgramResult other = read(ny, file);
        EXPECT_EQ(other.status, 2);
        EXPECT_EQ(other.out, QString());
        EXPECT_TRUE(mentionsAll(other.err, row.mentioned)) << other.err;
    }
}

TEST_F(ChangedSystems, WithAnotherShiftAreWarnedOfBesideTheirCode)
{
    const QString shifted = system(QStringLiteral("shifted.xml"), withShift(m_document));
    for (const char *const name : {"e.dxf", "e.gpkg", "e.shp"}) {
        SCOPED_TRACE(name);
        const ProgramResult result = write(shifted, QString::fromLatin1(name));
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_TRUE(mentionsAll(result.err, {name, "code EPSG:2263", "another datum shift"}))
            << result.err;
    }
}

TEST_F(ChangedSystems, ThatOnlyLostTheirOriginAreReadByTheirName)
{
    const QString ny = path(QStringLiteral("ny.xml"));
    const QString unnamed = system(QStringLiteral("plain.xml"), withoutOrigin(m_document));
    ASSERT_EQ(write(unnamed, QStringLiteral("p.dxf")).status, 0);
    for (const QString &reader : {unnamed, ny}) {
        const ProgramResult back = read(reader, QStringLiteral("p.dxf"));
        EXPECT_EQ(back.status, 0) << back.err;
        EXPECT_NEAR(numberIn(csvRows(back.out).value(0), QStringLiteral("wgs84_longitude_deg")),
                    -73.95, 1e-9);
    }
}

TEST(SystemsWithACode, HaveItInDrawingsWithThatOfTheirHeights)
{
    const ProgramRun program;
    const QString list =
        program.file(QStringLiteral("list.csv"), "point,lon,lat,h\nA,5.4,52.2,1\n");
    const QString file = program.home().path(QStringLiteral("p.dxf"));
    for (const char *const code : {"EPSG:28992", "EPSG:28992+5709", "EPSG:7415"}) {
        SCOPED_TRACE(code);
        const QString begin = QStringLiteral("convert --system %1 ").arg(QLatin1String(code));
        const ProgramResult written =
            program.run(words(begin + QStringLiteral("--force -o %1 %2").arg(file, list)));
        ASSERT_EQ(written.status, 0) << written.err;
        EXPECT_EQ(test::readFile(file).split('\n').value(1).split(' ').value(0), code);
        if (QByteArray(code) == "EPSG:7415")
            continue; // its heights are above NAP, for which there is no grid here
        const ProgramResult back = program.run(words(begin + QStringLiteral("--csv ") + file));
        ASSERT_EQ(back.status, 0) << back.err;
        EXPECT_NEAR(numberIn(csvRows(back.out).value(0), QStringLiteral("wgs84_longitude_deg")),
                    5.4, 1e-9);
    }
}

// A shift that is the database's, published or fitted, is nothing to warn of: the second of two.
TEST(SystemsWithACode, AreNotWarnedOfForAShiftOfTheDatabase)
{
    const ProgramRun program;
    const QString list =
        program.file(QStringLiteral("list.csv"), "point,lon,lat,h\nA,5.4,52.2,1\n");
    for (const char *const options : {"", " --fit", " --shift EPSG:15934"}) {
        SCOPED_TRACE(options);
        const QString rd = program.home().path(QStringLiteral("rd.xml"));
        ASSERT_EQ(program
                      .run(words(QStringLiteral("system import EPSG:28992 --force -o %1%2")
                                     .arg(rd, QLatin1String(options))))
                      .status,
                  0);
        const ProgramResult result =
            program.run(words(QStringLiteral("convert --force --system %1 -o %2 %3")
                                  .arg(rd, program.home().path(QStringLiteral("p.dxf")), list)));
        EXPECT_EQ(result.status, 0);
        EXPECT_FALSE(result.err.contains(QLatin1String("another datum shift"))) << result.err;
    }
}

} // namespace
} // namespace KelStd
