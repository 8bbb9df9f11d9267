// What no finding is, and what several are.

#include "io/CompleteSystem.h"
#include "io/ReviewedDocument.h"

#include <KelStd/io/ListDocuments.h>

#include <QtCore/QDirIterator>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>

namespace KelStd::test {
namespace {

using io::DocumentFinding;
using Kind = io::FindingKind;

class ReviewedTogether : public ReviewTest
{
protected:
    static QList<Kind> kindsOf(const QList<DocumentFinding> &findings)
    {
        QList<Kind> kinds;
        for (const DocumentFinding &finding : findings)
            kinds += finding.kind;
        return kinds;
    }
};

/// The documents below a folder of the sources.
QStringList documentsIn(const char *folder)
{
    QStringList documents;
    QDirIterator files(QStringLiteral(KELSTD_TEST_SOURCE_DIR) + QLatin1Char('/')
                           + QLatin1String(folder),
                       {QStringLiteral("*.xml")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        documents += files.next();
    documents.sort();
    return documents;
}

TEST_F(ReviewedTogether, DocumentsThatAreDeliveredHaveNoFinding)
{
    QStringList documents =
        documentsIn("data/library") + documentsIn("examples") + documentsIn("tests/data/systems");
    QDirIterator zones(QStringLiteral(KELSTD_TEST_BIN_DIR "/library/standard"),
                       {QStringLiteral("*.xml")}, QDir::Files);
    while (zones.hasNext())
        documents += zones.next();
    EXPECT_GE(documents.size(), 220);
    for (const QString &document : documents) {
        QList<DocumentFinding> findings;
        bool isRead = false;
        if (document.contains(QLatin1String("/ellipsoids/"))) {
            QList<Ellipsoid> records;
            isRead = io::reviewEllipsoidList(document, records, findings);
        } else if (document.contains(QLatin1String("/projections/"))) {
            QList<Projection> records;
            isRead = io::reviewProjectionList(document, records, findings);
        } else {
            Coord coord;
            isRead = io::reviewCoord(document, coord, findings);
        }
        EXPECT_TRUE(isRead) << document;
        EXPECT_TRUE(findings.isEmpty()) << document << testing::PrintToString(findings);
    }
}

TEST_F(ReviewedTogether, ANewSystemHasNoFinding)
{
    EXPECT_TRUE(reviewed(storedDocument("fresh.xml")).isEmpty());
    EXPECT_TRUE(reviewed(written(Coord())).isEmpty());
    Coord utm;
    Coord::CreateDefaultTMercCoordination(utm);
    const auto findings = reviewed(written(utm));
    EXPECT_TRUE(findings.isEmpty()) << testing::PrintToString(findings);
}

// Each element and attribute with a value of its own, of which a definition has no use for three.
TEST_F(ReviewedTogether, TheCompleteSystemHasWhatNoDefinitionUses)
{
    for (const QByteArray &document : {storedDocument("complete.xml"), written(completeSystem())}) {
        const auto findings = reviewed(document);
        ASSERT_EQ(findings.size(), 3) << testing::PrintToString(findings);
        EXPECT_EQ(findings.at(0).kind, Kind::UnitNotUsed);
        EXPECT_EQ(findings.at(0).element, QStringLiteral("Coord/Projection/param[FalseEast]"));
        EXPECT_EQ(findings.at(0).written, QStringLiteral("unit=\"Foot\""));
        EXPECT_EQ(findings.at(1).kind, Kind::NotUsed);
        EXPECT_EQ(findings.at(1).element, QStringLiteral("Coord/Projection/param[no_rot]"));
        // 0.3597 degrees are 1295 arc seconds.
        EXPECT_EQ(findings.at(2).kind, Kind::Implausible);
        EXPECT_EQ(findings.at(2).element, QStringLiteral("Coord/Ellipsoid_Transform/y_rotate"));
    }
}

TEST_F(ReviewedTogether, ADocumentOfTheFirstReleaseHasItsAxesMisread)
{
    const auto findings = reviewed(storedDocument("early_release.xml"));
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().kind, Kind::UnknownWord);
    EXPECT_EQ(findings.first().written,
              QStringLiteral("positiveDir=\"EEllipsoidHeadDirection_WSU\""));
    EXPECT_EQ(findings.first().understood, QStringLiteral("ENU"));
}

struct Harmless
{
    const char *from;
    const char *to;
};

const Harmless harmless[] = {
    {">-565.04<", "> -565.04 <"},
    {">-565.04<", ">\n        -565.04\t<"},
    {">-565.04<", ">\r\n-565.04\r\n<"},
    {">-565.04<", ">-5.6504e2<"},
    {">-565.04<", ">-5.6504E+02<"},
    {">-565.04<", ">-0565.0400<"},
    {">-0.40939<", ">-.40939<"},
    {">0.35971<", ">+0.35971<"},
    {">-565.04<", ">-565.04000000000000000000001<"},
    {">155000<", ">155000.<"},
    {">155000<", ">155000.00000000000000000000<"},
    {">-565.04<", ">&#45;565&#x2E;04<"},
    {">-565.04<", "><![CDATA[-565.04]]><"},
    {">-565.04<", ">-565.04<!-- m --><"},
    {">-565.04<", ">-565.04 <?m?> <"},
    {"<x_translate ", "<!-- from x --><x_translate "},
    {"coord_name=\"", "xml:lang=\"nl\" coord_name=\""},
    {"coord_name=\"", "xmlns=\"urn:x\" xmlns:k=\"urn:k\" coord_name=\""},
    {"<Geoid_Model ver=\"1\" modelFileName=\"\"/>", ""},
    {"<Geoid_Model ver=\"1\" modelFileName=\"\"/>", "<Geoid_Model\n  ver=' 1 '\n/>"},
    {"fuction=\"None\"", ""},
    {"isDictionary=\"false\"", ""},
    {"isDictionary=\"false\"", "isDictionary=\"FALSE\""},
    {"positiveDir=\"ENU\"", ""},
    {"positiveDir=\"ENU\"", "positiveDir=\"EEllipsoidHeadDirection_ENU\""},
    {"biggerHalfAxle=\"6377397.155\" reciprocal=\"299.1528128\" ", ""},
    {"biggerHalfAxle=\"6377397.155\"", "biggerHalfAxle=\" 6377397.155 \""},
    {"biggerHalfAxle=\"6377397.155\"", "biggerHalfAxle=\"6377397.15508\""},
    {"locationType=\"X_Y_ElevationHeight\"", "locationType=\"\""},
    {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", "\xEF\xBB\xBF"},
    {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", "<!-- M\xFCller -->"},
    {"Amersfoort", "\xEF\xBF\xBD"},
};

TEST_F(ReviewedTogether, HarmlessWaysToWriteItHaveNoFinding)
{
    for (const Harmless &row : harmless) {
        const auto findings = reviewed(dutchGridWith(row.from, row.to));
        EXPECT_TRUE(findings.isEmpty()) << row.to << testing::PrintToString(findings);
    }
}

TEST_F(ReviewedTogether, LinesMayEndInAnyWay)
{
    QByteArray document = dutchGridWith(">-565.04<", ">-565,04<");
    for (const QByteArray &end : {QByteArray("\r\n"), QByteArray("\n\n")}) {
        const auto findings = reviewed(QByteArray(document).replace("\n", end));
        ASSERT_EQ(findings.size(), 1);
        EXPECT_EQ(findings.first().line, end == "\r\n" ? 17 : 33);
    }
}

TEST_F(ReviewedTogether, OtherEncodingsAreReviewedAlike)
{
    const QString text = QString::fromUtf8(dutchGridWith(">-565.04<", ">-565,04<"))
                             .replace(QLatin1String("UTF-8"), QLatin1String("UTF-16"));
    QByteArray utf16 = "\xFF\xFE";
    for (const QChar c : text) {
        utf16 += static_cast<char>(c.cell());
        utf16 += static_cast<char>(c.row());
    }
    const auto findings = reviewed(utf16);
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().written, QStringLiteral("-565,04"));
}

// A Latin-1 document without a declaration.
TEST_F(ReviewedTogether, BytesThatAreNoTextAreFoundWhereTheyStand)
{
    const auto findings = reviewed(dutchGridWith("RD New", "RD N\xEBw"));
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().kind, Kind::DamagedText);
    EXPECT_EQ(findings.first().element, QStringLiteral("Coord"));
    QByteArray declared = dutchGridWith("RD New", "RD N\xEBw");
    declared.replace("UTF-8", "ISO-8859-1");
    EXPECT_TRUE(reviewed(declared).isEmpty());
}

TEST_F(ReviewedTogether, AMisspeltFunctionLeavesTheWholeShiftUnused)
{
    const auto findings = reviewed(dutchGridWith("fuction=\"Seven\"", "function=\"Seven\""));
    ASSERT_EQ(findings.size(), 8) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().kind, Kind::UnknownAttribute);
    EXPECT_EQ(findings.first().written, QStringLiteral("function=\"Seven\""));
    for (const DocumentFinding &finding : findings.mid(1))
        EXPECT_EQ(finding.kind, Kind::NotUsed) << testing::PrintToString(finding);
    EXPECT_EQ(findings.at(1).written, QStringLiteral("-565.04"));
}

TEST_F(ReviewedTogether, ThreeParametersLeaveFourUnused)
{
    const auto findings = reviewed(dutchGridWith("fuction=\"Seven\"", "fuction=\"Three\""));
    EXPECT_EQ(kindsOf(findings),
              QList<Kind>({Kind::NotUsed, Kind::NotUsed, Kind::NotUsed, Kind::NotUsed}))
        << testing::PrintToString(findings);
}

TEST_F(ReviewedTogether, AThreeParameterShiftReadsZInTheUnitOfY)
{
    QByteArray document =
        readFile(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/ch1903plus_lv95.xml"));
    ASSERT_TRUE(document.contains("<z_translate ver=\"1\" unit=\"Milli Meter\""));
    document.replace("<z_translate ver=\"1\" unit=\"Milli Meter\"",
                     "<z_translate ver=\"1\" unit=\"US Foot\"");
    // 405346 feet are more than any shift, too.
    const auto findings = reviewed(document);
    ASSERT_FALSE(findings.isEmpty());
    EXPECT_EQ(findings.last().kind, Kind::UnitNotUsed);
    EXPECT_EQ(findings.last().understood, QStringLiteral("Milli Meter"));
}

TEST_F(ReviewedTogether, APlaceWithoutAParameterAndAParameterWithoutAPlace)
{
    const auto findings =
        reviewed(dutchGridWith("<paramProj4 name=\"lon_0\"", "<paramProj4 name=\"lon0\""));
    ASSERT_EQ(findings.size(), 2) << testing::PrintToString(findings);
    EXPECT_EQ(findings.at(0).kind, Kind::NotUsed);
    EXPECT_EQ(findings.at(0).written, QStringLiteral("5.38763888888889"));
    EXPECT_EQ(findings.at(1).kind, Kind::MissingValue);
    EXPECT_EQ(findings.at(1).understood, QStringLiteral("lon_0=0"));
}

// PROJ is given the value, which stands beside the dictionary or nowhere.
TEST_F(ReviewedTogether, ADictionaryInPlaceOfAValue)
{
    const QByteArray dictionary =
        "isDictionary=\"true\" dictionarySelKey=\"one\" dictionaryBindParamName=\"\">%"
        "<key key_name=\"one\">0.9999079</key><key key_name=\"two\">0,5</key><";
    auto findings = reviewed(dutchGridWith("isDictionary=\"false\">0.9999079<",
                                           QByteArray(dictionary).replace("%", "")));
    ASSERT_EQ(findings.size(), 2) << testing::PrintToString(findings);
    EXPECT_EQ(kindsOf(findings).count(Kind::MissingValue), 1);
    EXPECT_EQ(kindsOf(findings).count(Kind::NotANumber), 1);
    findings = reviewed(dutchGridWith("isDictionary=\"false\">0.9999079<",
                                      QByteArray(dictionary).replace("%", "0.9999079")));
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().element, QStringLiteral("Coord/Projection/param[k_0]/key[two]"));
}

// A text or a dictionary is for whoever edits the system.
TEST_F(ReviewedTogether, WhatIsNotForADefinitionNeedsNoPlaceInIt)
{
    const QByteArray place = "        <paramProj4 name=\"k_0\" proj4Param=\"k_0\"/>\n";
    for (const char *param :
         {"valType=\"String\" isDictionary=\"false\">zone 3</param>",
          "valType=\"Double\" isDictionary=\"true\" dictionarySelKey=\"a\"><key "
          "key_name=\"a\">0.9996</key></param>",
          "valType=\"Double\" isDictionary=\"false\">0</param>"}) {
        QByteArray document = dutchGridWith(place, "");
        document.replace("valType=\"Double\" isDictionary=\"false\">0.9999079</param>", param);
        const auto findings = reviewed(document);
        EXPECT_TRUE(findings.isEmpty()) << testing::PrintToString(findings);
    }
}

TEST_F(ReviewedTogether, AnEllipsoidOfItsOwnNumbersMayBeAny)
{
    for (const char *name : {"", "besel", "my_own"}) {
        const auto findings = reviewed(
            dutchGridWith("biggerHalfAxle=\"6377397.155\" reciprocal=\"299.1528128\" "
                          "positiveDir=\"ENU\" proj4EllpsName=\"bessel\"",
                          QByteArray("biggerHalfAxle=\"6378249.145\" reciprocal=\"293.465\" "
                                     "positiveDir=\"ENU\" proj4EllpsName=\"")
                              + name + '"'));
        EXPECT_TRUE(findings.isEmpty()) << testing::PrintToString(findings);
    }
    // EPSG's Clarke 1880 (RGS) has 293.465, PROJ's 293.4663: 0.1 m of the semi-minor axis.
    EXPECT_TRUE(reviewedEllipsoids("<Ellipsoid_List ver=\"1\"><Ellpsoid ver=\"1\" "
                                   "ellipsoid_name=\"C\" biggerHalfAxle=\"6378249.145\" "
                                   "reciprocal=\"293.465\" proj4EllpsName=\"clrk80\"/>"
                                   "</Ellipsoid_List>")
                    .isEmpty());
}

TEST_F(ReviewedTogether, ListsAreReviewedRecordByRecord)
{
    const auto ellipsoids = reviewedEllipsoids(
        "<Ellipsoid_List ver=\"1\">\n"
        "<Ellpsoid ver=\"1\" ellipsoid_name=\"A\" biggerHalfAxle=\"6378137\" "
        "reciprocal=\"298.3\"/>\n"
        "<Ellpsoid ver=\"1\" ellipsoid_name=\"B\" biggerHalfAxle=\"6377\" reciprocal=\"0.5\"/>\n"
        "<Ellipsoid/></Ellipsoid_List>");
    ASSERT_EQ(ellipsoids.size(), 3) << testing::PrintToString(ellipsoids);
    EXPECT_EQ(kindsOf(ellipsoids),
              QList<Kind>({Kind::Implausible, Kind::Implausible, Kind::UnknownElement}));
    EXPECT_EQ(ellipsoids.first().element, QStringLiteral("Ellipsoid_List/Ellpsoid"));
    EXPECT_EQ(ellipsoids.first().line, 3);

    const auto projections = reviewedProjections(
        "<Projection_List ver=\"1\"><Projection ver=\"1\" projection_name=\"P\" "
        "proj4Projection=\"tmerc\">\n<param name=\"k\" ver=\"1\" unit=\"None\" valType=\"Double\" "
        "isDictionary=\"false\">9996</param>\n<paramProj4 name=\"k\" proj4Param=\"k_0\"/>"
        "</Projection></Projection_List>");
    ASSERT_EQ(projections.size(), 1) << testing::PrintToString(projections);
    EXPECT_EQ(projections.first().kind, Kind::Implausible);
    EXPECT_EQ(projections.first().element, QStringLiteral("Projection_List/Projection/param[k]"));
}

// What reading says and does is the same with a review beside it.
TEST_F(ReviewedTogether, ReadingIsTheSame)
{
    for (const char *name : {"complete.xml", "early_release.xml", "fresh.xml"}) {
        Coord read = completeSystem();
        Coord reviewedToo = completeSystem();
        QList<DocumentFinding> findings;
        ASSERT_TRUE(Coord_IO::xml_read(storedDocumentPath(name), read));
        ASSERT_TRUE(io::reviewCoord(storedDocumentPath(name), reviewedToo, findings));
        expectSameSystem(reviewedToo, read);
    }
    Coord coord;
    QList<DocumentFinding> findings;
    QString error;
    EXPECT_FALSE(io::reviewCoord(path(QStringLiteral("none.xml")), coord, findings, &error));
    EXPECT_EQ(error, QStringLiteral("No such file or directory"));
    error.clear();
    writeFile(path(), "no XML");
    EXPECT_FALSE(io::reviewCoord(path(), coord, findings, &error));
    EXPECT_EQ(error, QString());
    EXPECT_TRUE(findings.isEmpty());
    writeFile(path(), dutchGridWith("<Projection ver", "<Projektion ver")
                          .replace("</Projection>", "</Projektion>"));
    EXPECT_FALSE(io::reviewCoord(path(), coord, findings, &error));
    EXPECT_EQ(error, QStringLiteral("Format error, element [Projection] not found."));
}

TEST_F(ReviewedTogether, ADocumentThatIsRefusedIsReviewedAsFarAsItGoes)
{
    writeFile(path(), dutchGridWith("<Plane_Transform ver=\"1\"", "<Plane_Transform"));
    Coord coord;
    QList<DocumentFinding> findings;
    EXPECT_FALSE(io::reviewCoord(path(), coord, findings));
    ASSERT_EQ(findings.size(), 1) << testing::PrintToString(findings);
    EXPECT_EQ(findings.first().kind, Kind::WrongVersion);
    EXPECT_EQ(findings.first().element, QStringLiteral("Coord/Plane_Transform"));
    EXPECT_EQ(findings.first().line, 25);
}

TEST_F(ReviewedTogether, FindingsAreAddedToThoseThatAreThere)
{
    writeFile(path(), dutchGridWith(">-565.04<", ">-565,04<"));
    Coord coord;
    QList<DocumentFinding> findings;
    io::reviewCoord(path(), coord, findings);
    io::reviewCoord(path(), coord, findings);
    EXPECT_EQ(findings.size(), 2);
}

TEST_F(ReviewedTogether, AFindingHasASentence)
{
    const auto sentence = [this](const char *from, const char *to) {
        return io::describedFinding(reviewed(dutchGridWith(from, to)).value(0));
    };
    EXPECT_EQ(sentence(">-565.04<", ">-565,04<"),
              QStringLiteral("line 17, Coord/Ellipsoid_Transform/x_translate: \"-565,04\" is no "
                             "number that can be read; understood: 0"));
    EXPECT_EQ(sentence("fuction=\"Seven\"", "fuction=\"seven\""),
              QStringLiteral("line 16, Coord/Ellipsoid_Transform: fuction=\"seven\" is none of the "
                             "format's words; understood: None"));
    // A text of the document is no pattern of ours.
    EXPECT_EQ(sentence(">-565.04<", ">%3 %1<"),
              QStringLiteral("line 17, Coord/Ellipsoid_Transform/x_translate: \"%3 %1\" is no "
                             "number that can be read; understood: 0"));
}

// Each element of 200,000 is looked at once.
TEST_F(ReviewedTogether, HostileDocumentsAreReviewedQuickly)
{
    const QByteArray places =
        dutchGridWith("</Projection>", QByteArray("<a/>").repeated(200000) + "</Projection>");
    QByteArray params;
    for (int i = 0; i < 20000; ++i) {
        const QByteArray name = QByteArray::number(i);
        params += "<param name=\"p" + name + "\" ver=\"1\"/><paramProj4 name=\"p" + name
                  + "\" proj4Param=\"q" + name + "\"/>";
    }
    QByteArray attributes;
    for (int i = 0; i < 100000; ++i)
        attributes += " a" + QByteArray::number(i) + "=\"\"";
    QElapsedTimer timer;
    timer.start();
    for (const QByteArray &document :
         {places, dutchGridWith("</Projection>", params + "</Projection>"),
          dutchGridWith("<Geoid_Model ", "<Geoid_Model" + attributes + ' ')}) {
        const auto findings = reviewed(document);
        EXPECT_GE(findings.size(), 64);
        EXPECT_LE(findings.size(), io::maxFindings);
    }
    EXPECT_LT(timer.elapsed(), 60000);
}

} // namespace
} // namespace KelStd::test
