// What kelstd doctor says of the geoid models.

#include "cli/DoctorRun.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KelStd {
namespace {

using test::Mentions;
using test::RowOrder;
using test::slopingGrid;

class DoctorGeoid : public test::DoctorTest
{
protected:
    QString own(const char *name, const QByteArray &bytes) const
    {
        return m_program.file(QLatin1String("geoid_model_list/") + QLatin1String(name), bytes);
    }

    const QByteArray gtx = test::gtxBytes(slopingGrid());
    const QByteArray ggf = test::ggfBytes(slopingGrid(), RowOrder::Reversed);
};

TEST_F(DoctorGeoid, NamesTheModelsThatAreInOrder)
{
    own("a.gtx", gtx);
    const QString source = own("b.ggf", ggf);
    const auto result = doctor();
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(markOf(result, "geoid models"), "ok");
    EXPECT_THAT(result.out, Mentions("a.gtx (home directory), b.ggf (home directory, converted), "
                                     "egm96_15.gtx (program directory)\n"));
    EXPECT_TRUE(QFileInfo(source + ".gtx").isFile());
}

struct Spoilt
{
    const char *name;
    QByteArray bytes;
    const char *fault;
};

TEST_F(DoctorGeoid, FindsEachThatIsNotWhatItsHeaderSays)
{
    const Spoilt rows[] = {
        {"short.gtx", gtx.chopped(1), "it is cut short: of 25 values only 24 are there"},
        {"long.gtx", gtx + "more", "it has 144 bytes, but 5 rows of 5 values take 140"},
        {"empty.gtx", {}, "its 0 bytes are too short for a GTX header"},
        {"short.ggf", ggf.chopped(1), "it is cut short: of 25 values only 24 are there"},
        {"text.gtx", QByteArray(500, 'x'), "it is no GTX grid"},
    };
    for (const Spoilt &row : rows)
        own(row.name, row.bytes);
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.outLines().last(), "Problems: 5");
    for (const Spoilt &row : rows) {
        const QStringList lines = result.outLines().filter(
            QStringLiteral("geoid_model_list/%1: ").arg(QLatin1String(row.name)));
        ASSERT_EQ(lines.size(), 1) << row.name;
        EXPECT_TRUE(lines.first().startsWith("problem  geoid model ")) << lines.first();
        EXPECT_THAT(lines.first(), Mentions(row.fault));
    }
    EXPECT_EQ(result.outLines().filter("-> copy the model there again, or remove the file").size(),
              5);
    EXPECT_EQ(markOf(result, "geoid models"), "ok") << "the delivered one";
}

/// What a first start leaves that was ended while it copied the models.
TEST_F(DoctorGeoid, CuresAHalfCopiedModel)
{
    const QByteArray delivered = test::readFile(test::egm96Path());
    own("egm96_15.gtx", delivered.left(100'000));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, Mentions("egm96_15.gtx (program directory)"));
    EXPECT_EQ(
        adviceOn(result, "geoid model "),
        "conversions use that of the program directory; 'kelstd doctor --reinstall' copies it "
        "over this one, or remove it");
    EXPECT_EQ(doctor({"--reinstall"}).status, 0);
    EXPECT_EQ(test::readFile(m_program.home().path("geoid_model_list/egm96_15.gtx")), delivered);
    EXPECT_EQ(doctor().status, 0);
}

TEST_F(DoctorGeoid, ADeliveredModelThatIsNotWhole)
{
    const QString program = ownProgramDirectory();
    test::writeFile(program + "/geoid_model_list/model.gtx", gtx.chopped(1));
    const auto result = doctor();
    EXPECT_THAT(result.out, Mentions("/program/geoid_model_list/model.gtx: it is cut short"));
    EXPECT_EQ(adviceOn(result, "geoid model "), "install KelStd again");
}

TEST_F(DoctorGeoid, AModelThatCannotBeConverted)
{
    own("model.ggf", ggf);
    ASSERT_TRUE(QDir().mkpath(m_program.home().path("geoid_model_list/model.ggf.gtx")));
    const auto result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, Mentions("model.ggf: it cannot be converted to GTX beside it"));
    EXPECT_THAT(adviceOn(result, "geoid model "), Mentions("geoid_model_list writable"));
}

TEST_F(DoctorGeoid, NoModelIsNoProblem)
{
    ownProgramDirectory();
    const auto result = doctor();
    EXPECT_EQ(markOf(result, "geoid models"), "ok");
    EXPECT_THAT(result.out, Mentions("geoid models            none\n"));
}

} // namespace
} // namespace KelStd
