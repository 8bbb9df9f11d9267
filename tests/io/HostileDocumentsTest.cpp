#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

#include <KelStd/io/DocumentLimits.h>

#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <random>

namespace KelStd::test {
namespace {

/// Far more than a refusal takes on a slow machine, far less than one that grows with the square
/// of the size.
constexpr qint64 quickly = 10000; // [ms]

class HostileDocuments : public DocumentTest
{
protected:
    void expectRefused(const QByteArray &document) const
    {
        QElapsedTimer timer;
        timer.start();
        Coord coord = completeSystem();
        QString error = QStringLiteral("untouched");
        EXPECT_FALSE(read(document, coord, &error));
        EXPECT_EQ(error, QStringLiteral("untouched"));
        expectSameSystem(coord, completeSystem());
        EXPECT_LT(timer.elapsed(), quickly);
    }
};

TEST_F(HostileDocuments, EmptyFileIsRefused)
{
    expectRefused("");
    expectRefused("\xEF\xBB\xBF");
    expectRefused("\xFF\xFE");
}

TEST_F(HostileDocuments, BinaryIsRefused)
{
    std::mt19937 random(20240229);
    std::uniform_int_distribution<int> byte(0, 255);
    for (const int size : {1, 2, 3, 100, 65536}) {
        QByteArray bytes(size, '\0');
        for (char &one : bytes)
            one = static_cast<char>(byte(random));
        expectRefused(bytes);
    }
    expectRefused(QByteArray(1000, '\0'));
    expectRefused(QByteArray(1000, '\xFF'));
    expectRefused(QByteArray("\x7F"
                             "ELF\x02\x01\x01",
                             7)
                  + QByteArray(100, '\0'));
}

TEST_F(HostileDocuments, NulBytesBetweenElementsAreRefused)
{
    const QByteArray nul(1, '\0');
    expectRefused(nul + DocumentPieces().bytes());
    QByteArray document = DocumentPieces().bytes();
    document.insert(document.indexOf("<Coord") + 3, nul);
    expectRefused(document);
}

TEST_F(HostileDocuments, ReplacedBytesDoNotCrash)
{
    const QByteArray whole = storedDocument("complete.xml");
    const int lastRecord = whole.indexOf("<Elevation_Fitting");
    int first = 0;
    for (const char bad : {'\0', '<', '&', '\xFF'}) {
        // Each at other places: all of them take minutes on a slow disk.
        for (int at = first++; at < whole.size(); at += 11) {
            QByteArray document = whole;
            document[at] = bad;
            Coord coord;
            const bool complete = read(document, coord);
            // What is read is read to its end.
            if (complete && at < lastRecord) {
                ASSERT_EQ(coord.elevationFitting.east_zero_y0.value.toDouble(), 510000.75) << at;
            }
        }
    }
}

TEST_F(HostileDocuments, TruncatedDocumentIsReadOnlyWhenNothingButBlanksIsMissing)
{
    const QByteArray whole = storedDocument("complete.xml");
    const int end = whole.lastIndexOf('>') + 1;
    for (int size = 0; size < whole.size(); ++size) {
        Coord coord;
        ASSERT_EQ(read(whole.left(size), coord), size >= end) << size << " bytes";
    }
}

/// A readable document with `count` levels of elements, the root being the first.
QByteArray nested(int count)
{
    DocumentPieces pieces;
    pieces.more = QByteArray("<n>").repeated(count - 1) + QByteArray("</n>").repeated(count - 1);
    return pieces.bytes();
}

TEST_F(HostileDocuments, NestingIsReadUpToItsLimit)
{
    Coord coord;
    EXPECT_TRUE(read(nested(10), coord));
    EXPECT_TRUE(read(nested(256), coord));
    expectRefused(nested(257));
}

TEST_F(HostileDocuments, ElementWithoutContentIsALevelToo)
{
    DocumentPieces pieces;
    pieces.more = QByteArray("<n>").repeated(254) + "<n/>" + QByteArray("</n>").repeated(254);
    Coord coord;
    EXPECT_TRUE(read(pieces.bytes(), coord));
    pieces.more = QByteArray("<n>").repeated(255) + "<n/>" + QByteArray("</n>").repeated(255);
    expectRefused(pieces.bytes());
}

TEST_F(HostileDocuments, DeepNestingIsRefusedQuickly)
{
    expectRefused(nested(200000));
    expectRefused(QByteArray("<n>").repeated(200000));
    expectRefused(QByteArray("<n a='>' b=\"/>\">").repeated(200000));
    expectRefused("\xFF\xFE" + QByteArray("<\0n\0>\0", 6).repeated(200000));
}

TEST_F(HostileDocuments, EndTagsThatAreNoneDoNotHideDeepNesting)
{
    const QByteArray ends = QByteArray("</n>").repeated(200000);
    const QByteArray deep = QByteArray("<n>").repeated(200000);
    expectRefused("<!--" + ends + "-->" + deep);
    expectRefused("<?note " + ends + "?>" + deep);
    expectRefused("<!DOCTYPE n SYSTEM '" + ends + "'>" + deep);
    expectRefused("<Coord a='" + ends + "'>" + deep);
    expectRefused("<Coord><![CDATA[" + ends + "]]>" + deep);
    expectRefused("<?xml version=\"1.0\" encoding=\"?>" + ends + "\"?>" + deep);
    expectRefused("<?xml version=\"?>" + ends + "\"?>" + deep);
    expectRefused(ends + deep);
    expectRefused("<Coord></Coord>" + ends + deep);
}

TEST_F(HostileDocuments, WhatLooksLikeNestingButIsNoneIsAccepted)
{
    const QByteArray deep = QByteArray("<n>").repeated(100000);
    const QByteArray escaped = QByteArray("&lt;n>").repeated(100000);
    for (const QByteArray &more :
         {"<!--" + deep + "-->", "<more><![CDATA[" + deep + "]]></more>", "<?note " + deep + "?>",
          "<more a=\"" + escaped + "\" b='" + escaped + "'/>", "<more>" + escaped + "</more>"}) {
        SCOPED_TRACE(more.left(20).toStdString());
        DocumentPieces pieces;
        pieces.more = more;
        Coord coord;
        EXPECT_TRUE(read(pieces.bytes(), coord));
        EXPECT_EQ(coord.coord_name, QStringLiteral("site"));
    }
}

TEST_F(HostileDocuments, ManyElementsSideBySideAreAccepted)
{
    DocumentPieces pieces;
    pieces.more = QByteArray("<n><m/></n>").repeated(100000);
    Coord coord;
    EXPECT_TRUE(read(pieces.bytes(), coord));
}

// Qt's tree takes several hundred bytes for each of them.
TEST_F(HostileDocuments, MoreMarkupThanFitsIntoMemoryIsRefused)
{
    const QByteArray frame = DocumentPieces().bytes();
    const int own = frame.count('<') + frame.count('=');
    constexpr int limit = 400000;
    for (const char *piece : {"<a/>", "<!---->", "<?a?>", "<a></a>", "<a b='1'/>"}) {
        SCOPED_TRACE(piece);
        const int each = QByteArray(piece).count('<') + QByteArray(piece).count('=');
        DocumentPieces pieces;
        pieces.more = QByteArray(piece).repeated((limit - own) / each);
        Coord coord;
        EXPECT_TRUE(read(pieces.bytes(), coord));
        pieces.more += QByteArray(piece).repeated(2 + own / each);
        expectRefused(pieces.bytes());
    }
    QByteArray tag = "<a";
    for (int i = 0; i <= limit; ++i)
        tag += " a" + QByteArray::number(i) + "=''";
    DocumentPieces pieces;
    pieces.more = tag + "/>";
    expectRefused(pieces.bytes());
}

TEST_F(HostileDocuments, TheBoundThatIsExceededIsTold)
{
    using Fault = io::DocumentFault;
    const auto faultOf = [this](const QByteArray &document) {
        writeFile(path(), document);
        Coord coord;
        io::DocumentFailure failure;
        const bool isRead = Coord_IO::xml_read(path(), coord, failure);
        EXPECT_EQ(isRead, failure.kind == Fault::None);
        EXPECT_EQ(failure.line > 0, failure.kind != Fault::None) << failure.text;
        return failure.kind;
    };
    EXPECT_EQ(faultOf(nested(256)), Fault::None);
    EXPECT_EQ(faultOf(nested(257)), Fault::NestedTooDeeply);
    EXPECT_EQ(faultOf("<Coord>" + QByteArray("<a/>").repeated(400000) + "</Coord>"),
              Fault::TooMuchMarkup);
    QByteArray tag = "<Coord";
    for (int i = 0; i <= 400000; ++i)
        tag += " a" + QByteArray::number(i) + "=''";
    EXPECT_EQ(faultOf(tag + "/>"), Fault::TooMuchMarkup);
}

TEST_F(HostileDocuments, EntityBombIsRefusedQuickly)
{
    QByteArray entities = "<!ENTITY e0 \"lol\">\n";
    for (int i = 1; i <= 12; ++i) {
        const QByteArray one = "&e" + QByteArray::number(i - 1) + ';';
        entities += "<!ENTITY e" + QByteArray::number(i) + " \"" + one.repeated(10) + "\">\n";
    }
    DocumentPieces pieces;
    pieces.declaration += "\n<!DOCTYPE Coord [\n" + entities + "]>";
    pieces.more = "<more>&e12;</more>";
    expectRefused(pieces.bytes());
    pieces.more = "<more a=\"&e12;\"/>";
    expectRefused(pieces.bytes());
}

TEST_F(HostileDocuments, EntityOfItselfIsRefused)
{
    DocumentPieces pieces;
    pieces.declaration += "\n<!DOCTYPE Coord [<!ENTITY a \"&b;\"><!ENTITY b \"&a;\">]>";
    pieces.more = "<more>&a;</more>";
    expectRefused(pieces.bytes());
}

TEST_F(HostileDocuments, EntitiesThatOpenElementsWithoutClosingThemAreRefused)
{
    DocumentPieces pieces;
    pieces.declaration += "\n<!DOCTYPE Coord [<!ENTITY up \"" + QByteArray("<n>").repeated(200)
                          + "\"><!ENTITY down \"" + QByteArray("</n>").repeated(200) + "\">]>";
    pieces.more = QByteArray("&up;").repeated(1000) + QByteArray("&down;").repeated(1000);
    expectRefused(pieces.bytes());
}

/// Qt's parser drops them, and a number ends where one stood.
TEST_F(HostileDocuments, EntitiesThatNobodyDeclaredAreRefused)
{
    DocumentPieces pieces;
    for (const char *reference :
         {"&nbsp;", "&x;", "&AMP;", "&#;", "&#x;", "&#x110000;", "&#1114112;", "&#xFFFE;",
          "&#65535;", "&#xD83C;", "&#xDF0D;", "&#xDF0D;&#xD83C;", "&#xD83C;&#x41;",
          "&#99999999999999999999;", "&#12", "&", "& ", "&;", "&#x1G;"}) {
        SCOPED_TRACE(reference);
        const QByteArray text = QByteArray("12") + reference + "345.5";
        pieces.rootAttributes = "ver=\"1\" coord_name=\"" + text + '"';
        pieces.datum = R"(<Ellipsoid_Transform ver="1"/>)";
        expectRefused(pieces.bytes());
        pieces.rootAttributes = R"(ver="1" coord_name="site")";
        pieces.datum = R"(<Ellipsoid_Transform ver="1"><x_translate ver="1" unit="Meter" )"
                       R"(valType="Distance" isDictionary="false">)"
                       + text + "</x_translate></Ellipsoid_Transform>";
        expectRefused(pieces.bytes());
    }
}

TEST_F(HostileDocuments, WhatLooksLikeAnEntityButIsNoneIsAccepted)
{
    DocumentPieces pieces;
    pieces.declaration += "<?other &nbsp; &?><!-- &nbsp; & -->";
    pieces.more = "<x><![CDATA[&nbsp; & &#x110000;]]></x>";
    Coord coord;
    EXPECT_TRUE(read(pieces.bytes(), coord));
}

/// The first says version 2, and the last would count.
TEST_F(HostileDocuments, TagsWithAnAttributeTwiceAreRefused)
{
    for (const char *attributes :
         {"ver='2' ver='1' coord_name='a'", "ver=\"1\" coord_name=\"a\" coord_name=\"a\"",
          "ver = '1' coord_name='a' ver= '1'", "ver='1' a='=' b='>' a =\n'x'"}) {
        SCOPED_TRACE(attributes);
        DocumentPieces pieces;
        pieces.rootAttributes = attributes;
        expectRefused(pieces.bytes());
    }
    DocumentPieces pieces;
    pieces.ellipsoid = "<Ellpsoid ver='1' biggerHalfAxle='1' reciprocal='2' biggerHalfAxle='3'/>";
    expectRefused(pieces.bytes());
}

TEST_F(HostileDocuments, AttributesThatOnlyLookAlikeAreAccepted)
{
    DocumentPieces pieces;
    pieces.rootAttributes =
        R"(ver="1" coord_name="ver='2' coord_name='b'" Ver="2" x:ver="3" verver="4")";
    Coord coord;
    EXPECT_TRUE(read(pieces.bytes(), coord));
    EXPECT_EQ(coord.coord_name, QStringLiteral("ver='2' coord_name='b'"));
}

TEST_F(HostileDocuments, ManyAttributesAndReferencesAreReadQuickly)
{
    QElapsedTimer timer;
    timer.start();
    DocumentPieces pieces;
    for (int i = 0; i < 200000; ++i)
        pieces.rootAttributes += " a" + QByteArray::number(i) + "='&#x1F30D;'";
    Coord coord;
    EXPECT_TRUE(read(pieces.bytes(), coord));
    EXPECT_LT(timer.elapsed(), quickly);
}

TEST_F(HostileDocuments, DocumentTypeDoesNotFetchFiles)
{
    writeFile(path(QStringLiteral("secret.txt")), "secret");
    DocumentPieces pieces;
    pieces.declaration += "\n<!DOCTYPE Coord [<!ENTITY secret SYSTEM \"file://"
                          + path(QStringLiteral("secret.txt")).toUtf8() + "\">]>";
    pieces.rootAttributes = R"(ver="1" coord_name="&secret;")";
    pieces.projection = R"(<Projection ver="1"><param name="p" ver="1" valType="String">&secret;)"
                        R"(</param></Projection>)";
    Coord coord;
    read(pieces.bytes(), coord);
    EXPECT_FALSE(coord.coord_name.contains(QStringLiteral("secret")));
    EXPECT_FALSE(coord.projection.param.value(QStringLiteral("p"))
                     .value.toString()
                     .contains(QStringLiteral("secret")));
}

TEST_F(HostileDocuments, DocumentTypeWithoutDeclarationsIsAccepted)
{
    for (const char *type : {"<!DOCTYPE Coord>", "<!DOCTYPE Coord SYSTEM \"coord.dtd\">",
                             "<!DOCTYPE Coord PUBLIC '-//x//[y]//EN' 'a>b'>"}) {
        SCOPED_TRACE(type);
        DocumentPieces pieces;
        pieces.declaration += QByteArray("\n") + type;
        Coord coord;
        EXPECT_TRUE(read(pieces.bytes(), coord));
    }
}

TEST_F(HostileDocuments, AttributeOfTensOfMegabytesIsRead)
{
    constexpr int size = 32 * 1024 * 1024;
    DocumentPieces pieces;
    pieces.rootAttributes = "ver=\"1\" coord_name=\"" + QByteArray(size, 'n') + '"';
    Coord coord;
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(read(pieces.bytes(), coord));
    EXPECT_LT(timer.elapsed(), 6 * quickly);
    EXPECT_EQ(coord.coord_name.size(), size);
    EXPECT_EQ(coord.coord_name.count(QLatin1Char('n')), size);
}

/// Qt cannot hold a text of 2^30 characters. A hole in a file takes no room on the disk.
TEST_F(HostileDocuments, FilesLargerThanAnyDocumentAreRefused)
{
    constexpr qint64 mebibyte = 1 << 20;
    for (const qint64 size : {64 * mebibyte + 1, 1100 * mebibyte, 3000 * mebibyte}) {
        SCOPED_TRACE(size);
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(size));
        QElapsedTimer timer;
        timer.start();
        Coord coord = completeSystem();
        QString error = QStringLiteral("untouched");
        EXPECT_FALSE(Coord_IO::xml_read(path(), coord, &error));
        EXPECT_EQ(error, QStringLiteral("untouched"));
        expectSameSystem(coord, completeSystem());
        EXPECT_LT(timer.elapsed(), quickly);
    }
}

TEST_F(HostileDocuments, DevicesWithoutAnEndAreRefused)
{
    Coord coord = completeSystem();
    EXPECT_FALSE(Coord_IO::xml_read(QStringLiteral("/dev/zero"), coord, nullptr));
    expectSameSystem(coord, completeSystem());
}

TEST_F(HostileDocuments, AttributeThatNeverEndsIsRefused)
{
    expectRefused("<Coord ver=\"1\" coord_name=\"" + QByteArray(8 * 1024 * 1024, '>'));
    expectRefused("<Coord " + QByteArray(8 * 1024 * 1024, 'n'));
    expectRefused("<!--" + QByteArray(8 * 1024 * 1024, '-'));
    expectRefused("<![CDATA[" + QByteArray(8 * 1024 * 1024, ']'));
    expectRefused(QByteArray(8 * 1024 * 1024, '<'));
}

} // namespace
} // namespace KelStd::test
