#include "io/ReviewedDocument.h"

#include <ostream>

namespace KelStd::io {

void PrintTo(const DocumentFinding &finding, std::ostream *out)
{
    *out << "kind " << static_cast<int>(finding.kind) << ", " << finding.element << ':'
         << finding.line << ", written [" << finding.written << "], understood ["
         << finding.understood << ']';
}

} // namespace KelStd::io

namespace KelStd::test {

QByteArray dutchGridWith(const QByteArray &from, const QByteArray &to)
{
    QByteArray document = readFile(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"));
    EXPECT_TRUE(document.contains(from)) << from.toStdString();
    return document.replace(from, to);
}

QList<io::DocumentFinding> ReviewTest::reviewed(const QByteArray &document) const
{
    writeFile(path(), document);
    Coord coord;
    QList<io::DocumentFinding> findings;
    EXPECT_TRUE(io::reviewCoord(path(), coord, findings)) << document.left(200).toStdString();
    return findings;
}

QList<io::DocumentFinding> ReviewTest::reviewedEllipsoids(const QByteArray &document) const
{
    writeFile(path(), document);
    QList<Ellipsoid> records;
    QList<io::DocumentFinding> findings;
    EXPECT_TRUE(io::reviewEllipsoidList(path(), records, findings));
    return findings;
}

QList<io::DocumentFinding> ReviewTest::reviewedProjections(const QByteArray &document) const
{
    writeFile(path(), document);
    QList<Projection> records;
    QList<io::DocumentFinding> findings;
    EXPECT_TRUE(io::reviewProjectionList(path(), records, findings));
    return findings;
}

} // namespace KelStd::test
