// What reading makes of XML, row by row: which documents are taken, and what their texts become.
//
// XML 1.0 (fifth edition) is the source where it decides; where Qt's DOM parser reads more than XML
// is, or otherwise, the documents of many years decide, and what the writer writes. Each row also
// says what `QXmlStreamReader` makes of it: where that differs, it cannot take the parser's place.

#include "io/DocumentTest.h"
#include "support/Utf16.h"

#include <QtCore/QXmlStreamReader>

#include <optional>

namespace KelStd::test {
namespace {

/// What `QXmlStreamReader` makes of a row.
enum class Stream
{
    Same,
    Other,  ///< it reads another text
    Refuses ///< it says that it is no XML, and the library reads it
};

constexpr const char16_t *refused = nullptr;

struct Row
{
    QByteArray content;
    const char16_t *read; ///< the text, or `refused`
    Stream stream;
};

/// The text of the attribute, or of the parameter where that has one; nothing when it refuses.
std::optional<QString> byStreamReader(const QByteArray &document)
{
    QXmlStreamReader reader(document);
    reader.setNamespaceProcessing(false);
    QString name;
    QString text;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()
            && reader.attributes().hasAttribute(QLatin1String("coord_name")))
            name = reader.attributes().value(QLatin1String("coord_name")).toString();
        if (reader.isStartElement() && reader.qualifiedName() == QLatin1String("x_translate")) {
            if (reader.readNext() == QXmlStreamReader::Characters
                && (reader.isCDATA() || !reader.isWhitespace()))
                text = reader.text().toString();
        }
    }
    if (reader.hasError())
        return std::nullopt;
    return text.isEmpty() ? name : text;
}

class XmlTable : public DocumentTest
{
protected:
    /// The name of the system, or the text of its parameter where that has one.
    std::optional<QString> byLibrary(const QByteArray &document) const
    {
        Coord coord;
        coord.ellipsoidTransform.x_translate.value = QVariant();
        if (!read(document, coord))
            return std::nullopt;
        const QString text = coord.ellipsoidTransform.x_translate.value.toString();
        return text.isEmpty() ? coord.coord_name : text;
    }

    void expectAsInRow(const QByteArray &document, const Row &row) const
    {
        SCOPED_TRACE(row.content.toPercentEncoding(" <>/&;#!?='\"[](),.:").toStdString());
        const std::optional<QString> expected =
            row.read == refused ? std::nullopt : std::make_optional(QString::fromUtf16(row.read));
        const auto found = byLibrary(document);
        EXPECT_EQ(found.has_value(), expected.has_value());
        EXPECT_EQ(found.value_or(QString()), expected.value_or(QString()));

        const auto other = byStreamReader(document);
        switch (row.stream) {
        case Stream::Same: EXPECT_TRUE(other == expected); break;
        case Stream::Other: EXPECT_TRUE(other.has_value() && other != expected); break;
        case Stream::Refuses: EXPECT_TRUE(!other.has_value() && expected.has_value()); break;
        }
    }
};

