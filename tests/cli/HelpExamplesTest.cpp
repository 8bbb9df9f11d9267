// The examples with which the help of each command begins are complete: they work as they stand.

#include "cli/ProgramRun.h"
#include "location/PublishedFigures.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/ShiftGrids.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <ostream>

namespace KelStd {
namespace {

using test::ProgramRun;
using test::readFile;

class Desk
{
public:
    Desk()
    {
        put("points.csv", "point,longitude,latitude,height\nA,5.4,52.2,43\n");
        put("site.csv", "point,northing,easting,height\nA,463000,155000,43\n");
        put("site.xml", test::editedSystem(
                            QStringLiteral("rd_new.xml"),
                            {{QStringLiteral("Amersfoort / RD New"), QStringLiteral("My site")}}));
        put("harbour.xml", test::editedSystem(QStringLiteral("rd_new.xml"),
                                              {{QStringLiteral("Amersfoort / RD New"),
                                                QStringLiteral("Harbour")}}));
        put("model.ggf", test::ggfBytes(test::slopingGrid(), test::RowOrder::Reversed));
        put("new.gtx", "to be replaced");
        put("hospital.xml", readFile(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/examples/site.xml")));
        put("control.csv",
            readFile(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/examples/site_control.csv")));
        put("pairs.csv", "name,local_x,local_y,local_z,wgs84_x,wgs84_y,wgs84_z\n"
                         "A,3903506,368113,5013015,3904071,368163,5013481\n"
                         "B,3903397,368919,5013044,3903962,368969,5013510\n"
                         "C,3902752,368785,5013550,3903317,368835,5014016\n"
                         "D,3902807,368078,5013566,3903372,368128,5014032\n");
        put("shifts.gsb", test::ntv2Bytes());
        put("leap-seconds.list", readFile(QStringLiteral("/usr/share/zoneinfo/leap-seconds.list")));
        QDir(path("")).mkpath(QStringLiteral("other"));
        test::ownResourceDirectory(m_program.home());
    }

    test::ProgramResult shell(const QString &line) const
    {
        const auto process = m_program.process({});
        QProcessEnvironment environment = process->processEnvironment();
        environment.insert(QStringLiteral("PATH"),
                           QFileInfo(QStringLiteral(KELSTD_TEST_PROGRAM)).absolutePath()
                               + QLatin1Char(':') + environment.value(QStringLiteral("PATH")));
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(m_program.home().path());
        process->setProgram(QStringLiteral("/bin/sh"));
        process->setArguments({QStringLiteral("-c"), line});
        process->start();
        process->closeWriteChannel();
        test::ProgramResult result;
        constexpr int patience = 60000; // [ms]
        if (process->waitForFinished(patience))
            result.status = process->exitCode();
        result.out = QString::fromUtf8(process->readAllStandardOutput());
        result.err = QString::fromUtf8(process->readAllStandardError());
        return result;
    }

    QString path(const char *name) const { return m_program.home().path(QString::fromUtf8(name)); }

private:
    void put(const char *name, const QByteArray &bytes) const
    {
        test::writeFile(path(name), bytes);
    }

    ProgramRun m_program;
};

QStringList commands()
{
    return ProgramRun().run({QStringLiteral("help"), QStringLiteral("names")}).outLines();
}

TEST(HelpExamples, AllWork)
{
    const QStringList names = commands();
    ASSERT_GT(names.size(), 20);
    for (const QString &name : names) {
        // A clean desk for each command: libraries and grids are changed.
        const Desk desk;
        const QStringList help =
            desk.shell(QStringLiteral("kelstd %1 --help").arg(name)).out.split(QLatin1Char('\n'));
        if (name.startsWith(QLatin1String("library"))
            || name.startsWith(QLatin1String("display"))) {
            EXPECT_EQ(desk.shell(QStringLiteral("kelstd library add site.xml && kelstd library "
                                                "add --dir team --create site.xml"))
                          .status,
                      0);
        }
        for (const QString &example : help.mid(1, 2)) {
            SCOPED_TRACE(example.toStdString());
            const auto result = desk.shell(example.trimmed());
            EXPECT_EQ(result.status, 0) << result.err;
        }
    }
}

} // namespace
} // namespace KelStd
