#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"
#include "io/XmlTree.h"
#include "support/FullDisk.h"
#include "support/Raised.h"
#include "support/Unprivileged.h"

#include <KelStd/io/WholeFile.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace KelStd::test {
namespace {

class ReplacedWhole : public DocumentTest
{
protected:
    void expectRefused(const Coord &coord, const char *message) const
    {
        writeFile(path(), "old content");
        QString error;
        EXPECT_FALSE(Coord_IO::xml_write(coord, path(), &error));
        EXPECT_EQ(error, message);
        EXPECT_EQ(readFile(path()), QByteArray("old content"));
        EXPECT_EQ(entries(), onlyTheFile);
    }

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

struct PlaceOfAText
{
    const char *name;
    void (*put)(Coord &, const QString &);
};

constexpr PlaceOfAText textPlaces[] = {
    {"system", [](Coord &c, const QString &text) { c.coord_name = text; }},
    {"ellipsoid", [](Coord &c, const QString &text) { c.ellipsoid.ellipsoid_name = text; }},
    {"key of a parameter", [](Coord &c, const QString &text) { c.projection.param[text] = {}; }},
    {"name for PROJ", [](Coord &c, const QString &text) { c.projection.paramProj4[text] = text; }},
    {"key of a dictionary",
     [](Coord &c, const QString &text) {
         c.projection.param[QStringLiteral("choice")].dictionarySelKey = text;
     }},
    {"value of an unknown kind",
     [](Coord &c, const QString &text) {
         Param &param = c.projection.param[QStringLiteral("azimuth")];
         param.valType = static_cast<EValueType>(99);
         param.value = text;
     }},
    {"model", [](Coord &c, const QString &text) { c.geoidModel.modelFileName = text; }},
};

/// XML 1.0 leaves U+FFFE and U+FFFF out (section 2.2), and UTF-8 the halves of a surrogate pair:
/// such a file could not be read, or would be read as another text.
TEST_F(ReplacedWhole, TextThatNoDocumentCanHoldLeavesTheOldOne)
{
    const QString texts[] = {QString(QChar(0xFFFE)), QStringLiteral("a") + QChar(0xFFFF),
                             QChar(0xD800) + QStringLiteral("b"), QString(QChar(0xDFFF)),
                             QString(QChar(0xDC00)) + QChar(0xD800)};
    for (const PlaceOfAText &place : textPlaces) {
        for (const QString &text : texts) {
            SCOPED_TRACE(testing::Message() << place.name << ' ' << text.at(0).unicode());
            Coord coord = completeSystem();
            place.put(coord, text);
            expectRefused(coord, "A text has a character that no XML document can hold");
        }
    }
}

/// Reading refuses more than 64 MiB.
TEST_F(ReplacedWhole, DocumentTooLargeToBeReadLeavesTheOldOne)
{
    Coord coord = completeSystem();
    coord.coord_name = QString(64 * 1024 * 1024, QLatin1Char('n'));
    expectRefused(coord, "The document would be too large to be read");
}

TEST_F(ReplacedWhole, EveryOtherCharacterComesBack)
{
    const auto expectKept = [this](const QString &text) {
        Coord coord = completeSystem();
        coord.coord_name = text;
        ASSERT_TRUE(Coord_IO::xml_write(coord, path(), nullptr));
        Coord again;
        ASSERT_TRUE(Coord_IO::xml_read(path(), again, nullptr));
        EXPECT_EQ(again.coord_name, text);
    };
    QString plane;
    for (char16_t c = 0; c < 0xFFFE; ++c) {
        if (!QChar::isSurrogate(c))
            plane += QChar(c);
    }
    expectKept(plane);
    expectKept(QString::fromUtf8("\U00010000 \U0001F30D \U0010FFFF"));
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

TEST_F(ReplacedWhole, LinksToALinkStayLinks)
{
    // The second is too long for a temporary file beside it.
    const QString names[] = {QStringLiteral("system.xml"), QString(250, QLatin1Char('n')),
                             QStringLiteral("target.xml")};
    for (const bool exists : {true, false}) {
        if (exists)
            writeFile(path(names[2]), "old content");
        ASSERT_TRUE(QFile::link(path(names[2]), path(names[1])));
        ASSERT_TRUE(QFile::link(path(names[1]), path(names[0])));
        written(completeSystem());
        EXPECT_TRUE(QFileInfo(path(names[0])).isSymLink());
        EXPECT_TRUE(QFileInfo(path(names[1])).isSymLink());
        EXPECT_FALSE(QFileInfo(path(names[2])).isSymLink());
        EXPECT_EQ(withSortedAttributes(readFile(path(names[2]))),
                  withSortedAttributes(storedDocument("complete.xml")));
        for (const QString &name : names)
            QFile::remove(path(name));
    }
}

TEST_F(ReplacedWhole, LinksInACircleAreRefused)
{
    ASSERT_TRUE(QFile::link(path(), path(QStringLiteral("other.xml"))));
    ASSERT_TRUE(QFile::link(path(QStringLiteral("other.xml")), path()));
    QString error;
    EXPECT_FALSE(Coord_IO::xml_write(completeSystem(), path(), &error));
    EXPECT_EQ(error, QString::fromLocal8Bit(std::strerror(ELOOP)));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(entries().size(), 2);
}

TEST_F(ReplacedWhole, ReadOnlyFileOfAnyNameIsRefused)
{
    ASSERT_TRUE(QFile::setPermissions(path(QString()), QFileDevice::Permissions(0x7777)));
    for (const int length : {5, 240, 250, 255}) {
        SCOPED_TRACE(length);
        const QString name(length, QLatin1Char('n'));
        writeFile(path(name), "old content");
        ASSERT_TRUE(QFile::setPermissions(path(name), QFileDevice::ReadOwner));
        QString error;
        bool answer = true;
        {
            const Unprivileged reader;
            answer = Coord_IO::xml_write(completeSystem(), path(name), &error);
        }
        EXPECT_FALSE(answer);
        EXPECT_FALSE(error.isEmpty());
        EXPECT_EQ(readFile(path(name)), QByteArray("old content"));
        EXPECT_EQ(entries(), QStringList{name});
        QFile::remove(path(name));
    }
}

TEST_F(ReplacedWhole, PipeIsWrittenIntoAndStaysOne)
{
    const QByteArray fileName = QFile::encodeName(path());
    ASSERT_EQ(mkfifo(fileName.constData(), 0600), 0);
    const int reader = ::open(fileName.constData(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_TRUE(Coord_IO::xml_write(completeSystem(), path(), nullptr));
    QByteArray bytes(1 << 16, '\0');
    bytes.truncate(int(std::max<ssize_t>(0, ::read(reader, bytes.data(), size_t(bytes.size())))));
    ::close(reader);
    EXPECT_EQ(withSortedAttributes(bytes), withSortedAttributes(storedDocument("complete.xml")));
    EXPECT_FALSE(QFileInfo(path()).isFile());
    EXPECT_EQ(entries(), onlyTheFile);
}

/// Not as root: a mistake here would replace the machine's devices.
TEST_F(ReplacedWhole, DeviceThatIsFullSaysSo)
{
    const Unprivileged user;
    QString error;
    EXPECT_FALSE(Coord_IO::xml_write(completeSystem(), QStringLiteral("/dev/full"), &error));
    EXPECT_EQ(error, QString::fromLocal8Bit(std::strerror(ENOSPC)));
    EXPECT_TRUE(Coord_IO::xml_write(completeSystem(), QStringLiteral("/dev/null"), nullptr));
    EXPECT_FALSE(QFileInfo(QStringLiteral("/dev/null")).isFile());
}

TEST_F(ReplacedWhole, BytesAreWrittenWholeOrNotAtAll)
{
    const QByteArray bytes = QByteArray(100'000, 'x') + QByteArray("\0\r\n", 3);
    QString error;
    EXPECT_TRUE(io::writeWholeFile(path(), bytes, &error));
    EXPECT_EQ(readFile(path()), bytes);
    for (const rlim_t room : {0U, 1U, 50'000U, 100'002U}) {
        bool answer = true;
        {
            const FullDisk disk(room);
            answer = io::writeWholeFile(path(), QByteArray("new") + bytes, &error);
        }
        EXPECT_FALSE(answer) << room;
        EXPECT_EQ(error, QString::fromLocal8Bit(std::strerror(EFBIG)));
        EXPECT_EQ(readFile(path()), bytes);
        EXPECT_EQ(entries(), onlyTheFile);
    }
    EXPECT_FALSE(io::writeWholeFile(path(QStringLiteral("no/such/place")), bytes, nullptr));
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