TEST_F(XmlTable, Attributes)
{
    const Row rows[] = {
        {"a  b ", u"a  b ", Stream::Same},
        {"&lt;&gt;&amp;&apos;&quot;>\"", u"<>&'\">\"", Stream::Same},
        {"a<b", refused, Stream::Same}, // 2.3: no "<" in a value
        {"a&b", refused, Stream::Same}, // 4.1: a reference ends with ";"
        {"&nbsp;", refused, Stream::Same},
        // 3.3.3 reads a line's end or a tab as a blank; the parser keeps what stands there.
        {"a\tb", u"a\tb", Stream::Other},
        {"a\nb", u"a\nb", Stream::Other},
        {"a\rb", u"a\rb", Stream::Other},
        {"a\r\nb", u"a\r\nb", Stream::Other},
        {"a&#9;b&#10;c&#13;d", u"a\tb\nc\rd", Stream::Same},
        // 2.2 leaves control characters out; the writer writes them, and they come back.
        {"a\x01\x1Fz", u"a\u0001\u001Fz", Stream::Refuses},
        {"a&#2;b", u"a\u0002b", Stream::Refuses},
        {"\x7F\xC2\x85\xC2\xA0", u"\u007f\u0085\u00a0", Stream::Same},
        // Characters beyond U+FFFF, as such, as a reference, as references to their two halves.
        {"\xF0\x9F\x8C\x8D", u"\U0001F30D", Stream::Same},
        {"&#x1F30D;&#127757;", u"\U0001F30D\U0001F30D", Stream::Same},
        {"&#65536;&#x10FFFF;", u"\U00010000\U0010FFFF", Stream::Same},
        {"&#xD83C;&#xDF0D;", u"\U0001F30D", Stream::Refuses},
        {"&#xD83C;", refused, Stream::Same},
        {"&#xDF0D;&#xD83C;", refused, Stream::Same},
        {"&#x110000;", refused, Stream::Same},
        // 2.2 leaves U+FFFE and U+FFFF out, but no other one that stands for nothing.
        {"\xEF\xBF\xBE", refused, Stream::Same},
        {"&#xFFFF;", refused, Stream::Same},
        {"\xEF\xBF\xBD\xEF\xB7\x90&#x1FFFE;", u"\uFFFD\uFDD0\U0001FFFE", Stream::Same},
        {"a\xEF\xBB\xBF", u"a\uFEFF", Stream::Same}, // a byte order mark only at the beginning
        // 4.1: decimal digits, or "x" and hexadecimal ones.
        {"&#00000000065;&#x41;", u"AA", Stream::Same},
        {"&#X41;", refused, Stream::Same},
        {"&#+65;", refused, Stream::Same},
        {"&# 65;", refused, Stream::Same},
    };
    for (const Row &row : rows) {
        DocumentPieces pieces;
        pieces.rootAttributes = "ver=\"1\" coord_name='" + row.content + '\'';
        expectAsInRow(pieces.bytes(), row);
    }
}

TEST_F(XmlTable, Texts)
{
    // A text that is none leaves the name of the system, "site".
    const Row rows[] = {
        {" 1.5 ", u" 1.5 ", Stream::Same},
        {"1&#46;5", u"1.5", Stream::Same},
        {"&lt;&gt;&amp;&apos;&quot;>", u"<>&'\">", Stream::Same},
        {"a]]>", refused, Stream::Same}, // 2.4
        {"a&b", refused, Stream::Same},
        {"&nbsp;", refused, Stream::Same},
        // 2.11 makes a line feed of every line's end.
        {"a\nb", u"a\nb", Stream::Same},
        {"a\rb", u"a\rb", Stream::Other},
        {"a\r\nb", u"a\r\nb", Stream::Other},
        {"a&#13;&#10;b", u"a\r\nb", Stream::Same},
        // Blanks alone, also those of Unicode, are no text.
        {" \n\t", u"site", Stream::Same},
        {"\xC2\xA0", u"site", Stream::Other},
        {"&#32;", u"site", Stream::Other},
        {"\n &#65;", u"\n A", Stream::Same},
        // The first piece counts.
        {"1<!-- c -->2", u"1", Stream::Same},
        {"1<?p i?>2", u"1", Stream::Same},
        {"1<![CDATA[2]]>3", u"1", Stream::Same},
        {"<![CDATA[1 < 2 & 3]]>4", u"1 < 2 & 3", Stream::Same},
        {"<![CDATA[&#x41;]]>", u"&#x41;", Stream::Same},
        {"<![CDATA[a\r\nb]]>", u"a\r\nb", Stream::Other},
        {"<![CDATA[ ]]>", u" ", Stream::Same},
        // As in attributes.
        {"a\x01\x1Fz", u"a\u0001\u001Fz", Stream::Refuses},
        {"a&#2;b", u"a\u0002b", Stream::Refuses},
        {"\xF0\x9F\x8C\x8D&#x1F30D;", u"\U0001F30D\U0001F30D", Stream::Same},
        {"&#xD83C;&#57101;", u"\U0001F30D", Stream::Refuses},
        {"&#xD83C;", refused, Stream::Same},
        {"\xEF\xBF\xBE", refused, Stream::Same},
        {"&#xFFFE;", refused, Stream::Same},
    };
    for (const Row &row : rows) {
        expectAsInRow(documentWithDatum("<x_translate ver=\"1\" valType=\"String\">" + row.content
                                        + "</x_translate>"),
                      row);
    }
}

