// The functions that PROJ is given to open files with, called by its stand-in and held against the
// C library's own streams.

#include "proj/FakeProjHome.h"
#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace KelStd {
namespace {

/// A file opened by the functions of a context.
class OpenedFile
{
public:
    OpenedFile(const test::FakeProj::Files &files, const QString &name, PROJ_OPEN_ACCESS access)
        : m_files(files),
          m_handle(files.functions.open_cbk(nullptr, name.toUtf8().constData(), access, files.data))
    {}
    ~OpenedFile()
    {
        if (m_handle != nullptr)
            m_files.functions.close_cbk(nullptr, m_handle, m_files.data);
    }
    OpenedFile(const OpenedFile &) = delete;
    OpenedFile &operator=(const OpenedFile &) = delete;

    bool isOpen() const { return m_handle != nullptr; }

    std::string read(std::size_t size)
    {
        std::string bytes(size, '?');
        bytes.resize(
            m_files.functions.read_cbk(nullptr, m_handle, bytes.data(), size, m_files.data));
        return bytes;
    }
    std::size_t write(const std::string &bytes)
    {
        return m_files.functions.write_cbk(nullptr, m_handle, bytes.data(), bytes.size(),
                                           m_files.data);
    }
    bool seek(long long offset, int whence)
    {
        return m_files.functions.seek_cbk(nullptr, m_handle, offset, whence, m_files.data) != 0;
    }
    unsigned long long tell()
    {
        return m_files.functions.tell_cbk(nullptr, m_handle, m_files.data);
    }

private:
    const test::FakeProj::Files &m_files;
    PROJ_FILE_HANDLE *const m_handle;
};

struct StreamDeleter
{
    void operator()(std::FILE *stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, StreamDeleter>;

Stream openStream(const QString &name, const char *mode)
{
    return Stream(std::fopen(QFile::encodeName(name).constData(), mode));
}

class ProjFiles : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(ProjLib::___InitializeEnviroment()); }
    void TearDown() override { ProjLib::___unloadEnviroment(); }

    /// Of the default context, which leaves names as they stand.
    const test::FakeProj::Files &files() const { return home.fake().files.at(nullptr); }

    /// Of a builder's context.
    test::FakeProj::Files filesOfBuilder()
    {
        Coord coord;
        Coord::CreateDefaultTMercCoordination(coord);
        LocationBuilder builder(coord);
        builder.requireDefinitions();
        Location location;
        EXPECT_TRUE(builder.make(LocationBuilder::Frame::Wgs84Geographic, Pos(), location));
        for (const auto &[context, of] : home.fake().files) {
            if (context != nullptr)
                return of;
        }
        ADD_FAILURE() << "a builder's context has no functions of its own";
        return files();
    }

    test::FakeProjHome home{test::fakeProjBytes(QStringLiteral("whole"))};
};

/// Every byte tells where it stands.
QByteArray numbered(int size)
{
    QByteArray bytes;
    bytes.reserve(size);
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>((i * 31 + i / 256 * 7) & 0xFF));
    return bytes;
}

TEST_F(ProjFiles, ReadTheRowsOfAGridAfterItsHeader)
{
    const QByteArray bytes = numbered(20000);
    test::writeFile(home.path("a grid.gtx"), bytes);
    OpenedFile file(files(), home.path("a grid.gtx"), PROJ_OPEN_ACCESS_READ_ONLY);
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(file.read(4), bytes.left(4).toStdString());
    ASSERT_TRUE(file.seek(0, SEEK_SET));
    EXPECT_EQ(file.read(40), bytes.left(40).toStdString());
    EXPECT_EQ(file.tell(), 40U);
    ASSERT_TRUE(file.seek(40 + 5760, SEEK_SET));
    EXPECT_EQ(file.read(5760), bytes.mid(40 + 5760, 5760).toStdString());
    EXPECT_EQ(file.tell(), 40U + 2 * 5760U);
    EXPECT_EQ(file.read(20000), bytes.mid(40 + 2 * 5760).toStdString());
    EXPECT_EQ(file.tell(), 20000U);
    EXPECT_EQ(file.read(1), "");
}

/// A thousand steps, some of which write, beside a stream of the C library on a file alike.
TEST_F(ProjFiles, DoWhatAStreamDoes)
{
    const QByteArray bytes = numbered(5000);
    const std::array<QString, 2> names{home.path("ours"), home.path("stream")};
    for (const QString &name : names)
        test::writeFile(name, bytes);
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&random](int limit) {
            return std::uniform_int_distribution<int>(0, limit - 1)(random);
        };
        {
            OpenedFile ours(files(), names[0], PROJ_OPEN_ACCESS_READ_UPDATE);
            const Stream stream = openStream(names[1], "r+b");
            ASSERT_TRUE(ours.isOpen() && stream != nullptr);
            for (int step = 0; step < 1000; ++step) {
                SCOPED_TRACE(step);
                switch (below(8)) {
                case 0: {
                    const int whence = std::array<int, 3>{
                        SEEK_SET, SEEK_CUR, SEEK_END}[static_cast<std::size_t>(below(3))];
                    const long offset = below(9000) - 3000;
                    ASSERT_EQ(ours.seek(offset, whence),
                              std::fseek(stream.get(), offset, whence) == 0);
                    break;
                }
                case 1: {
                    const std::string written(static_cast<std::size_t>(below(700)),
                                              static_cast<char>('a' + below(26)));
                    // A stream wants to be placed between reading and writing.
                    ASSERT_EQ(std::fseek(stream.get(), 0, SEEK_CUR), 0);
                    ASSERT_EQ(ours.write(written), written.size());
                    ASSERT_EQ(std::fwrite(written.data(), 1, written.size(), stream.get()),
                              written.size());
                    ASSERT_EQ(std::fseek(stream.get(), 0, SEEK_CUR), 0);
                    break;
                }
                default: {
                    const auto size = static_cast<std::size_t>(below(below(2) == 0 ? 40 : 1500));
                    std::string expected(size, '?');
                    expected.resize(std::fread(expected.data(), 1, size, stream.get()));
                    ASSERT_EQ(ours.read(size), expected);
                }
                }
                ASSERT_EQ(ours.tell(), static_cast<unsigned long long>(std::ftell(stream.get())));
            }
        }
        ASSERT_EQ(test::readFile(names[0]), test::readFile(names[1]));
    }
}

