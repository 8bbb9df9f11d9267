// Encodings. The bytes are those of the encodings' own tables.

#include "support/Printers.h"

#include <KelStd/text/TextDecoder.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

struct Row
{
    const char *encoding;
    QByteArray bytes;
    QString text;
    bool isDamaged = false;
    bool isInside = false;
};

QString u(const char16_t *text)
{
    return QStringView(text).toString(); // which keeps a mark
}

TEST(TextDecoding, OfEncodings)
{
    const Row rows[] = {
        {"UTF-8", "D\xC3\xBCne \xD0\x96", u(u"D\u00fcne \u0416")},
        {"utf-8", "\xEF\xBB\xBFx", u(u"x")},
        {"UTF-8", "\xF0\x9F\x98\x80", u(u"\U0001F600")},
        {"UTF-8", "a\xFFz", u(u"a\uFFFDz"), true},
        {"UTF-8", "a\xC3", u(u"a"), false, true},
        {"UTF-8", "a\xED\xA0\x80", u(u"a\uFFFD\uFFFD\uFFFD"), true}, // half of a pair
        {"UTF-16LE", QByteArray("D\0\xFC\0", 4), u(u"D\u00fc")},
        {"UTF-16BE", QByteArray("\0D\0\xFC", 4), u(u"D\u00fc")},
        {"UTF-16", QByteArray("\xFE\xFF\0D", 4), u(u"D")},
        {"UTF-16LE", QByteArray("D\0\xFC", 3), u(u"D"), false, true},
        {"UTF-32LE", QByteArray("D\0\0\0\x16\x04\0\0", 8), u(u"D\u0416")},
        {"ISO-8859-1", "D\xFCne", u(u"D\u00fcne")},
        {"latin1", "D\xFCne", u(u"D\u00fcne")},
        {"windows-1251", "\xC6\xE5", u(u"\u0416\u0435")},
        {"windows-1252", "\x80\xFC", u(u"\u20AC\u00fc")},
        {"ISO-8859-15", "\xA4", u(u"\u20AC")},
        {"KOI8-R", "\xF6", u(u"\u0416")},
        {"GB18030", "D\xA8\xB9ne \xA7\xA8", u(u"D\u00fcne \u0416")},
        {"Shift_JIS", "\x83\x41", u(u"\u30A2")},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.encoding << " " << row.bytes.toHex(' ').constData());
        TextDecoder decoder(row.encoding);
        EXPECT_TRUE(decoder.isKnown());
        EXPECT_EQ(decoder.decode(row.bytes), row.text);
        EXPECT_EQ(decoder.hasFoundDamage(), row.isDamaged);
        EXPECT_EQ(decoder.isInsideCharacter(), row.isInside);
    }
}

TEST(TextDecoding, OfBytesThatAreNoTextInAnEncodingOfAsia)
{
    TextDecoder decoder("Shift_JIS");
    EXPECT_EQ(decoder.decode("\x83\x41\xFF"), u(u"\u30A2\uFFFD"));
}

TEST(TextDecoding, OfPiecesThatEndAnywhere)
{
    for (const Row &row :
         {Row{"UTF-8", "D\xC3\xBC\xF0\x9F\x98\x80\xD0\x96", u(u"D\u00fc\U0001F600\u0416")},
          Row{"UTF-16LE", QByteArray("D\0\xFC\0\x3D\xD8\x00\xDE", 8), u(u"D\u00fc\U0001F600")}}) {
        SCOPED_TRACE(row.encoding);
        TextDecoder decoder(row.encoding);
        QString text;
        for (const char byte : row.bytes)
            text += decoder.decode(&byte, 1);
        EXPECT_EQ(text, row.text);
        EXPECT_FALSE(decoder.hasFoundDamage());
        EXPECT_FALSE(decoder.isInsideCharacter());
    }
}

TEST(TextDecoding, KeepsAMarkOrDropsIt)
{
    const QByteArray mark8 = "\xEF\xBB\xBFx";
    const QByteArray mark16("\xFF\xFEx\0", 4);
    EXPECT_EQ(TextDecoder("UTF-8").decode(mark8), u(u"x"));
    EXPECT_EQ(TextDecoder("UTF-8", TextDecoder::Mark::Kept).decode(mark8), u(u"\uFEFFx"));
    EXPECT_EQ(TextDecoder("UTF-16LE").decode(mark16), u(u"x"));
    EXPECT_EQ(TextDecoder("UTF-16LE", TextDecoder::Mark::Kept).decode(mark16), u(u"\uFEFFx"));
}

TEST(TextDecoding, OfAnUnknownEncodingGivesNoText)
{
    for (const char *name : {"no-such", ""}) {
        TextDecoder decoder(name);
        EXPECT_FALSE(decoder.isKnown()) << name;
        EXPECT_EQ(decoder.decode("text"), QString()) << name;
    }
}

TEST(TextDecoding, MarksNameAnEncoding)
{
    EXPECT_EQ(encodingOfMark("\xEF\xBB\xBFx"), "UTF-8");
    EXPECT_EQ(encodingOfMark(QByteArray("\xFF\xFEx\0", 4)), "UTF-16LE");
    EXPECT_EQ(encodingOfMark(QByteArray("\xFE\xFF\0x", 4)), "UTF-16BE");
    EXPECT_EQ(encodingOfMark(QByteArray("\xFF\xFE\0\0", 4)), "UTF-32LE");
    EXPECT_EQ(encodingOfMark(QByteArray("\0\0\xFE\xFF", 4)), "UTF-32BE");
    for (const char *bytes : {"", "\xEF\xBB", "\xFF", "text"})
        EXPECT_EQ(encodingOfMark(bytes), "") << bytes;
}

TEST(TextDecoding, SaysWhatIsUtf8)
{
    EXPECT_TRUE(isUtf8("D\xC3\xBCne", 5));
    EXPECT_TRUE(isUtf8("", 0));
    EXPECT_FALSE(isUtf8("D\xFCne", 4));
    EXPECT_FALSE(isUtf8("D\xC3", 2));
}

} // namespace
} // namespace KelStd
