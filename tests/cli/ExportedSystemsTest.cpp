// Exported systems, read by GDAL's programs and by cs2cs.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QFile>

#include <cmath>
#include <ostream>

namespace KelStd {
namespace {

using test::ProgramRun;

struct Exported
{
    const char *source;
    const char *shift;
    const char *longitude; ///< of a place in its area [deg]
    const char *latitude;
};

void PrintTo(const Exported &row, std::ostream *out)
{
    *out << row.source;
}

class ExportedSystems : public testing::TestWithParam<Exported>
{
protected:
    ExportedSystems() : m_system(m_program.home().path(QStringLiteral("system.xml")))
    {
        const auto result = m_program.run({QStringLiteral("system"), QStringLiteral("import"),
                                           text(GetParam().source), QStringLiteral("--shift"),
                                           text(GetParam().shift), QStringLiteral("-o"), m_system});
        EXPECT_EQ(result.status, 0) << result.err;
    }

    static QString text(const char *latin1) { return QString::fromLatin1(latin1); }

    /// The file of the system in a form.
    QString exported(const char *form) const
    {
        const QString file = m_program.home().path(text(form) + QStringLiteral(".txt"));
        const auto result =
            m_program.run({QStringLiteral("system"), QStringLiteral("export"), m_system,
                           QStringLiteral("--as"), text(form), QStringLiteral("-o"), file});
        EXPECT_EQ(result.status, 0) << result.err;
        return file;
    }

    /// The same as an argument for GDAL's programs, which take PROJJSON as a text alone.
    QString definition(const char *form) const
    {
        const QString file = exported(form);
        return text(form) == QLatin1String("projjson") ? QString::fromUtf8(test::readFile(file))
                                                       : file;
    }

    /// What a program prints, which has to succeed.
    static QString output(const QString &program, const QStringList &arguments,
                          const QByteArray &input = {})
    {
        QProcess process;
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60000)) << program;
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    /// Easting and northing of the place, as the program converts.
    QPair<double, double> converted() const
    {
        const auto result =
            m_program.run({QStringLiteral("convert"), QStringLiteral("--system"), m_system},
                          QByteArray(GetParam().longitude) + ',' + GetParam().latitude + ",0\n");
        EXPECT_EQ(result.status, 0) << result.err;
        const auto row = test::csvRows(result.out).value(0);
        return {test::numberIn(row, QStringLiteral("local_easting_m")),
                test::numberIn(row, QStringLiteral("local_northing_m"))};
    }

    ProgramRun m_program;
    QString m_system;
};

// Readers apply seven parameters linearly, the program by the full matrix.
constexpr double linearTolerance = 0.01; // [m]

TEST_P(ExportedSystems, AreUnderstoodByGdal)
{
    for (const char *form : {"wkt2", "projjson", "proj", "esri"}) {
        SCOPED_TRACE(form);
        const QString shown =
            output(QStringLiteral("gdalsrsinfo"),
                   {QStringLiteral("-o"), QStringLiteral("proj4"), definition(form)});
        EXPECT_TRUE(shown.contains(QLatin1String("+proj="))) << shown;
    }
}

// GDAL takes the PROJ string as it is. Of a system whose code it knows from the other forms it
// drops the datum shift and chooses one, which is as good as the database says: 3 m here at most.
TEST_P(ExportedSystems, AreWhereOgrTransformsTo)
{
    const QByteArray point = QByteArray("{\"type\":\"FeatureCollection\",\"features\":[{\"type\":"
                                        "\"Feature\",\"properties\":{},\"geometry\":{\"type\":"
                                        "\"Point\",\"coordinates\":[")
                             + GetParam().longitude + ',' + GetParam().latitude + "]}}]}";
    const QString in = m_program.file(QStringLiteral("in.geojson"), point);
    const auto [easting, northing] = converted();
    for (const char *form : {"wkt2", "projjson", "proj"}) {
        SCOPED_TRACE(form);
        const QString out = m_program.home().path(text(form) + QStringLiteral(".csv"));
        output(QStringLiteral("ogr2ogr"),
               {QStringLiteral("-f"), QStringLiteral("CSV"), out, in, QStringLiteral("-s_srs"),
                QStringLiteral("EPSG:4326"), QStringLiteral("-t_srs"), definition(form),
                QStringLiteral("-lco"), QStringLiteral("GEOMETRY=AS_XY")});
        const auto row = test::csvRows(QString::fromUtf8(test::readFile(out))).value(0);
        const double tolerance = text(form) == QLatin1String("proj") ? linearTolerance : 3.0;
        EXPECT_NEAR(test::numberIn(row, QStringLiteral("X")), easting, tolerance);
        EXPECT_NEAR(test::numberIn(row, QStringLiteral("Y")), northing, tolerance);
    }
}

// cs2cs prints in the order of the system's axes, which may begin with the northing.
TEST_P(ExportedSystems, AreWhereCs2csTransformsTo)
{
    const auto [easting, northing] = converted();
    const QByteArray input = QByteArray(GetParam().latitude) + ' ' + GetParam().longitude + '\n';
    for (const char *form : {"wkt2", "projjson"}) {
        SCOPED_TRACE(form);
        const QStringList words =
            output(QStringLiteral("cs2cs"),
                   {QStringLiteral("-f"), QStringLiteral("%.5f"), QStringLiteral("EPSG:4326"),
                    QStringLiteral("+to"),
                    QString::fromUtf8(test::readFile(exported(form))).trimmed()},
                   input)
                .simplified()
                .split(QLatin1Char(' '));
        ASSERT_GE(words.size(), 2);
        const double first = words.at(0).toDouble();
        const double second = words.at(1).toDouble();
        const bool isEastFirst = std::abs(first - easting) < std::abs(first - northing);
        EXPECT_NEAR(isEastFirst ? first : second, easting, linearTolerance);
        EXPECT_NEAR(isEastFirst ? second : first, northing, linearTolerance);
    }
}

INSTANTIATE_TEST_SUITE_P(Systems, ExportedSystems,
                         testing::Values(Exported{"EPSG:32631", "1", "3.5", "52.25"},
                                         Exported{"EPSG:2154", "1", "2.25", "47.5"},
                                         Exported{"EPSG:31467", "EPSG:1777", "9.5", "49.5"},
                                         Exported{"EPSG:28992", "EPSG:4833", "5.75", "52.25"},
                                         Exported{"EPSG:27700", "EPSG:1314", "-1.5", "53.5"}),
                         [](const auto &row) {
                             return QString::fromLatin1(row.param.source)
                                 .replace(QLatin1Char(':'), QLatin1Char('_'))
                                 .toStdString();
                         });

} // namespace
} // namespace KelStd