TEST_F(XmlTable, BeforeTheRoot)
{
    const Row rows[] = {
        {"", u"site", Stream::Same},
        {"\xEF\xBB\xBF", u"site", Stream::Same},
        {"\n \r\n", u"site", Stream::Same},
        {"x", refused, Stream::Same},
        {"&#32;", refused, Stream::Same},
        {"<![CDATA[]]>", refused, Stream::Same},
        {"<!-- c --><?p i?><!---->", u"site", Stream::Same},
        {"<!-- a -- b -->", refused, Stream::Same}, // 2.5
        {"<!-- a --->", refused, Stream::Same},
        {"<? p?>", refused, Stream::Same}, // 2.6
        // 2.8: the declaration, whose version and encoding may be any.
        {"<?xml version='1.0'?>", u"site", Stream::Same},
        {"<?xml version='1.0' standalone='yes' ?>", u"site", Stream::Same},
        {"<?xml version='1.1'?>", u"site", Stream::Refuses},
        {"<?xml version='2.0'?>", u"site", Stream::Refuses},
        {"<?xml version='1.0' encoding='no-such'?>", u"site", Stream::Refuses},
        {"<?xml version='1.0' encoding=''?>", u"site", Stream::Refuses},
        {"<?xml version='1.0'encoding='UTF-8'?>", refused, Stream::Same},
        {"<?xml encoding='UTF-8'?>", refused, Stream::Same},
        {"<?xml version='1.0' other='x'?>", refused, Stream::Same},
        {"<?xml version='1.0' standalone='maybe'?>", refused, Stream::Same},
        {"<?xml?>", refused, Stream::Same},
        {" <?xml version='1.0'?>", refused, Stream::Same},
        {"<?xml version='1.0'?><?xml version='1.0'?>", refused, Stream::Same},
        // A document type that declares nothing.
        {"<!DOCTYPE Coord>", u"site", Stream::Same},
        {"<!DOCTYPE other>", u"site", Stream::Same},
        {"<!DOCTYPE Coord SYSTEM 'x.dtd'>", u"site", Stream::Same},
        {"<!DOCTYPE Coord PUBLIC '-//x//y//EN' 'a>b'>", u"site", Stream::Same},
        {"<!DOCTYPE Coord PUBLIC '-//x//[y]//EN' 'a>b'>", u"site", Stream::Refuses},
        {"<!DOCTYPE Coord PUBLIC 'x'>", refused, Stream::Same},
        {"<!DOCTYPE Coord SYSTEM x>", refused, Stream::Same},
        {"<!DOCTYPE>", refused, Stream::Same},
        {"<!doctype Coord>", refused, Stream::Same},
        {"<!ELEMENT Coord ANY>", refused, Stream::Same},
        {"<!-- c --><!DOCTYPE Coord><!-- d -->", u"site", Stream::Same},
        // One that declares something, which is refused for what it could do.
        {"<!DOCTYPE Coord []>", refused, Stream::Other},
        {"<!DOCTYPE Coord [<!ENTITY e 'x'>]>", refused, Stream::Other},
        {"<!DOCTYPE Coord SYSTEM 'x.dtd' [<!ATTLIST Coord color CDATA 'red'>]>", refused,
         Stream::Other},
    };
    for (const Row &row : rows) {
        DocumentPieces pieces;
        pieces.declaration.clear();
        expectAsInRow(row.content + pieces.bytes().trimmed(), row);
    }
}

TEST_F(XmlTable, AfterTheRoot)
{
    // The stream reader of Qt 6 takes a document type there.
    constexpr Stream ofLateTypes =
        QT_VERSION < QT_VERSION_CHECK(6, 0, 0) ? Stream::Same : Stream::Other;
    const Row rows[] = {
        {" \r\n\t", u"site", Stream::Same},
        {"<!-- c --> <?p i?>", u"site", Stream::Same},
        {"x", refused, Stream::Same},
        {"&#32;", refused, Stream::Same},
        {"<![CDATA[]]>", refused, Stream::Same},
        {"<b/>", refused, Stream::Same},
        {"</Coord>", refused, Stream::Same},
        {"<!DOCTYPE Coord>", refused, ofLateTypes},
        {QByteArray(1, '\0'), refused, Stream::Same},
        {"<!-- c", refused, Stream::Same},
    };
    for (const Row &row : rows)
        expectAsInRow(DocumentPieces().bytes().trimmed() + row.content, row);
}

