#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"
#include "support/Utf16.h"

namespace KelStd::test {
namespace {

/// The complete document as text, declaring another encoding.
QString declaring(const char *encoding)
{
    return QString::fromUtf8(storedDocument("complete.xml"))
        .replace(QLatin1String("UTF-8"), QLatin1String(encoding));
}

class DocumentEncoding : public DocumentTest
{
protected:
    void expectComplete(const QByteArray &document) const
    {
        Coord coord;
        ASSERT_TRUE(read(document, coord));
        expectSameSystem(coord, completeSystem());
    }
};

TEST_F(DocumentEncoding, Utf8WithAByteOrderMark)
{
    expectComplete("\xEF\xBB\xBF" + storedDocument("complete.xml"));
}

TEST_F(DocumentEncoding, Utf8WithoutADeclaration)
{
    QByteArray document = storedDocument("complete.xml");
    document.remove(0, document.indexOf('\n') + 1);
    expectComplete(document);
}

TEST_F(DocumentEncoding, Utf16WithAByteOrderMark)
{
    for (const char *declared : {"UTF-16", "UTF-8"}) {
        SCOPED_TRACE(declared);
        expectComplete("\xFF\xFE" + utf16(declaring(declared), false));
        expectComplete("\xFE\xFF" + utf16(declaring(declared), true));
    }
}

TEST_F(DocumentEncoding, Latin1AsDeclared)
{
    for (const char *declared : {"ISO-8859-1", "iso-8859-1"})
        expectComplete(declaring(declared).toLatin1());
}

TEST_F(DocumentEncoding, DeclarationMayUseApostrophes)
{
    QByteArray document = declaring("ISO-8859-1").toLatin1();
    document.replace(0, document.indexOf('\n'),
                     "<?xml version = '1.0'  encoding = 'ISO-8859-1' standalone='yes' ?>");
    expectComplete(document);
}

TEST_F(DocumentEncoding, BytesThatAreNoUtf8DoNotPassForAnotherName)
{
    QByteArray document = DocumentPieces().bytes();
    document.replace("site", "D\xFCne");
    Coord coord;
    read(document, coord);
    EXPECT_NE(coord.coord_name, QString::fromUtf8("Düne"));
}

} // namespace
} // namespace KelStd::test
