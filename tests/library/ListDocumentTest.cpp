#include "library/RecordKinds.h"

#include "io/CompleteSystem.h"

namespace KelStd::test {
namespace {

constexpr const char *declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

class EllipsoidLists : public RecordTest<EllipsoidKind>
{
protected:
    /// Loads a list of these bytes; the names of the ellipsoids that come from it.
    QStringList loaded(const QByteArray &document) const
    {
        write("ellipsoids/list.xml", document);
        library().loadLibrary();
        return names();
    }
};

class ProjectionLists : public RecordTest<ProjectionKind>
{
protected:
    QStringList loaded(const QByteArray &document) const
    {
        write("projections/list.xml", document);
        library().loadLibrary();
        return names();
    }
};

// --- Written ---------------------------------------------------------------------------------

TEST_F(EllipsoidLists, AreWrittenInTheirFrame)
{
    Ellipsoid ellipsoid;
    ellipsoid.ellipsoid_name = name("Düne & <Söhne>");
    ellipsoid.biggerHalfAxle.value = 6377397.155;
    ellipsoid.reciprocal = 299.1528128;
    ellipsoid.positiveDir = EllipsoidDirection_ESU;
    ASSERT_TRUE(add(name("x"), &ellipsoid));
    expectDocument(QStringLiteral("x.xml"),
                   "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<Ellipsoid_List ver=\"1\">\n"
                   "    <Ellpsoid ver=\"1\" ellipsoid_name=\"D\xC3\xBCne &amp; &lt;S\xC3\xB6hne>\""
                   " biggerHalfAxle=\"6377397.155\" reciprocal=\"299.1528128\""
                   " positiveDir=\"ESU\" proj4EllpsName=\"\"/>\n"
                   "</Ellipsoid_List>\n");
}

TEST_F(ProjectionLists, AreWrittenAsInASystem)
{
    const Projection projection = completeSystem().projection;
    ASSERT_TRUE(add(name("x"), &projection));
    const QByteArray system = SystemKind::document(QString(), 1);
    const int begin = system.indexOf("    <Projection");
    const QByteArray end = "</Projection>\n";
    const QByteArray element = system.mid(begin, system.indexOf(end) + end.size() - begin);
    expectDocument(QStringLiteral("x.xml"),
                   declaration
                       + ("<Projection_List ver=\"1\">\n" + element + "</Projection_List>\n"));
}

TEST_F(ProjectionLists, HaveAnElementWithoutContentForAProjectionWithoutParameters)
{
    const Projection projection;
    ASSERT_TRUE(add(name("x"), &projection));
    expectDocument(
        QStringLiteral("x.xml"),
        declaration
            + QByteArray("<Projection_List ver=\"1\">\n"
                         "    <Projection ver=\"1\" projection_name=\"\" proj4Projection=\"\""
                         " locationType=\"X_Y_ElevationHeight\" loc_or_height_unit=\"Meter\"/>\n"
                         "</Projection_List>\n"));
}

// --- Read ------------------------------------------------------------------------------------

TEST_F(EllipsoidLists, HoldAnyNumberOfRecords)
{
    EXPECT_EQ(
        loaded("<Ellipsoid_List ver='1'>"
               "<Ellpsoid ver='1' ellipsoid_name='b' biggerHalfAxle='6378388' reciprocal='297'"
               " positiveDir='WNU' proj4EllpsName='intl'/>"
               "<Ellpsoid ver='1' ellipsoid_name='a'/>"
               "</Ellipsoid_List>"),
        (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    const Ellipsoid *b = find(name("b"));
    EXPECT_EQ(b->biggerHalfAxle.value.toDouble(), 6378388.0);
    EXPECT_EQ(b->biggerHalfAxle.unit, Ellipsoid().biggerHalfAxle.unit);
    EXPECT_EQ(b->biggerHalfAxle.valType, Ellipsoid().biggerHalfAxle.valType);
    EXPECT_EQ(b->reciprocal, 297.0);
    EXPECT_EQ(b->positiveDir, EllipsoidDirection_WNU);
    EXPECT_EQ(b->proj4EllpsName, name("intl"));
    EXPECT_TRUE(*find(name("a")) == Ellipsoid()); // each begins afresh
}

TEST_F(EllipsoidLists, ReadTheFirstReleasesDirectionsAsEastNorthUp)
{
    loaded("<Ellipsoid_List ver='1'><Ellpsoid ver='1' ellipsoid_name='a'"
           " positiveDir='EEllipsoidHeadDirection_WSU'/></Ellipsoid_List>");
    ASSERT_NE(find(name("a")), nullptr);
    EXPECT_EQ(find(name("a"))->positiveDir, EllipsoidDirection_ENU);
}

TEST_F(ProjectionLists, HoldAnyNumberOfRecords)
{
    EXPECT_EQ(loaded("<Projection_List ver='1'>"
                     "<Projection ver='1' projection_name='b' proj4Projection='tmerc'"
                     " locationType='Lat_Long_EarthHeight' loc_or_height_unit='Foot'>"
                     "<param name='k' ver='1' unit='None' valType='Double'>0.9996</param>"
                     "<paramProj4 name='k' proj4Param='k_0'/></Projection>"
                     "<Projection ver='1' projection_name='a'/>"
                     "</Projection_List>"),
              (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    const Projection *b = find(name("b"));
    EXPECT_EQ(b->proj4Projection, name("tmerc"));
    EXPECT_EQ(b->locationType, LocationType_Lat_Long_EarthHeight);
    EXPECT_EQ(b->loc_or_height_unit, Unit_Foot);
    ASSERT_EQ(b->param.size(), 1);
    EXPECT_EQ(b->param.value(name("k")).value, QVariant(0.9996));
    EXPECT_EQ(b->paramProj4, (QMap<QString, QString>{{name("k"), name("k_0")}}));
    EXPECT_TRUE(*find(name("a")) == Projection());
}

TEST_F(EllipsoidLists, MayBeEmpty)
{
    EXPECT_TRUE(loaded("<Ellipsoid_List ver='1'/>").isEmpty());
    EXPECT_TRUE(
        loaded("<Ellipsoid_List ver='1'> text <!-- and a comment --> </Ellipsoid_List>").isEmpty());
}

TEST_F(EllipsoidLists, MayHaveAnyRoot)
{
    for (const char *root : {"Projection_List", "Coord", "x"}) {
        SCOPED_TRACE(root);
        EXPECT_EQ(loaded(QByteArray("<") + root
                         + " ver='1'><Ellpsoid ver='1' ellipsoid_name='a'/></" + root + '>'),
                  QStringList(QStringLiteral("a")));
    }
}

TEST_F(EllipsoidLists, AreRecordsThatAreChildrenOfTheRoot)
{
    EXPECT_EQ(loaded("<Ellipsoid_List ver='1'><Projection ver='1' projection_name='p'/>"
                     "<Ellipsoid ver='1' ellipsoid_name='spelled right'/>"
                     "<ellpsoid ver='1' ellipsoid_name='small'/>"
                     "<group><Ellpsoid ver='1' ellipsoid_name='deeper'/></group>"
                     "<Ellpsoid ver='1' ellipsoid_name='a'/></Ellipsoid_List>"),
              QStringList(QStringLiteral("a")));
}

TEST_F(EllipsoidLists, DoNotDependOnTheOrderOfAttributes)
{
    loaded("<Ellipsoid_List ver='1'><Ellpsoid proj4EllpsName='intl' reciprocal='297'"
           " ellipsoid_name='a' ver='1' biggerHalfAxle='6378388'/></Ellipsoid_List>");
    ASSERT_NE(find(name("a")), nullptr);
    EXPECT_EQ(find(name("a"))->reciprocal, 297.0);
}

/// Versions of a root or record, and whether they are read.
struct Version
{
    const char *attribute;
    bool isRead;
};

constexpr Version versions[] = {
    {"ver='1'", true},   {"ver='01'", true}, {"ver=' 1 '", true}, {"ver='2'", false},
    {"ver='0'", false},  {"ver=''", false},  {"", false},         {"ver='1.0'", false},
    {"ver='-1'", false}, {"ver='x'", false}, {"Ver='1'", false},  {"ver='4294967297'", false},
};

TEST_F(EllipsoidLists, AreReadInVersion1)
{
    for (const Version &version : versions) {
        SCOPED_TRACE(version.attribute);
        const QStringList expected =
            version.isRead ? QStringList(QStringLiteral("a")) : QStringList();
        EXPECT_EQ(loaded(QByteArray("<Ellipsoid_List ") + version.attribute
                         + "><Ellpsoid ver='1' ellipsoid_name='a'/></Ellipsoid_List>"),
                  expected);
        EXPECT_EQ(loaded(QByteArray("<Ellipsoid_List ver='1'><Ellpsoid ellipsoid_name='a' ")
                         + version.attribute + "/></Ellipsoid_List>"),
                  expected);
    }
}

TEST_F(ProjectionLists, AreReadInVersion1)
{
    for (const Version &version : versions) {
        SCOPED_TRACE(version.attribute);
        const QStringList expected =
            version.isRead ? QStringList(QStringLiteral("a")) : QStringList();
        EXPECT_EQ(loaded(QByteArray("<Projection_List ") + version.attribute
                         + "><Projection ver='1' projection_name='a'/></Projection_List>"),
                  expected);
        EXPECT_EQ(loaded(QByteArray("<Projection_List ver='1'><Projection projection_name='a' ")
                         + version.attribute + "/></Projection_List>"),
                  expected);
        EXPECT_EQ(loaded(QByteArray("<Projection_List ver='1'><Projection ver='1'"
                                    " projection_name='a'><param name='p' ")
                         + version.attribute + "/></Projection></Projection_List>"),
                  expected);
    }
}

TEST_F(EllipsoidLists, AreSkippedAsAWhole)
{
    EXPECT_TRUE(loaded("<Ellipsoid_List ver='1'><Ellpsoid ver='1' ellipsoid_name='a'/>"
                       "<Ellpsoid ver='2' ellipsoid_name='b'/>"
                       "<Ellpsoid ver='1' ellipsoid_name='c'/></Ellipsoid_List>")
                    .isEmpty());
}

TEST_F(ProjectionLists, AreSkippedAsAWhole)
{
    EXPECT_TRUE(loaded("<Projection_List ver='1'><Projection ver='1' projection_name='a'/>"
                       "<Projection ver='2' projection_name='b'/>"
                       "<Projection ver='1' projection_name='c'/></Projection_List>")
                    .isEmpty());
}

// --- Hostile ---------------------------------------------------------------------------------

TEST_F(EllipsoidLists, ThatAreNoXmlAreSkippedAndTheOthersRead)
{
    write("ellipsoids/other.xml", EllipsoidKind::document(name("other"), 1));
    const QByteArray record = "<Ellpsoid ver='1' ellipsoid_name='a'/>";
    const QByteArray whole = "<Ellipsoid_List ver='1'>" + record + "</Ellipsoid_List>";
    const QByteArray hostile[] = {
        "",
        " ",
        QByteArray(1000, '\0'),
        QByteArray(1000, '\xFF'),
        "\xFF\xFE",
        whole.left(whole.size() - 1),
        whole + '<',
        whole + whole,
        "<Ellipsoid_List ver='1'>" + record + "</Projection_List>",
        "<Ellipsoid_List ver='1' ver='1'>" + record + "</Ellipsoid_List",
        "<!DOCTYPE x [<!ENTITY e \"<Ellpsoid ver='1' ellipsoid_name='a'/>\">]>"
        "<Ellipsoid_List ver='1'>&e;</Ellipsoid_List>",
        "<Ellipsoid_List ver='1'>" + record + QByteArray("<n>").repeated(200000),
        "<Ellipsoid_List ver='1'>" + record + QByteArray("<n>").repeated(256)
            + QByteArray("</n>").repeated(256) + "</Ellipsoid_List>",
        "<Ellipsoid_List ver='1'>" + record + "<a x='" + QByteArray(8 * 1024 * 1024, '>'),
    };
    for (const QByteArray &document : hostile) {
        SCOPED_TRACE(document.left(80).toStdString());
        EXPECT_EQ(loaded(document), QStringList(QStringLiteral("other")));
    }
}

TEST_F(EllipsoidLists, CutAnywhereAreSkipped)
{
    const QByteArray whole = EllipsoidKind::document(name("a"), 1);
    const int end = whole.lastIndexOf('>') + 1;
    for (int size = 0; size <= whole.size(); ++size)
        ASSERT_EQ(loaded(whole.left(size)).size(), size >= end ? 1 : 0) << size << " bytes";
}

TEST_F(EllipsoidLists, OfTensOfThousandsAreRead)
{
    QByteArray document = "<Ellipsoid_List ver='1'>";
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i)
        document += "<Ellpsoid ver='1' ellipsoid_name='" + QByteArray::number(i) + "'/>";
    EXPECT_EQ(loaded(document + "</Ellipsoid_List>").size(), count);
}

TEST_F(EllipsoidLists, InOtherEncodingsAreRead)
{
    EXPECT_EQ(loaded("<?xml version='1.0' encoding='ISO-8859-1'?><Ellipsoid_List ver='1'>"
                     "<Ellpsoid ver='1' ellipsoid_name='D\xFCne'/></Ellipsoid_List>"),
              QStringList(name("Düne")));
}

} // namespace
} // namespace KelStd::test
