#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

#include <KelStd/io/ListDocuments.h>

#include <QtCore/QFile>

#include <cerrno>
#include <cstring>

namespace KelStd::test {
namespace {

/// Both kinds of list, read from bytes into the names of the records that they append.
struct ListKind
{
    const char *name;
    const char *root;
    const char *record; ///< with %1 for its version and %2 for its name
    bool (*read)(const QString &fileName, QStringList &names, QString *error);
};

bool readEllipsoids(const QString &fileName, QStringList &names, QString *error)
{
    Ellipsoid present;
    present.ellipsoid_name = QStringLiteral("present");
    QList<Ellipsoid> list{present};
    const bool answer = io::readEllipsoidList(fileName, list, error);
    for (const Ellipsoid &ellipsoid : list)
        names += ellipsoid.ellipsoid_name;
    return answer;
}

bool readProjections(const QString &fileName, QStringList &names, QString *error)
{
    Projection present;
    present.projection_name = QStringLiteral("present");
    QList<Projection> list{present};
    const bool answer = io::readProjectionList(fileName, list, error);
    for (const Projection &projection : list)
        names += projection.projection_name;
    return answer;
}

const ListKind kinds[] = {
    {"ellipsoids", "Ellipsoid_List", R"(<Ellpsoid ver="%1" ellipsoid_name="%2"/>)",
     &readEllipsoids},
    {"projections", "Projection_List", R"(<Projection ver="%1" projection_name="%2"/>)",
     &readProjections},
};

class ListDocuments : public DocumentTest
{
protected:
    struct Answer
    {
        bool isRead;
        QStringList names;
        QString error;
    };

    Answer read(const ListKind &kind, const QByteArray &document) const
    {
        writeFile(path(), document);
        return readFileOf(kind, path());
    }

    static Answer readFileOf(const ListKind &kind, const QString &fileName)
    {
        Answer answer{false, {}, QStringLiteral("untouched")};
        answer.isRead = kind.read(fileName, answer.names, &answer.error);
        return answer;
    }

    /// A list of these records, each a version and a name.
    static QByteArray list(const ListKind &kind,
                           const std::vector<std::pair<const char *, const char *>> &records)
    {
        QByteArray document = QByteArray("<") + kind.root + " ver=\"1\">";
        for (const auto &[version, name] : records) {
            document += QString::fromLatin1(kind.record)
                            .arg(QLatin1String(version), QLatin1String(name))
                            .toUtf8();
        }
        return document + "</" + kind.root + ">";
    }
};

TEST_F(ListDocuments, RecordsAreAppendedInTheirOrder)
{
    for (const ListKind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        const Answer answer = read(kind, list(kind, {{"1", "b"}, {"1", "a"}, {"1", "b"}}));
        EXPECT_TRUE(answer.isRead);
        EXPECT_EQ(answer.names, QStringLiteral("present b a b").split(QLatin1Char(' ')));
        EXPECT_EQ(answer.error, QStringLiteral("untouched"));
    }
}

TEST_F(ListDocuments, RecordsBeforeAFailingOneStay)
{
    for (const ListKind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        const Answer answer =
            read(kind, list(kind, {{"1", "a"}, {"1", "b"}, {"2", "c"}, {"1", "d"}}));
        EXPECT_FALSE(answer.isRead);
        EXPECT_EQ(answer.names, QStringLiteral("present a b").split(QLatin1Char(' ')));
        EXPECT_EQ(answer.error, QStringLiteral("untouched"));
    }
}

TEST_F(ListDocuments, OfNoRecordsAreRead)
{
    for (const ListKind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        for (const QByteArray &document :
             {list(kind, {}), QByteArray("<anything ver='1'><other/></anything>")}) {
            const Answer answer = read(kind, document);
            EXPECT_TRUE(answer.isRead);
            EXPECT_EQ(answer.names, QStringList{QStringLiteral("present")});
        }
    }
}

TEST_F(ListDocuments, OfAnotherVersionOrNoXmlAreRefusedWithoutAText)
{
    for (const ListKind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        QByteArray other = list(kind, {{"1", "a"}});
        other.replace(0, other.indexOf('>'), QByteArray("<") + kind.root + " ver=\"2\"");
        for (const QByteArray &document : {other, QByteArray(), QByteArray("<a></b>")}) {
            const Answer answer = read(kind, document);
            EXPECT_FALSE(answer.isRead);
            EXPECT_EQ(answer.names, QStringList{QStringLiteral("present")});
            EXPECT_EQ(answer.error, QStringLiteral("untouched"));
        }
    }
}

TEST_F(ListDocuments, ThatCannotBeOpenedSayWhy)
{
    for (const ListKind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        const Answer missing = readFileOf(kind, path(QStringLiteral("missing.xml")));
        EXPECT_FALSE(missing.isRead);
        EXPECT_EQ(missing.error, QString::fromLocal8Bit(std::strerror(ENOENT)));
        const Answer directory = readFileOf(kind, path(QString()));
        EXPECT_FALSE(directory.isRead);
        EXPECT_EQ(directory.error, QString::fromLocal8Bit(std::strerror(EISDIR)));
        QStringList names;
        EXPECT_FALSE(kind.read(path(QStringLiteral("missing.xml")), names, nullptr));
    }
}

TEST_F(ListDocuments, ThatCannotBeWrittenSayWhy)
{
    const QString fileName = path(QStringLiteral("no/such/folder.xml"));
    QString error;
    EXPECT_FALSE(io::writeEllipsoidList({Ellipsoid()}, fileName, &error));
    EXPECT_EQ(error, QString::fromLocal8Bit(std::strerror(ENOENT)));
    error.clear();
    EXPECT_FALSE(io::writeProjectionList({Projection()}, fileName, &error));
    EXPECT_EQ(error, QString::fromLocal8Bit(std::strerror(ENOENT)));
}

TEST_F(ListDocuments, OfManyRecordsComeBack)
{
    const Coord coord = completeSystem();
    QList<Ellipsoid> ellipsoids;
    QList<Projection> projections;
    for (int i = 0; i < 3; ++i) {
        ellipsoids += coord.ellipsoid;
        ellipsoids.last().ellipsoid_name = QString::number(3 - i);
        projections += coord.projection;
        projections.last().projection_name = QString::number(3 - i);
    }
    ASSERT_TRUE(io::writeEllipsoidList(ellipsoids, path()));
    QList<Ellipsoid> ellipsoidsAgain;
    ASSERT_TRUE(io::readEllipsoidList(path(), ellipsoidsAgain));
    EXPECT_EQ(ellipsoidsAgain, ellipsoids);
    ASSERT_TRUE(io::writeProjectionList(projections, path()));
    QList<Projection> projectionsAgain;
    ASSERT_TRUE(io::readProjectionList(path(), projectionsAgain));
    EXPECT_EQ(projectionsAgain, projections);
}

} // namespace
} // namespace KelStd::test
