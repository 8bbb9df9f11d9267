// What a document that the library writes keeps of a record, and what it would lose.

#include "library/RecordKinds.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/library/RecordDocuments.h>
#include <KelStd/library/RecordLoss.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/location/SystemDefinitions.h>
#include <KelStd/location/SystemNotes.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>

#include <gmock/gmock.h>

namespace KelStd::test {
namespace {

using testing::HasSubstr;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// The Dutch grid with an attribute or a whole element of it changed.
Coord changed(const char *part, const char *other)
{
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("t.xml"));
    QByteArray document = readFile(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"));
    EXPECT_TRUE(document.contains(part)) << part;
    writeFile(file, document.replace(part, other));
    Coord coord;
    QString error;
    EXPECT_TRUE(Coord_IO::xml_read(file, coord, &error)) << error;
    return coord;
}

/// The end of every loss.
constexpr const char *advice = ", which a document that the library writes does not keep; copy the "
                               "file into the library's directory instead";

constexpr const char *translation =
    "valType=\"Distance\" isDictionary=\"false\">-565.04</x_translate>";
constexpr const char *rotation = "valType=\"Angle\" isDictionary=\"false\">0</rotate_angle>";
constexpr const char *scale = "valType=\"Double\" isDictionary=\"false\">0.9999079</param>";

struct Lossy
{
    const char *part;
    const char *other;
    const char *lost;
};

const Lossy lossyRows[] = {
    // The text of such a parameter is never written.
    {scale, "valType=\"String\" isDictionary=\"false\">0.9999079</param>",
     "the value of its parameter \"k_0\" is a text"},
    {translation, "valType=\"String\" isDictionary=\"false\">-565.04</x_translate>",
     "the value of its parameter \"x_translate\" is a text"},
    {rotation, "valType=\"String\" isDictionary=\"false\">7</rotate_angle>",
     "the value of its parameter \"rotate_angle\" is a text"},
    {"valType=\"Y\" isDictionary=\"false\">0</east_zero_y0>",
     "valType=\"String\" isDictionary=\"false\">7</east_zero_y0>",
     "the value of its parameter \"east_zero_y0\" is a text"},
    // "S" reads as 1, which is written as a word that reads as 0.
    {rotation, "valType=\"EllipsoidDirection\" isDictionary=\"false\">S</rotate_angle>",
     "the value of its parameter \"rotate_angle\" is a direction of axes"},
    {translation, "valType=\"Distance\" isDictionary=\"true\">-565.04</x_translate>",
     "the value of its parameter \"x_translate\" is one beside a dictionary"},
    {scale,
     "valType=\"Double\" isDictionary=\"true\" dictionarySelKey=\"one\">0.9999079"
     "<key key_name=\"one\">0.9999079</key></param>",
     "the value of its parameter \"k_0\" is one beside a dictionary"},
    {rotation,
     "valType=\"String\" isDictionary=\"true\" dictionarySelKey=\"one\">"
     "<key key_name=\"one\">7</key></rotate_angle>",
     "the entry \"one\" of its parameter \"rotate_angle\" is a text"},
};

TEST(RecordLosses, AreNoneForWhatADocumentHas)
{
    const QString name = QStringLiteral("A");
    for (const LibraryRecord &record : {LibraryRecord(EllipsoidKind::record(name, 1)),
                                        LibraryRecord(ProjectionKind::record(name, 1)),
                                        LibraryRecord(SystemKind::record(name, 1))}) {
        const auto check = library::checkLoss(record);
        EXPECT_EQ(check.loss, QString());
        EXPECT_EQ(check.failure, QString());
    }
}

TEST(RecordLosses, NameWhatADocumentDoesNotKeep)
{
    Projection projection = ProjectionKind::record(QStringLiteral("P"), 1);
    projection.param[QStringLiteral("mode")] =
        Param(ValueType_String, Unit_None, QStringLiteral("north"));
    EXPECT_THAT(library::checkLoss(projection).loss.toStdString(),
                HasSubstr("the value of its parameter \"mode\" is a text, which a document that "
                          "the library writes does not keep"));
    Ellipsoid ellipsoid = EllipsoidKind::record(QStringLiteral("E"), 1);
    ellipsoid.reciprocal = 298.2572235630016; // 16 digits
    EXPECT_EQ(library::checkLoss(ellipsoid).failure, QString());
    ellipsoid.ellipsoid_name = QString(QChar(0xFFFF));
    EXPECT_THAT(library::checkLoss(ellipsoid).failure.toStdString(),
                HasSubstr("a character that no XML document can hold"));
}

TEST(RecordLosses, NameTheFirstThingThatASystemsDocumentDoesNotKeep)
{
    for (const Lossy &row : lossyRows) {
        const auto check = library::checkLoss(changed(row.part, row.other));
        EXPECT_EQ(check.failure, QString());
        EXPECT_EQ(check.loss, text(row.lost) + text(advice)) << row.other;
    }
}

class KeptRecords : public LibraryTest
{};

TEST_F(KeptRecords, AreThoseOfWhichNothingHasToBeWritten)
{
    const struct
    {
        const char *part;
        const char *other;
    } rows[] = {
        {rotation, "valType=\"String\" isDictionary=\"false\"></rotate_angle>"},
        {rotation, "valType=\"EllipsoidDirection\" isDictionary=\"false\">ENU</rotate_angle>"},
        {rotation, "valType=\"String\" isDictionary=\"false\"/>"},
        {rotation, "valType=\"Double\" isDictionary=\"true\" dictionarySelKey=\"one\">"
                   "<key key_name=\"one\">7</key></rotate_angle>"},
        // A document has 15 digits of these 17.
        {scale, "valType=\"Double\" isDictionary=\"false\">0.99990790000000003</param>"},
        // The value is a text of no kind, which is written.
        {scale, "valType=\"None\" isDictionary=\"false\">0.9999079</param>"},
    };
    for (const auto &row : rows) {
        const Coord coord = changed(row.part, row.other);
        EXPECT_EQ(library::checkLoss(coord).loss, QString()) << row.other;
        EXPECT_TRUE(library::addRecord(text("T"), coord)) << row.other;
        EXPECT_TRUE(library::removeRecord(RecordKind::Custom, text("T"))) << row.other;
    }
}

QStringList systemDocuments()
{
    QStringList documents;
    QDirIterator files(QStringLiteral(KELSTD_TEST_DATA_DIR), {QStringLiteral("*.xml")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        documents += files.next();
    documents.sort();
    return documents;
}

using KeptConversions = ProjTest;

/// What a builder makes of one position, and why it makes nothing.
struct Made
{
    bool isMade = false;
    Location location;
    QString error;
};

QList<Made> madeBy(const Coord &coord)
{
    LocationBuilder builder(coord);
    builder.requireOneToOne();
    QList<Made> all;
    for (const Pos &place :
         {Pos::fromLongLatH(5.4, 52.15, 45.0), Pos::fromLongLatH(-97.25, 31.5, 120.25),
          Pos::fromLongLatH(145.1, -37.9, -3.0)}) {
        Made made;
        made.isMade = builder.make(LocationBuilder::Frame::Wgs84Geographic, place, made.location,
                                   &made.error);
        all += made;
    }
    return all;
}

QStringList definitionsOf(const Coord &coord)
{
    const auto definitions = location::definitionsOf(coord);
    return definitions ? QStringList{definitions->wgs84Geographic, definitions->wgs84Cartesian,
                                     definitions->localGeographic, definitions->localProjected}
                       : QStringList();
}

// Whatever is accepted converts as it does from its own file, to the last bit.
TEST_F(KeptConversions, AreThoseOfTheSystemsOwnDocument)
{
    const QTemporaryDir directory;
    StandardLibrary::getInstance().setCustomCoordPath(directory.path());
    int kept = 0;
    for (const QString &file : systemDocuments()) {
        SCOPED_TRACE(file.toStdString());
        QList<io::DocumentFinding> findings;
        io::DocumentFailure failure;
        const auto records = library::reviewRecords(file, RecordKind::Custom, findings, failure);
        if (!records || !findings.isEmpty()
            || !library::checkLoss(records->constFirst()).loss.isEmpty())
            continue;
        LibraryRecord record = records->constFirst();
        const QString name = text("System %1").arg(kept++);
        library::rename(record, name);
        ASSERT_TRUE(library::addRecord(name, record));
        Coord given;
        Coord read;
        ASSERT_TRUE(Coord_IO::xml_read(file, given, nullptr));
        ASSERT_TRUE(Coord_IO::xml_read(directory.filePath(name + text(".xml")), read, nullptr));
        EXPECT_EQ(definitionsOf(read), definitionsOf(given));
        EXPECT_EQ(location::notesOn(read), location::notesOn(given));
        const auto ofGiven = madeBy(given);
        const auto ofRead = madeBy(read);
        for (int i = 0; i < ofGiven.size(); ++i) {
            EXPECT_EQ(ofRead.at(i).isMade, ofGiven.at(i).isMade);
            EXPECT_EQ(ofRead.at(i).error, ofGiven.at(i).error);
            EXPECT_TRUE(ofRead.at(i).location == ofGiven.at(i).location);
        }
    }
    EXPECT_GE(kept, 25);
    StandardLibrary::getInstance().setCustomCoordPath(QString());
    StandardLibrary::getInstance().loadLibrary();
}

} // namespace
} // namespace KelStd::test
