#include "library/LibraryTest.h"
#include "support/FullDisk.h"

#include <sys/stat.h>

namespace KelStd::test {
namespace {

/// The working defaults with 7 decimals of plane coordinates, byte by byte.
const QByteArray sevenDecimals = QByteArray::fromHex("00000001"       // version
                                                     "00000001"       // coordOrder
                                                     "0600"           // double
                                                     "000000140600"   // latLong
                                                     "0000000a0400"   // earthHeight
                                                     "0000000a0700"   // xy
                                                     "0000000a0400"   // elevationHeight
                                                     "0000001e"       // timeFormat
                                                     "000000c80000"   // temprature
                                                     "000000640000"   // pressure
                                                     "000000170200"   // angle
                                                     "0000000a0400"   // distance
                                                     "0000000a0400"); // height

stShowConfig withDecimals(unsigned char decimals)
{
    stShowConfig config;
    config.xyPrecision = decimals;
    return config;
}

class ShowConfigFile : public LibraryTest
{
protected:
    static int decimals() { return library().getShowConfig()->xyPrecision; }
};

TEST_F(ShowConfigFile, HoldsTheStreamOfTheConfigurationAndNothingElse)
{
    const SignalCount count;
    library().setShowConfig(withDecimals(7));
    EXPECT_EQ(decimals(), 7);
    EXPECT_EQ(readFile(path("show.cfg")).toHex(), sevenDecimals.toHex());
    EXPECT_EQ(sevenDecimals.size(), 68);
    EXPECT_EQ(count.showConfigChanged, 1);
    EXPECT_EQ(count.showInCreateProjectCoordsChanged, 0);
}

TEST_F(ShowConfigFile, IsNotWrittenForAnEqualConfiguration)
{
    const SignalCount count;
    library().setShowConfig(stShowConfig());
    library().setShowConfig(*library().getShowConfig());
    EXPECT_FALSE(QFileInfo::exists(path("show.cfg")));
    library().setShowConfig(withDecimals(7));
    ASSERT_TRUE(QFile::remove(path("show.cfg")));
    library().setShowConfig(withDecimals(7));
    EXPECT_FALSE(QFileInfo::exists(path("show.cfg")));
    EXPECT_EQ(count.showConfigChanged, 1);
}

TEST_F(ShowConfigFile, ReplacesALongerFile)
{
    write("show.cfg", QByteArray(1000, 'x'));
    library().setShowConfig(withDecimals(7));
    EXPECT_EQ(readFile(path("show.cfg")).toHex(), sevenDecimals.toHex());
}

TEST_F(ShowConfigFile, IsCompleteWhenTheSignalComes)
{
    QByteArray seen;
    int decimalsThen = 0;
    QObject receiver;
    QObject::connect(&library(), &StandardLibrary::sgShowConfigChanged, &receiver, [&] {
        seen = readFile(path("show.cfg"));
        decimalsThen = decimals();
    });
    library().setShowConfig(withDecimals(7));
    EXPECT_EQ(seen.toHex(), sevenDecimals.toHex());
    EXPECT_EQ(decimalsThen, 7);
}

TEST_F(ShowConfigFile, ThatCannotBeWrittenIsNotAndTheConfigurationChangesAllTheSame)
{
    const SignalCount count;
    unsigned char next = 7;
    for (const QString &unwritable : {QString(), path("no such folder/show.cfg"), path("custom")}) {
        library().setShowConfigFilePath(unwritable);
        library().setShowConfig(withDecimals(next));
        EXPECT_EQ(decimals(), next);
        ++next;
    }
    ASSERT_EQ(mkfifo(QFile::encodeName(path("fifo")).constData(), 0600), 0);
    library().setShowConfigFilePath(path("fifo"));
    library().setShowConfig(withDecimals(next));
    EXPECT_EQ(decimals(), next);
    EXPECT_EQ(count.showConfigChanged, 4);
    EXPECT_FALSE(QFileInfo::exists(path("no such folder")));
}

TEST_F(ShowConfigFile, OnAFullDiskKeepsItsOldContent)
{
    const SignalCount count;
    library().setShowConfig(withDecimals(7));
    for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{67}}) {
        const FullDisk disk(room);
        library().setShowConfig(withDecimals(static_cast<unsigned char>(8 + room)));
        EXPECT_EQ(decimals(), 8 + static_cast<int>(room));
    }
    EXPECT_EQ(readFile(path("show.cfg")).toHex(), sevenDecimals.toHex());
    EXPECT_EQ(count.showConfigChanged, 4);
    {
        const FullDisk disk(68);
        library().setShowConfig(withDecimals(9));
    }
    EXPECT_EQ(readFile(path("show.cfg")).size(), 68);
    EXPECT_EQ(readFile(path("show.cfg")).at(26), '\x09');
}

TEST_F(ShowConfigFile, OnAFullDiskDoesNotAppearEmpty)
{
    {
        const FullDisk disk(10);
        library().setShowConfig(withDecimals(7));
    }
    EXPECT_FALSE(QFileInfo::exists(path("show.cfg")));
}

TEST_F(ShowConfigFile, IsLoadedIntoTheOneConfiguration)
{
    const stShowConfig *before = library().getShowConfig();
    write("show.cfg", sevenDecimals);
    library().loadLibrary();
    EXPECT_EQ(library().getShowConfig(), before);
    EXPECT_TRUE(*before == withDecimals(7));
}

TEST_F(ShowConfigFile, OfAnotherVersionLeavesTheConfiguration)
{
    library().setShowConfig(withDecimals(9));
    QByteArray other = sevenDecimals;
    for (const char version : {'\0', '\2', '\xFF'}) {
        other[3] = version;
        write("show.cfg", other);
        library().loadLibrary();
        EXPECT_TRUE(*library().getShowConfig() == withDecimals(9));
    }
}

TEST_F(ShowConfigFile, ThatIsMissingOrNoneOrNoFileLeavesTheConfiguration)
{
    library().setShowConfig(withDecimals(9));
    ASSERT_TRUE(QFile::remove(path("show.cfg")));
    library().loadLibrary();
    EXPECT_EQ(decimals(), 9);
    EXPECT_FALSE(QFileInfo::exists(path("show.cfg")));
    ASSERT_EQ(mkfifo(QFile::encodeName(path("fifo")).constData(), 0600), 0);
    for (const QString &none : {QString(), path("custom"), path("fifo")}) {
        library().setShowConfigFilePath(none);
        library().loadLibrary();
        EXPECT_EQ(decimals(), 9);
    }
}

/// The record's own `load` is content with zeros for what a stream does not have.
TEST_F(ShowConfigFile, ThatIsCutShortLeavesTheConfiguration)
{
    library().setShowConfig(withDecimals(9));
    for (int size = 0; size < sevenDecimals.size(); ++size) {
        write("show.cfg", sevenDecimals.left(size));
        library().loadLibrary();
        EXPECT_TRUE(*library().getShowConfig() == withDecimals(9)) << size;
    }
}

TEST_F(ShowConfigFile, MayGoOnBehindTheConfiguration)
{
    write("show.cfg", sevenDecimals + "more");
    library().loadLibrary();
    EXPECT_TRUE(*library().getShowConfig() == withDecimals(7));
}

} // namespace
} // namespace KelStd::test
