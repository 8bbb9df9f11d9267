#include "io/DocumentTest.h"

#include <QtCore/QDir>

namespace KelStd::test {

QStringList DocumentTest::entries() const
{
    return QDir(m_dir.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QByteArray DocumentTest::written(const Coord &coord) const
{
    QString error;
    EXPECT_TRUE(Coord_IO::xml_write(coord, path(), &error)) << error.toStdString();
    return readFile(path());
}

bool DocumentTest::read(const QByteArray &document, Coord &coord, QString *error) const
{
    writeFile(path(), document);
    return Coord_IO::xml_read(path(), coord, error);
}

Coord DocumentTest::throughFile(const Coord &coord) const
{
    written(coord);
    Coord result;
    EXPECT_TRUE(Coord_IO::xml_read(path(), result, nullptr));
    return result;
}

QByteArray DocumentPieces::bytes() const
{
    return declaration + "\n<Coord " + rootAttributes + ">\n" + ellipsoid + '\n' + projection + '\n'
           + datum + '\n' + plane + '\n' + fitting + '\n' + geoid + '\n' + more + "\n</Coord>\n";
}

QByteArray documentWithProjection(const QByteArray &children)
{
    DocumentPieces pieces;
    pieces.projection = "<Projection ver=\"1\">" + children + "</Projection>";
    return pieces.bytes();
}

QByteArray documentWithDatum(const QByteArray &children)
{
    DocumentPieces pieces;
    pieces.datum = "<Ellipsoid_Transform ver=\"1\">" + children + "</Ellipsoid_Transform>";
    return pieces.bytes();
}

QString storedDocumentPath(const char *name)
{
    return QStringLiteral(KELSTD_TEST_DATA_DIR) + QStringLiteral("/documents/")
           + QString::fromUtf8(name);
}

QByteArray storedDocument(const char *name)
{
    return readFile(storedDocumentPath(name));
}

} // namespace KelStd::test
