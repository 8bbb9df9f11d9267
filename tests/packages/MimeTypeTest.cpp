// The type that desktops give to a coordinate system's document, and to others not: asked are the
// desktops' own programs, with a database of types that has ours beside those of freedesktop.org.

#include "house/SourceFiles.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

const QString coordType = QStringLiteral("application/vnd.kelstd.coord+xml");

class MimeType : public testing::Test
{
protected:
    void SetUp() override
    {
        const QString packages = m_data.filePath(QStringLiteral("mime/packages/"));
        test::writeFile(packages + QStringLiteral("kelstd.xml"),
                        test::sourceText(QStringLiteral("packaging/mime/kelstd.xml")).toUtf8());
        const QString common = QStringLiteral("/usr/share/mime/packages/freedesktop.org.xml");
        test::writeFile(packages + QStringLiteral("freedesktop.org.xml"), test::readFile(common));
        EXPECT_EQ(output(QStringLiteral("update-mime-database"),
                         {QStringLiteral("-V"), m_data.filePath(QStringLiteral("mime"))}),
                  QString());
    }

    /// What a program prints on its standard output and, where it complains, on standard error.
    QString output(const QString &program, const QStringList &arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_DATA_DIRS"), m_data.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"),
                           m_data.filePath(QStringLiteral("none")));
        // Does not wait for the disk.
        environment.insert(QStringLiteral("PKGSYSTEM_ENABLE_FSYNC"), QStringLiteral("0"));
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished()) << program;
        const QString out = QString::fromUtf8(process.readAllStandardOutput());
        const QString err = QString::fromUtf8(process.readAllStandardError());
        // -V tells of each file that is written.
        return out.contains(QLatin1String("Wrote ")) || err.contains(QLatin1String("Wrote "))
                   ? QString()
                   : out + err;
    }

    QString file(const QString &name, const QByteArray &bytes) const
    {
        test::writeFile(m_data.filePath(name), bytes);
        return m_data.filePath(name);
    }

    /// By the name and what stands in the file.
    QString typeOf(const QString &path) const
    {
        return output(QStringLiteral("mimetype"), {QStringLiteral("--brief"), path}).trimmed();
    }

    /// The same as GNOME's library sees it, which opens a file only where the name tells nothing.
    QString typeByGio(const QString &path) const
    {
        return output(QStringLiteral("gio"),
                      {QStringLiteral("info"),
                       QStringLiteral("--attributes=standard::content-type"), path})
            .section(QStringLiteral("content-type: "), 1)
            .section(QLatin1Char('\n'), 0, 0)
            .trimmed();
    }

    QTemporaryDir m_data;
};

struct Content
{
    const char *what;
    QByteArray bytes;
    bool isSystem;
};

QByteArray ofTree(const char *name)
{
    return test::sourceText(QString::fromLatin1(name)).toUtf8();
}

// One test: the database of all types takes its time.
TEST_F(MimeType, IsThatOfCoordinateSystemsAlone)
{
    const QByteArray declared = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    const Content rows[] = {
        {"our own", ofTree("examples/rd_new.xml"), true},
        {"with a fit", ofTree("examples/site.xml"), true},
        {"behind a comment", ofTree("data/library/standard/CH1903+_LV95.xml"), true},
        {"attributes in another order", declared + "<Coord coord_name=\"A\" ver=\"1\"/>", true},
        {"Windows' ends of lines",
         "<?xml version=\"1.0\"?>\r\n<Coord ver=\"1\" coord_name=\"A\"></Coord>\r\n", true},
        {"apostrophes", "<?xml version='1.0'?><Coord ver='1' coord_name='A'/>", true},
        {"no declaration", "<Coord ver=\"1\" coord_name=\"A\"/>", true},
        {"a byte order mark", "\xEF\xBB\xBF" + declared + "<Coord ver=\"1\" coord_name=\"A\"/>",
         true},
        {"further in", declared + "<Points>\n<Coord ver=\"1\" coord_name=\"A\"/>\n</Points>",
         false},
        {"at once further in", declared + "<Coords><Coord ver=\"1\" coord_name=\"A\"/></Coords>",
         false},
        {"another name", declared + "<Coordinate ver=\"1\"/>", false},
        {"a list of ellipsoids", ofTree("data/library/ellipsoids/Bessel 1841.xml"), false},
        {"another's", declared + "<kml xmlns=\"http://www.opengis.net/kml/2.2\"/>", false},
    };
    for (const Content &row : rows) {
        SCOPED_TRACE(row.what);
        const QString named = typeOf(file(QStringLiteral("a.xml"), row.bytes));
        EXPECT_EQ(named == coordType, row.isSystem) << named;
        const QString unnamed = typeByGio(file(QStringLiteral("document"), row.bytes));
        EXPECT_EQ(unnamed == coordType, row.isSystem) << unnamed;
    }
    const QString path = file(QStringLiteral("site.coord.xml"), ofTree("examples/rd_new.xml"));
    EXPECT_EQ(typeByGio(path), coordType);
    EXPECT_EQ(typeOf(path), coordType);
}

} // namespace
} // namespace KelStd
