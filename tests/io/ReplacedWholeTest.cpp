#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"
#include "io/XmlTree.h"
#include "support/FullDisk.h"
#include "support/Raised.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <cstring>

namespace KelStd::test {
namespace {

class ReplacedWhole : public DocumentTest
{
protected:
    const QStringList onlyTheFile{QStringLiteral("system.xml")};
};

/// Larger than the buffers that it passes.
Coord largeSystem()
{
    Coord coord = completeSystem();
    for (int i = 0; i < 1000; ++i)
        coord.projection.param[QString::number(i)] = Param(ValueType_Double, Unit_None, i);
    return coord;
}

TEST_F(ReplacedWhole, FullDiskLeavesTheOldDocument)
{
    for (const Coord &coord : {completeSystem(), largeSystem()}) {
        const auto size = static_cast<rlim_t>(written(coord).size());
        for (const rlim_t room : {rlim_t{0}, rlim_t{1}, rlim_t{100}, size / 2, size - 1}) {
            SCOPED_TRACE(testing::Message() << size << " bytes into " << room);
            writeFile(path(), "old content");
            QString error;
            bool answer = true;
            {
                const FullDisk disk(room);
                answer = Coord_IO::xml_write(coord, path(), &error);
            }
            EXPECT_FALSE(answer);
            EXPECT_EQ(error, QString::fromLocal8Bit(std::strerror(EFBIG)));
            EXPECT_EQ(readFile(path()), QByteArray("old content"));
            EXPECT_EQ(entries(), onlyTheFile);
        }
    }
}

TEST_F(ReplacedWhole, FullDiskLeavesNoNewFile)
{
    for (const Coord &coord : {completeSystem(), largeSystem()}) {
        bool answer = true;
        {
            const FullDisk disk(1000);
            answer = Coord_IO::xml_write(coord, path(), nullptr);
        }
        EXPECT_FALSE(answer);
        EXPECT_TRUE(entries().isEmpty());
    }
}

TEST_F(ReplacedWhole, JustEnoughRoomIsEnough)
{
    for (const Coord &coord : {completeSystem(), largeSystem()}) {
        const QByteArray expected = withSortedAttributes(written(coord));
        const QByteArray whole = readFile(path());
        writeFile(path(), "old content");
        bool answer = false;
        {
            const FullDisk disk(static_cast<rlim_t>(whole.size()));
            answer = Coord_IO::xml_write(coord, path(), nullptr);
        }
        EXPECT_TRUE(answer);
        EXPECT_EQ(withSortedAttributes(readFile(path())), expected);
        EXPECT_EQ(entries(), onlyTheFile);
    }
}

struct PlaceOfATime
{
    const char *name;
    void (*put)(Coord &);
};

constexpr PlaceOfATime places[] = {
    {"projection parameter",
     [](Coord &c) { c.projection.param[QStringLiteral("azimuth")].valType = ValueType_Time; }},
    {"dictionary entry",
     [](Coord &c) { c.projection.param[QStringLiteral("choice")].valType = ValueType_Time; }},
    {"datum", [](Coord &c) { c.ellipsoidTransform.ratio_ppm.valType = ValueType_Time; }},
    {"plane", [](Coord &c) { c.planeTransform.ratio.valType = ValueType_Time; }},
    {"fitting", [](Coord &c) { c.elevationFitting.east_zero_y0.valType = ValueType_Time; }},
};

TEST_F(ReplacedWhole, TimeIsRaisedAndLeavesTheOldDocument)
{
    for (const PlaceOfATime &place : places) {
        SCOPED_TRACE(place.name);
        writeFile(path(), "old content");
        Coord coord = completeSystem();
        place.put(coord);
        const auto raised =
            messageRaisedByPointer([&] { Coord_IO::xml_write(coord, path(), nullptr); });
        ASSERT_TRUE(raised.has_value());
        EXPECT_EQ(*raised, "No Time Value In Make Coordinate");
        EXPECT_EQ(readFile(path()), QByteArray("old content"));
        EXPECT_EQ(entries(), onlyTheFile);
    }
}

TEST_F(ReplacedWhole, TimeLeavesNoNewFile)
{
    Coord coord = completeSystem();
    coord.planeTransform.ratio.valType = ValueType_Time;
    EXPECT_TRUE(
        messageRaisedByPointer([&] { Coord_IO::xml_write(coord, path(), nullptr); }).has_value());
    EXPECT_TRUE(entries().isEmpty());
}

TEST_F(ReplacedWhole, TimeOfADictionaryWithoutEntriesIsNotWritten)
{
    Coord coord = completeSystem();
    coord.planeTransform.ratio.valType = ValueType_Time;
    coord.planeTransform.ratio.isDictionary = true;
    const XmlElement ratio = parsed(written(coord)).child("Plane_Transform").child("ratio");
    EXPECT_EQ(ratio.attribute("valType"), QString());
}

/// Opening comes first.
TEST_F(ReplacedWhole, TimeIsNotRaisedWhenTheFileCannotBeOpened)
{
    Coord coord = completeSystem();
    coord.planeTransform.ratio.valType = ValueType_Time;
    for (const QString &fileName : {QString(), path(QStringLiteral("no/such/folder.xml"))}) {
        bool answer = true;
        EXPECT_FALSE(messageRaisedByPointer([&] {
                         answer = Coord_IO::xml_write(coord, fileName, nullptr);
                     }).has_value());
        EXPECT_FALSE(answer);
    }
}

TEST_F(ReplacedWhole, ReaderOfTheOldFileGoesOnReadingIt)
{
    writeFile(path(), "old content");
    QFile reader(path());
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    written(completeSystem());
    EXPECT_EQ(reader.readAll(), QByteArray("old content"));
}

TEST_F(ReplacedWhole, LinkStaysALink)
{
    writeFile(path(QStringLiteral("target.xml")), "old content");
    ASSERT_TRUE(QFile::link(path(QStringLiteral("target.xml")), path()));
    written(completeSystem());
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(withSortedAttributes(readFile(path(QStringLiteral("target.xml")))),
              withSortedAttributes(storedDocument("complete.xml")));
}

TEST_F(ReplacedWhole, NamesWithBlanksPercentsAndOtherScriptsAreFileNames)
{
    for (const char *name :
         {"a b.xml", "%1 %2.xml", "Düne 北京.xml", "quote'\".xml", "no extension", ".hidden"}) {
        SCOPED_TRACE(name);
        const QString fileName = path(QString::fromUtf8(name));
        EXPECT_TRUE(Coord_IO::xml_write(completeSystem(), fileName, nullptr));
        Coord coord;
        EXPECT_TRUE(Coord_IO::xml_read(fileName, coord, nullptr));
        EXPECT_EQ(coord.coord_name, completeSystem().coord_name);
    }
    EXPECT_EQ(entries().size(), 6);
}

} // namespace
} // namespace KelStd::test
