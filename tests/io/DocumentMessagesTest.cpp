#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTranslator>

namespace KelStd::test {
namespace {

/// A catalogue of two texts, installed while it lives; it collects what it is asked for.
class TwoTexts : public QTranslator
{
public:
    TwoTexts(const QString &formatError, const QString &notFound)
        : m_formatError(formatError), m_notFound(notFound)
    {
        QCoreApplication::installTranslator(this);
    }
    ~TwoTexts() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char *context, const char *text, const char *disambiguation,
                      int) const override
    {
        if (qstrcmp(context, "QObject") != 0 || disambiguation != nullptr)
            return {};
        if (qstrcmp(text, "Format error, element") == 0)
            return m_formatError;
        return qstrcmp(text, "not found") == 0 ? m_notFound : QString();
    }
    bool isEmpty() const override { return false; }

private:
    QString m_formatError;
    QString m_notFound;
};

class DocumentMessages : public DocumentTest
{};

QByteArray withoutElement(QByteArray DocumentPieces::*record)
{
    DocumentPieces pieces;
    (pieces.*record).clear();
    return pieces.bytes();
}

TEST_F(DocumentMessages, MissingRecordIsNamed)
{
    struct
    {
        QByteArray DocumentPieces::*record;
        const char *message;
    } const rows[] = {
        {&DocumentPieces::ellipsoid, "Format error, element [Ellpsoid] not found."},
        {&DocumentPieces::projection, "Format error, element [Projection] not found."},
        {&DocumentPieces::datum, "Format error, element [Ellipsoid_Transform] not found."},
        {&DocumentPieces::plane, "Format error, element [Plane_Transform] not found."},
        {&DocumentPieces::fitting, "Format error, element [Elevation_Fitting] not found."},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.message);
        Coord coord;
        QString error;
        EXPECT_FALSE(read(withoutElement(row.record), coord, &error));
        EXPECT_EQ(error, QString::fromLatin1(row.message));
        EXPECT_FALSE(read(withoutElement(row.record), coord, nullptr));
    }
}

TEST_F(DocumentMessages, FirstMissingRecordIsNamed)
{
    Coord coord;
    QString error;
    EXPECT_FALSE(read("<Coord ver=\"1\"/>", coord, &error));
    EXPECT_EQ(error, QStringLiteral("Format error, element [Ellpsoid] not found."));
}

/// They are read in their own order, whatever the document's is.
TEST_F(DocumentMessages, RecordsAreReadInTheirOrder)
{
    QByteArray DocumentPieces::*const records[] = {
        &DocumentPieces::ellipsoid, &DocumentPieces::projection, &DocumentPieces::datum,
        &DocumentPieces::plane, &DocumentPieces::fitting};
    const char *const names[] = {"Ellpsoid", "Projection", "Ellipsoid_Transform", "Plane_Transform",
                                 "Elevation_Fitting"};
    for (std::size_t first = 0; first < std::size(records); ++first) {
        DocumentPieces pieces;
        for (std::size_t missing = first; missing < std::size(records); ++missing)
            (pieces.*records[missing]).clear();
        Coord coord;
        QString error;
        EXPECT_FALSE(read(pieces.bytes(), coord, &error));
        EXPECT_EQ(error, QStringLiteral("Format error, element [%1] not found.")
                             .arg(QLatin1String(names[first])));
    }
}

TEST_F(DocumentMessages, BothPhrasesAreTranslated)
{
    const TwoTexts german(QString::fromUtf8("Formfehler, für Element"), QStringLiteral("fehlt"));
    Coord coord;
    QString error;
    EXPECT_FALSE(read(withoutElement(&DocumentPieces::plane), coord, &error));
    EXPECT_EQ(error, QString::fromUtf8("Formfehler, für Element [Plane_Transform] fehlt."));
}

TEST_F(DocumentMessages, PlaceholdersInATranslationAreLeftAlone)
{
    const TwoTexts odd(QStringLiteral("%2 %3"), QStringLiteral("%1"));
    Coord coord;
    QString error;
    EXPECT_FALSE(read(withoutElement(&DocumentPieces::plane), coord, &error));
    EXPECT_EQ(error, QStringLiteral("%2 %3 [Plane_Transform] %1."));
}

TEST_F(DocumentMessages, FailingRecordIsNotNamed)
{
    DocumentPieces pieces;
    pieces.ellipsoid = R"(<Ellpsoid ver="2"/>)";
    pieces.projection.clear();
    Coord coord;
    QString error = QStringLiteral("untouched");
    EXPECT_FALSE(read(pieces.bytes(), coord, &error));
    EXPECT_EQ(error, QStringLiteral("untouched"));
}