TEST_F(XmlTable, TagsAndNames)
{
    const Row rows[] = {
        {"<a b = '1'\r\nc\t=\"2\" />", u"site", Stream::Same},
        {"<a></a >", u"site", Stream::Same},
        {"<a></ a>", refused, Stream::Same},
        {"< a/>", refused, Stream::Same},
        {"<a / >", refused, Stream::Same},
        {"<a></b>", refused, Stream::Same},
        {"<a b=1/>", refused, Stream::Same},
        {"<a b/>", refused, Stream::Same},
        {"<a b='1' b='2'/>", refused, Stream::Same},   // 3.1
        {"<a b='1'c='2'/>", u"site", Stream::Refuses}, // 3.1 asks for the blank
        {"<p:a q:b='1'/>", u"site", Stream::Same},     // XML itself knows no prefixes
        {"<a b:c='1' d:c='1'/>", u"site", Stream::Same},
        {"<a:b:c/><:a/>", u"site", Stream::Refuses},
        {"<a xmlns='u' xmlns:p='' xml:lang='de'/>", u"site", Stream::Same},
        {"<xml/><XMLa/>", u"site", Stream::Same},
        {"<a1.-_/>", u"site", Stream::Same},
        {"<1a/>", refused, Stream::Same},
        {"<\xC3\xBC/><\xE4\xB8\xAD \xC3\xBC='1'/>", u"site", Stream::Same},
        {"<\xC4\xB2/>", u"site", Stream::Refuses}, // U+0132, a letter since the fifth edition
        {"<a$/>", refused, Stream::Same},
    };
    for (const Row &row : rows) {
        DocumentPieces pieces;
        pieces.more = row.content;
        expectAsInRow(pieces.bytes(), row);
    }
}

/// What differs from ASCII in the encodings of one byte a letter, or two.
QByteArray encoded(const QString &text, const QByteArray &encoding)
{
    if (encoding.startsWith("UTF-16"))
        return test::utf16(text, encoding.endsWith("BE"));
    QByteArray bytes = text.toUtf8();
    if (encoding == "windows-1251")
        bytes.replace("\xC3\xBC", "?").replace("\xD0\x96", "\xC6");
    else if (encoding == "GB18030")
        bytes.replace("\xC3\xBC", "\xA8\xB9").replace("\xD0\x96", "\xA7\xA8");
    return bytes;
}

struct EncodingRow
{
    QByteArray mark;      ///< at the beginning
    const char *declared; ///< in the declaration; nullptr for none
    const char *codec;    ///< of the bytes
    bool isRead;          ///< as what was written
};

/// 4.3.3, and Qt's own names beside those of XML.
TEST_F(XmlTable, Encodings)
{
    const QString name = QString::fromUtf16(u"D\u00fcne \u0416");
    const EncodingRow rows[] = {
        {"", nullptr, "UTF-8", true},
        {"\xEF\xBB\xBF", nullptr, "UTF-8", true},
        {"\xEF\xBB\xBF", "ISO-8859-1", "UTF-8", true}, // the mark decides
        {"", "utf-8", "UTF-8", true},
        {"", "windows-1251", "windows-1251", false}, // which has no u with two dots
        {"", "GB18030", "GB18030", true},
        {"", "no-such", "UTF-8", true},
        {"\xFF\xFE", "UTF-16", "UTF-16LE", true},
        {"\xFE\xFF", nullptr, "UTF-16BE", true},
        {"\xFF\xFE", "UTF-8", "UTF-16LE", true},
        {"", "ISO-8859-1", "UTF-8", false},
    };
    for (const EncodingRow &row : rows) {
        SCOPED_TRACE(testing::Message() << row.codec << " as "
                                        << (row.declared == nullptr ? "nothing" : row.declared));
        DocumentPieces pieces;
        pieces.declaration.clear();
        if (row.declared != nullptr)
            pieces.declaration =
                "<?xml version=\"1.0\" encoding=\"" + QByteArray(row.declared) + "\"?>";
        pieces.rootAttributes = "ver=\"1\" coord_name=\"" + name.toUtf8() + '"';
        Coord coord;
        ASSERT_TRUE(read(row.mark + encoded(QString::fromUtf8(pieces.bytes()), row.codec), coord));
        EXPECT_EQ(coord.coord_name == name, row.isRead) << coord.coord_name.toStdString();
    }
}

/// Bytes that are no text become U+FFFD, in a comment as well as in a name.
TEST_F(XmlTable, BytesThatAreNoText)
{
    DocumentPieces pieces;
    pieces.rootAttributes = "ver=\"1\" coord_name=\"a\xFF"
                            "b\"";
    pieces.more = "<!-- M\xFCller -->";
    EXPECT_EQ(byLibrary(pieces.bytes()), QString::fromUtf16(u"a\uFFFDb"));
    EXPECT_EQ(byStreamReader(pieces.bytes()), std::nullopt);
}

} // namespace
} // namespace KelStd::test
