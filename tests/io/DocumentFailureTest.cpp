// Why documents are not read or written: kinds to decide by, lines, and what the contract's
// functions say of them.

#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

#include <KelStd/io/DocumentKind.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/ListDocuments.h>

namespace KelStd::test {
namespace {

using io::DocumentFailure;
using io::DocumentFault;
using io::DocumentKind;

/// What a call has to replace.
const DocumentFailure former = {DocumentFault::Empty, QStringLiteral("former"), 77};

class DocumentFailures : public DocumentTest
{
protected:
    DocumentFailure failureOf(const QByteArray &document) const
    {
        writeFile(path(), document);
        return failureOfFile(path());
    }

    /// Of reading and of reviewing, which are the same.
    static DocumentFailure failureOfFile(const QString &fileName)
    {
        Coord coord;
        DocumentFailure failure = former;
        const bool isRead = Coord_IO::xml_read(fileName, coord, failure);
        EXPECT_EQ(isRead, !failure);
        QList<io::DocumentFinding> findings;
        DocumentFailure reviewed = former;
        EXPECT_EQ(io::reviewCoord(fileName, coord, findings, reviewed), isRead);
        EXPECT_EQ(reviewed.kind, failure.kind);
        EXPECT_EQ(reviewed.text, failure.text);
        EXPECT_EQ(reviewed.line, failure.line);
        EXPECT_EQ(failure.text.isEmpty(), !failure);
        return failure;
    }
};

struct FaultyRow
{
    QByteArray document;
    DocumentFault kind;
    int line;
    const char *described;
};

/// The contract's root, whose first tag is in the first line.
QByteArray inRoot(const QByteArray &content)
{
    return "<Coord ver='1'>" + content + "</Coord>";
}

TEST_F(DocumentFailures, HaveAKindALineAndAText)
{
    const FaultyRow rows[] = {
        {"", DocumentFault::Empty, 0, "the file is empty"},
        {"\n\n", DocumentFault::NotWellFormed, 3,
         "line 3: no well-formed XML: unexpected end of file"},
        {"<Coord>\n</Other>", DocumentFault::NotWellFormed, 2,
         "line 2: no well-formed XML: tag mismatch"},
        {inRoot("\r\n\r\n<a b='1'\r\n b='2'/>"), DocumentFault::NotWellFormed, 4,
         "line 4: no well-formed XML: the attribute \"b\" stands twice in a tag"},
        {inRoot("\r\r<a\rb='1' b='2'/>"), DocumentFault::NotWellFormed, 4,
         "line 4: no well-formed XML: the attribute \"b\" stands twice in a tag"},
        {inRoot("\nx &nbsp; y"), DocumentFault::NotWellFormed, 2,
         "line 2: no well-formed XML: \"&nbsp;\" stands for no character"},
        {inRoot("<a\nb='x & y'/>"), DocumentFault::NotWellFormed, 2,
         "line 2: no well-formed XML: a \"&\" without \";\""},
        {inRoot("\n&#x110000;"), DocumentFault::NotWellFormed, 2,
         "line 2: no well-formed XML: \"&#x110000;\" stands for no character"},
        {inRoot("\n\n&#xD83C;"), DocumentFault::ForeignText, 3,
         "line 3: it has a character that no XML document can hold"},
        {inRoot("\n\n\xF0\x9F\x8C\x8D\n\xEF\xBF\xBF"), DocumentFault::ForeignText, 4,
         "line 4: it has a character that no XML document can hold"},
        {"<?xml version='1.0'?>\n<!DOCTYPE Coord [\n<!ENTITY e 'x'>]>" + inRoot({}),
         DocumentFault::HasDeclarations, 2, "line 2: it declares entities or elements of its own"},
        {inRoot(QByteArray("\n<n>").repeated(256)), DocumentFault::NestedTooDeeply, 257,
         "line 257: its elements are nested deeper than 256"},
        {inRoot(QByteArray("\n<n/>").repeated(400000)), DocumentFault::TooMuchMarkup, 400000,
         "line 400000: it has more tags and attributes than 400000"},
        {"\n<Coord\nver='2'>\n</Coord>", DocumentFault::OtherVersion, 3,
         "line 3: the element [Coord] has version \"2\", not version 1"},
        {"<Coord/>", DocumentFault::OtherVersion, 1,
         "line 1: the element [Coord] has no version, not version 1"},
        {"<Coord ver='%1 %3'/>", DocumentFault::OtherVersion, 1,
         "line 1: the element [Coord] has version \"%1 %3\", not version 1"},
        {"<!-- c -->\n<Coord ver='1'>\n</Coord>", DocumentFault::MissingElement, 2,
         "line 2: Format error, element [Ellpsoid] not found."},
    };
    for (const FaultyRow &row : rows) {
        SCOPED_TRACE(row.described);
        const DocumentFailure failure = failureOf(row.document);
        EXPECT_EQ(failure.kind, row.kind);
        EXPECT_EQ(failure.line, row.line);
        EXPECT_EQ(io::describedFailure(failure), QString::fromLatin1(row.described));
    }
}

/// The versions of records and parameters are in the lines of `DocumentPieces`: the declaration,
/// the root, the ellipsoid, the projection, three transformations, the geoid model.
TEST_F(DocumentFailures, NameTheRecordOfAnotherVersion)
{
    struct
    {
        QByteArray DocumentPieces::*piece;
        QByteArray content;
        const char *described;
    } const rows[] = {
        {&DocumentPieces::ellipsoid, "<Ellpsoid ver='2'/>",
         "line 3: the element [Ellpsoid] has version \"2\", not version 1"},
        {&DocumentPieces::projection, "<Projection/>",
         "line 4: the element [Projection] has no version, not version 1"},
        {&DocumentPieces::projection, "<Projection ver='1'>\n<param name='p'/></Projection>",
         "line 5: the element [param] has no version, not version 1"},
        {&DocumentPieces::datum, "<Ellipsoid_Transform ver='x'/>",
         "line 5: the element [Ellipsoid_Transform] has version \"x\", not version 1"},
        {&DocumentPieces::plane, "<Plane_Transform ver='1.0'/>",
         "line 6: the element [Plane_Transform] has version \"1.0\", not version 1"},
        {&DocumentPieces::fitting, "<Elevation_Fitting ver=''/>",
         "line 7: the element [Elevation_Fitting] has no version, not version 1"},
        {&DocumentPieces::geoid, "<Geoid_Model/>",
         "line 8: the element [Geoid_Model] has no version, not version 1"},
    };
    for (const auto &row : rows) {
        DocumentPieces pieces;
        pieces.*row.piece = row.content;
        const DocumentFailure failure = failureOf(pieces.bytes());
        EXPECT_EQ(failure.kind, DocumentFault::OtherVersion);
        EXPECT_EQ(io::describedFailure(failure), QString::fromLatin1(row.described));
    }
}

TEST_F(DocumentFailures, AParameterThatIsPassedOverIsNone)
{
    EXPECT_FALSE(failureOf(documentWithDatum("<x_translate ver=\"2\"/>")));
}

TEST_F(DocumentFailures, OfTheFile)
{
    const DocumentFailure missing = failureOfFile(path(QStringLiteral("missing.xml")));
    EXPECT_EQ(missing.kind, DocumentFault::CannotBeOpened);
    EXPECT_EQ(missing.text, QStringLiteral("No such file or directory"));
    EXPECT_EQ(missing.line, 0);

    writeFile(path(), "x");
    ASSERT_TRUE(QFile::resize(path(), 64 * 1024 * 1024 + 1));
    const DocumentFailure large = failureOfFile(path());
    EXPECT_EQ(large.kind, DocumentFault::TooLarge);
    EXPECT_EQ(large.text, QStringLiteral("the file is larger than 64 MiB"));
}

TEST_F(DocumentFailures, AreNoneAfterASuccess)
{
    const DocumentFailure failure = failureOf(DocumentPieces().bytes());
    EXPECT_FALSE(failure);
    EXPECT_EQ(failure.line, 0);
    EXPECT_EQ(io::describedFailure(failure), QString());
}

TEST_F(DocumentFailures, ShortenWhatTheyQuote)
{
    const QByteArray longName(1000000, 'n');
    for (const QByteArray &document :
         {QByteArray("<Coord ver='" + longName + "'/>"), "<" + longName + "/>",
          "<a " + longName + "='' " + longName + "=''/>", "<a>&" + longName + ";</a>"}) {
        const DocumentFailure failure = failureOf(document);
        EXPECT_TRUE(failure);
        EXPECT_LT(failure.text.size(), 250);
    }
}

/// Only of a file that cannot be opened and of a missing element.
TEST_F(DocumentFailures, AreMostlyNoTextOfTheContract)
{
    for (const char *document : {"", "x", "<Coord ver='2'/>", "<Coord><!DOCTYPE a []></Coord>"}) {
        Coord coord;
        QString error = QStringLiteral("untouched");
        EXPECT_FALSE(read(document, coord, &error));
        EXPECT_EQ(error, QStringLiteral("untouched"));
        QList<Ellipsoid> ellipsoids;
        EXPECT_FALSE(io::readEllipsoidList(path(), ellipsoids, &error));
        EXPECT_EQ(error, QStringLiteral("untouched"));
    }
}

TEST_F(DocumentFailures, OfListsAreThoseOfTheirRecords)
{
    writeFile(path(), "<List ver='1'>\n<Ellpsoid ver='1'/>\n<Ellpsoid/>\n"
                      "<Projection ver='1'/>\n<Projection ver='1'>\n<param/></Projection></List>");
    QList<Ellipsoid> ellipsoids;
    DocumentFailure failure = former;
    EXPECT_FALSE(io::readEllipsoidList(path(), ellipsoids, failure));
    EXPECT_EQ(failure.kind, DocumentFault::OtherVersion);
    EXPECT_EQ(failure.line, 3);
    EXPECT_EQ(ellipsoids.size(), 1);

    QList<Projection> projections;
    QList<io::DocumentFinding> findings;
    failure = former;
    EXPECT_FALSE(io::reviewProjectionList(path(), projections, findings, failure));
    EXPECT_EQ(failure.kind, DocumentFault::OtherVersion);
    EXPECT_EQ(failure.line, 6);

    writeFile(path(), "<List ver='1'/>");
    EXPECT_TRUE(io::readProjectionList(path(), projections, failure));
    EXPECT_FALSE(failure);
    failure = former;
    EXPECT_TRUE(io::reviewEllipsoidList(path(), ellipsoids, findings, failure));
    EXPECT_FALSE(failure);
}

TEST_F(DocumentFailures, OfWriting)
{
    DocumentFailure failure = former;
    EXPECT_TRUE(Coord_IO::xml_write(completeSystem(), path(), failure));
    EXPECT_FALSE(failure);

    EXPECT_FALSE(Coord_IO::xml_write(completeSystem(), path(QStringLiteral("no/folder")), failure));
    EXPECT_EQ(failure.kind, DocumentFault::CannotBeWritten);
    EXPECT_EQ(failure.text, QStringLiteral("No such file or directory"));

    Coord coord;
    coord.coord_name = QString(QChar(0xFFFF));
    EXPECT_FALSE(Coord_IO::xml_write(coord, path(), failure));
    EXPECT_EQ(failure.kind, DocumentFault::ForeignText);
    EXPECT_EQ(failure.text, QStringLiteral("A text has a character that no XML document can hold"));
}

TEST_F(DocumentFailures, LeaveTheKindOfADocumentWhereItsRootIsKnown)
{
    struct
    {
        const char *document;
        DocumentKind kind;
        bool isWellFormed;
    } const rows[] = {
        {"<Coord/>", DocumentKind::System, true},
        {"<Ellipsoid_List ver='1'/>", DocumentKind::EllipsoidList, true},
        {"<!-- c --><Projection_List/>", DocumentKind::ProjectionList, true},
        {"<coord/>", DocumentKind::Other, true},
        {"<root><Coord/></root>", DocumentKind::Other, true},
        {"<Ellipsoid_List><Ellpsoid", DocumentKind::EllipsoidList, false},
        {"<Projection_List></Coord>", DocumentKind::ProjectionList, false},
        {"Coord", DocumentKind::Other, false},
        {"", DocumentKind::Other, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.document);
        writeFile(path(), row.document);
        DocumentFailure failure = former;
        const DocumentKind kind = io::documentKind(path(), failure);
        EXPECT_EQ(kind, row.kind);
        EXPECT_EQ(!failure, row.isWellFormed);
    }
    DocumentFailure failure;
    const DocumentKind none = io::documentKind(path(QStringLiteral("missing")), failure);
    EXPECT_EQ(none, DocumentKind::Other);
    EXPECT_EQ(failure.kind, DocumentFault::CannotBeOpened);
}

} // namespace
} // namespace KelStd::test
