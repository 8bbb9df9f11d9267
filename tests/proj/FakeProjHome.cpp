#include "proj/FakeProjHome.h"

#include "support/LogCapture.h"
#include "support/Printers.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QLibrary>

namespace KelStd::test {

QByteArray fakeProjBytes(const QString &variant)
{
    const QByteArray bytes = readFile(QStringLiteral(KELSTD_TEST_FAKE_PROJ "/") + variant);
    EXPECT_FALSE(bytes.isEmpty()) << variant;
    return bytes;
}

FakeProj &fakeProjOf(const QString &libraryFile)
{
    QLibrary library(libraryFile);
    const auto record =
        reinterpret_cast<decltype(&::kelstdFakeProj)>(library.resolve("kelstdFakeProj"));
    if (record != nullptr)
        return *record();
    ADD_FAILURE() << "not a stand-in: " << libraryFile << ": " << library.errorString();
    static FakeProj none;
    return none;
}

FakeProjHome::FakeProjHome(const QByteArray &library)
{
    writeFile(libraryFile(), library);
    writeFile(path(QStringLiteral("proj/proj_enviroment")), markerBytes(3));
    EXPECT_TRUE(QDir().mkdir(path(QStringLiteral("proj/share"))));
}

QString FakeProjHome::libraryFile() const
{
    return path(QStringLiteral("proj/" KELSTD_PROJ_LIBRARY_NAME));
}

FakeProj &FakeProjHome::fake() const
{
    return fakeProjOf(libraryFile());
}

void FakeProjTest::SetUp()
{
    m_directory = QDir::currentPath();
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
}

void FakeProjTest::TearDown()
{
    EXPECT_EQ(QDir::currentPath(), m_directory);
    ProjLib::___unloadEnviroment();
}

bool projIsMissing()
{
    const LogCapture log;
    Pos pos;
    QString error;
    return !ProjLib::ConvertPosList(QStringLiteral("+proj=longlat"),
                                    QStringLiteral("+proj=longlat"), pos,
                                    ProjLib::WGS84LatLongH_to_WGS84XYZ, &error)
           && error == QLatin1String("No proj library.");
}

} // namespace KelStd::test
