// The records of documents, read as a library loads them.

#include "library/RecordKinds.h"

#include <KelStd/library/RecordDocuments.h>

#include <sys/stat.h>

namespace KelStd::test {
namespace {

using Fault = io::DocumentFault;

class RecordDocuments : public LibraryTest
{
protected:
    QStringList namesIn(const char *file, RecordKind kind)
    {
        const auto records = library::readRecords(path(file), kind, m_failure);
        QStringList names;
        for (const LibraryRecord &record : records.value_or(QList<LibraryRecord>()))
            names += library::nameOf(record);
        return names;
    }

    io::DocumentFailure m_failure;
};

TEST_F(RecordDocuments, AreOfTheKindOfTheirRoot)
{
    const struct
    {
        QByteArray document;
        RecordKind kind;
    } rows[] = {
        {SystemKind::document(QStringLiteral("A"), 1), RecordKind::Custom},
        {EllipsoidKind::document(QStringLiteral("A"), 1), RecordKind::Ellipsoid},
        {ProjectionKind::document(QStringLiteral("A"), 1), RecordKind::Projection},
        {"<Ellipsoid_List", RecordKind::Custom},
        {"<Ellipsoid_List ver=\"1\"><", RecordKind::Ellipsoid},
        {"<Other/>", RecordKind::Custom},
        {"", RecordKind::Custom},
    };
    for (const auto &row : rows) {
        write("a.xml", row.document);
        EXPECT_EQ(library::kindOfDocument(path("a.xml")), row.kind) << row.document.constData();
    }
    EXPECT_EQ(library::kindOfDocument(path("nothing.xml")), RecordKind::Custom);
}

TEST_F(RecordDocuments, HaveTheirRecordsInOrderAndThoseOfEqualNamesToo)
{
    write("e.xml", ellipsoidsCalled("BAB"));
    EXPECT_EQ(namesIn("e.xml", RecordKind::Ellipsoid),
              (QStringList{QStringLiteral("B"), QStringLiteral("A"), QStringLiteral("B")}));
    EXPECT_FALSE(m_failure);
    write("p.xml", ProjectionKind::document(QStringLiteral("P"), 1));
    EXPECT_EQ(namesIn("p.xml", RecordKind::Projection), QStringList(QStringLiteral("P")));
    write("s.xml", SystemKind::document(QStringLiteral("S"), 1));
    for (const RecordKind kind : {RecordKind::Custom, RecordKind::Standard})
        EXPECT_EQ(namesIn("s.xml", kind), QStringList(QStringLiteral("S")));
    write("none.xml", ellipsoidsCalled(""));
    const auto none = library::readRecords(path("none.xml"), RecordKind::Ellipsoid, m_failure);
    ASSERT_TRUE(none.has_value());
    EXPECT_TRUE(none->isEmpty());
}

TEST_F(RecordDocuments, AreRefusedWithAKind)
{
    ASSERT_EQ(mkfifo(path("fifo.xml").toUtf8().constData(), 0600), 0);
    write("empty.xml", {});
    write("broken.xml", "<Coord>\n<");
    write("other.xml", "<Coord ver=\"2\"/>");
    const struct
    {
        const char *file;
        Fault fault;
        const char *text; ///< null for whatever the reader says
    } rows[] = {
        {"nothing.xml", Fault::CannotBeOpened, "No such file or directory"},
        {"custom", Fault::CannotBeOpened, "it is a directory"},
        {"fifo.xml", Fault::CannotBeOpened, "it is no regular file"},
        {"empty.xml", Fault::Empty, nullptr},
        {"broken.xml", Fault::NotWellFormed, nullptr},
        {"other.xml", Fault::OtherVersion, nullptr},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file);
        EXPECT_TRUE(namesIn(row.file, RecordKind::Custom).isEmpty());
        EXPECT_EQ(m_failure.kind, row.fault) << m_failure.text.toStdString();
        if (row.text != nullptr) {
            EXPECT_EQ(m_failure.text, QString::fromLatin1(row.text));
        }
        QList<io::DocumentFinding> findings;
        io::DocumentFailure reviewed;
        EXPECT_FALSE(
            library::reviewRecords(path(row.file), RecordKind::Custom, findings, reviewed));
        EXPECT_EQ(reviewed.kind, row.fault);
    }
    EXPECT_FALSE(library::fileFailure(path("empty.xml")));
    EXPECT_FALSE(library::fileFailure(path("nothing.xml")));
}

TEST_F(RecordDocuments, AreReviewedBesides)
{
    write("e.xml", ellipsoidsCalled("A").replace("ENU", "NEU"));
    QList<io::DocumentFinding> findings;
    const auto records =
        library::reviewRecords(path("e.xml"), RecordKind::Ellipsoid, findings, m_failure);
    ASSERT_TRUE(records.has_value());
    EXPECT_EQ(records->size(), 1);
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings.constFirst().kind, io::FindingKind::UnknownWord);
}

} // namespace
} // namespace KelStd::test