TEST_F(DocumentMessages, WhatIsNotXmlFailsWithoutAMessage)
{
    for (const char *document : {"", " \n", "no markup", "<Coord ver=\"1\">", "<a></b>"}) {
        SCOPED_TRACE(document);
        Coord coord = completeSystem();
        QString error = QStringLiteral("untouched");
        EXPECT_FALSE(read(document, coord, &error));
        EXPECT_EQ(error, QStringLiteral("untouched"));
        expectSameSystem(coord, completeSystem());
        EXPECT_FALSE(read(document, coord, nullptr));
    }
}

TEST_F(DocumentMessages, SuccessLeavesTheMessageAlone)
{
    Coord coord;
    QString error = QStringLiteral("untouched");
    EXPECT_TRUE(read(DocumentPieces().bytes(), coord, &error));
    EXPECT_EQ(error, QStringLiteral("untouched"));
    EXPECT_TRUE(Coord_IO::xml_write(coord, path(), &error));
    EXPECT_EQ(error, QStringLiteral("untouched"));
    EXPECT_TRUE(Coord_IO::xml_write(coord, path(), nullptr));
}

/// The error text of a file that cannot be opened, as the file class gives it.
QString textOfOpening(const QString &fileName, QIODevice::OpenMode mode)
{
    QFile file(fileName);
    EXPECT_FALSE(file.open(mode)) << fileName.toStdString();
    return file.errorString();
}

TEST_F(DocumentMessages, FileThatCannotBeReadGivesItsOwnText)
{
    writeFile(path(QStringLiteral("plain")), "x");
    QDir().mkdir(path(QStringLiteral("folder")));
    for (const QString &fileName :
         {path(QStringLiteral("missing.xml")), path(QStringLiteral("no/such/folder.xml")),
          path(QStringLiteral("folder")), path(QStringLiteral("plain/inside.xml")), QString()}) {
        SCOPED_TRACE(fileName.toStdString());
        Coord coord = completeSystem();
        QString error;
        EXPECT_FALSE(Coord_IO::xml_read(fileName, coord, &error));
        EXPECT_FALSE(error.isEmpty());
        EXPECT_EQ(error, textOfOpening(fileName, QIODevice::ReadOnly));
        expectSameSystem(coord, completeSystem());
        EXPECT_FALSE(Coord_IO::xml_read(fileName, coord, nullptr));
    }
}

TEST_F(DocumentMessages, MissingFileIsSaidToBeMissing)
{
    Coord coord;
    QString error;
    EXPECT_FALSE(Coord_IO::xml_read(path(QStringLiteral("missing.xml")), coord, &error));
    EXPECT_EQ(error, QStringLiteral("No such file or directory"));
}

TEST_F(DocumentMessages, FileThatCannotBeWrittenGivesItsText)
{
    writeFile(path(QStringLiteral("plain")), "x");
    QDir().mkdir(path(QStringLiteral("folder")));
    const QStringList before = entries();
    struct
    {
        QString fileName;
        const char *text;
    } const rows[] = {
        {QStringLiteral("no/such/folder.xml"), "No such file or directory"},
        {QStringLiteral("folder"), "Filename refers to a directory"},
        {QStringLiteral("plain/inside.xml"), "Not a directory"},
        {QString(300, QLatin1Char('n')), "File name too long"},
    };
    for (const auto &row : rows) {
        const QString fileName = path(row.fileName);
        SCOPED_TRACE(row.text);
        QString error;
        EXPECT_FALSE(Coord_IO::xml_write(completeSystem(), fileName, &error));
        EXPECT_EQ(error, QString::fromLatin1(row.text));
        EXPECT_FALSE(Coord_IO::xml_write(completeSystem(), fileName, nullptr));
        EXPECT_EQ(entries(), before);
    }
    EXPECT_TRUE(QDir(path(QStringLiteral("folder"))).isEmpty());
}

TEST_F(DocumentMessages, EmptyNameIsRefusedWithTheTextOfOpeningIt)
{
    const QString before = QDir::currentPath();
    QDir::setCurrent(path(QString()));
    QString error;
    EXPECT_FALSE(Coord_IO::xml_write(completeSystem(), QString(), &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(error, textOfOpening(QString(), QIODevice::WriteOnly));
    EXPECT_FALSE(Coord_IO::xml_write(completeSystem(), QString(), nullptr));
    QDir::setCurrent(before);
    EXPECT_TRUE(entries().isEmpty());
}

} // namespace
} // namespace KelStd::test