TEST_F(ProjFiles, RefusePositionsThatNoFileHas)
{
    test::writeFile(home.path("a file"), numbered(100));
    OpenedFile file(files(), home.path("a file"), PROJ_OPEN_ACCESS_READ_ONLY);
    ASSERT_TRUE(file.seek(60, SEEK_SET));
    EXPECT_FALSE(file.seek(-1, SEEK_SET));
    EXPECT_FALSE(file.seek(-61, SEEK_CUR));
    EXPECT_FALSE(file.seek(-101, SEEK_END));
    EXPECT_FALSE(file.seek(LLONG_MAX, SEEK_CUR));
    EXPECT_FALSE(file.seek(LLONG_MAX, SEEK_END));
    EXPECT_EQ(file.tell(), 60U);
    EXPECT_TRUE(file.seek(LLONG_MAX, SEEK_SET));
    EXPECT_EQ(file.read(10), "");
    EXPECT_EQ(file.read(1000), "");
}

TEST_F(ProjFiles, OpenAsTheyAreAskedTo)
{
    const QString name = home.path("a file");
    EXPECT_FALSE(OpenedFile(files(), name, PROJ_OPEN_ACCESS_READ_ONLY).isOpen());
    EXPECT_FALSE(OpenedFile(files(), name, PROJ_OPEN_ACCESS_READ_UPDATE).isOpen());
    EXPECT_FALSE(QFile::exists(name));
    {
        OpenedFile made(files(), name, PROJ_OPEN_ACCESS_CREATE);
        EXPECT_EQ(made.write("kept"), 4U);
        ASSERT_TRUE(made.seek(0, SEEK_SET));
        EXPECT_EQ(made.read(10), "kept");
    }
    {
        OpenedFile read(files(), name, PROJ_OPEN_ACCESS_READ_ONLY);
        EXPECT_EQ(read.read(10), "kept");
        EXPECT_EQ(read.write("lost"), 0U);
    }
    {
        OpenedFile changed(files(), name, PROJ_OPEN_ACCESS_READ_UPDATE);
        EXPECT_EQ(changed.write("K"), 1U);
    }
    EXPECT_EQ(test::readFile(name), "Kept");
    EXPECT_TRUE(OpenedFile(files(), name, PROJ_OPEN_ACCESS_CREATE).isOpen());
    EXPECT_EQ(test::readFile(name), "");
}

/// A host may start programs meanwhile.
TEST_F(ProjFiles, AreNotLeftToProgramsThatAreStarted)
{
    test::writeFile(home.path("a file"), "bytes");
    const OpenedFile file(files(), home.path("a file"), PROJ_OPEN_ACCESS_READ_ONLY);
    const QString opened = QFileInfo(home.path("a file")).canonicalFilePath();
    bool isFound = false;
    for (const QString &number :
         QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (QFile::symLinkTarget("/proc/self/fd/" + number) != opened)
            continue;
        isFound = true;
        EXPECT_NE(fcntl(number.toInt(), F_GETFD) & FD_CLOEXEC, 0);
    }
    EXPECT_TRUE(isFound);
}

TEST_F(ProjFiles, ReadADirectoryAsNothing)
{
    OpenedFile file(files(), home.path("proj"), PROJ_OPEN_ACCESS_READ_ONLY);
    if (file.isOpen()) {
        EXPECT_EQ(file.read(40), "");
        EXPECT_EQ(file.read(4000), "");
    }
    EXPECT_FALSE(OpenedFile(files(), home.path("proj"), PROJ_OPEN_ACCESS_CREATE).isOpen());
}

/// The default context leaves relative names to the current directory, which is the private one
/// while it is used; a builder's looks them up there from wherever it is.
TEST_F(ProjFiles, AreLookedUpByTheirContext)
{
    test::writeFile(home.path("proj/here"), "private");
    EXPECT_FALSE(OpenedFile(files(), "./here", PROJ_OPEN_ACCESS_READ_ONLY).isOpen());
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(home.path("proj")));
    EXPECT_EQ(OpenedFile(files(), "./here", PROJ_OPEN_ACCESS_READ_ONLY).read(10), "private");
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(OpenedFile(filesOfBuilder(), "./here", PROJ_OPEN_ACCESS_READ_ONLY).read(10),
              "private");
}

} // namespace
} // namespace KelStd
