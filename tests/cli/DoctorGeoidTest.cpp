// What kelstd doctor says of the geoid models.

#include "cli/DoctorRun.h"
#include "support/GridFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <algorithm>

#include <sys/stat.h>

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
    EXPECT_THAT(result.out,
                Mentions("a.gtx (home directory, the user's), b.ggf (home directory, the "
                         "user's, converted just now), egm96_15.gtx (program "
                         "directory, delivered)\n"));
    EXPECT_THAT(doctor().out, Mentions("b.ggf (home directory, the user's, converted), "));
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
    EXPECT_THAT(result.out, Mentions("egm96_15.gtx (program directory, delivered)"));
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
    const QString gtxFile = m_program.home().path("geoid_model_list/model.ggf.gtx");
    const auto expectReason = [&](const char *what) {
        const auto result = doctor();
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, Mentions(("model.ggf: it cannot be converted to GTX beside it: "
                                          + gtxFile.toStdString() + what)
                                             .c_str()));
        EXPECT_EQ(adviceOn(result, "geoid model "), "remove or rename " + gtxFile);
        const auto height = m_program.run({"geoid", "height", "--model", "model.ggf"}, "5,52,0\n");
        EXPECT_EQ(height.status, 3);
        EXPECT_THAT(height.err, Mentions(what));
    };
    ASSERT_TRUE(QDir().mkpath(gtxFile));
    expectReason(" is a directory");
    ASSERT_TRUE(QDir().rmdir(gtxFile));
    ASSERT_EQ(mkfifo(QFile::encodeName(gtxFile).constData(), 0600), 0);
    expectReason(" is no regular file");
}

/// A grid of 40 by 40 nodes whose values from `zeroFrom` on, of 1600, are 0.
test::Grid gridWithZeros(int zeroFrom)
{
    test::Grid grid = slopingGrid();
    grid.rows = grid.columns = 40;
    grid.latitude = 10.0;
    grid.values.assign(1600, 40.0F);
    std::fill(grid.values.begin() + zeroFrom, grid.values.end(), 0.0F);
    return grid;
}

constexpr const char *zeros = "the last quarter of its values is nothing but zeros";

// Of the right size, but its end was never written: a full disk, a copy that was cut short.
TEST_F(DoctorGeoid, DoubtsAModelThatEndsInZeros)
{
    own("gtx.gtx", test::gtxBytes(gridWithZeros(1200)));
    own("ggf.ggf", test::ggfBytes(gridWithZeros(1200), RowOrder::OutputOrder));
    own("less.gtx", test::gtxBytes(gridWithZeros(1201)));
    // A real grid may have a zero at its end, and a small one some of them.
    test::Grid small = slopingGrid();
    std::fill(small.values.begin() + 15, small.values.end(), 0.0F);
    own("small.gtx", test::gtxBytes(small));
    const auto result = doctor();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.outLines().last(), "No problems; doubts: 2");
    EXPECT_EQ(result.outLines().filter("doubt  ").size(), 2) << result.out;
    EXPECT_THAT(result.out, Mentions((std::string("geoid_model_list/gtx.gtx: ") + zeros).c_str()));
    EXPECT_THAT(result.out, Mentions((std::string("geoid_model_list/ggf.ggf: ") + zeros).c_str()));

    const QStringList list = m_program.run({"geoid", "list"}).outLines();
    EXPECT_EQ(list.filter(zeros).size(), 2);
    EXPECT_EQ(list.filter(QRegularExpression("^(gtx.gtx|ggf.ggf) ")).filter(zeros).size(), 2);
    for (const char *name : {"gtx.gtx", "ggf.ggf"})
        EXPECT_THAT(m_program.run({"geoid", "info", name}).out, Mentions(zeros)) << name;
    for (const char *name : {"less.gtx", "small.gtx"})
        EXPECT_FALSE(m_program.run({"geoid", "info", name}).out.contains(zeros)) << name;
}

TEST_F(DoctorGeoid, ComparesTheDeliveredModelsWithTheHomes)
{
    const QByteArray delivered = test::readFile(test::egm96Path());
    QByteArray other = delivered;
    other[other.size() / 2] = static_cast<char>(other[other.size() / 2] ^ 1);
    own("egm96_15.gtx", other);
    auto result = doctor();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(markOf(result, "geoid model "), "doubt");
    EXPECT_THAT(result.out,
                Mentions("geoid_model_list/egm96_15.gtx differs from the delivered one of that "
                         "name\n"));
    EXPECT_EQ(
        adviceOn(result, "geoid model "),
        "nothing, if it is meant so; else 'kelstd doctor --reinstall' copies the delivered one "
        "over it");

    // What a full disk leaves of it, at its whole size.
    own("egm96_15.gtx", delivered.left(1'000'000) + QByteArray(delivered.size() - 1'000'000, '\0'));
    result = doctor();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(markOf(result, "geoid model "), "problem");
    EXPECT_THAT(result.out, Mentions(zeros));

    own("egm96_15.gtx", delivered);
    EXPECT_EQ(doctor().outLines().last(), "All is well.");
}

/// A home directory of this name beside the prepared one, whose pieces it links.
QString homeCalled(const test::ProgramRun &program, const QString &name)
{
    const QDir home(program.home().path(name));
    QDir().mkpath(home.filePath("proj"));
    for (const QFileInfo &piece :
         QDir(program.home().path("proj")).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot))
        EXPECT_TRUE(
            QFile::link(piece.absoluteFilePath(), home.filePath("proj/" + piece.fileName())));
    return home.path();
}

// PROJ takes these signs for something else than a part of a path. The separation of the grid at
// its node at 51 N 4 E is 41.1 m.
TEST_F(DoctorGeoid, ModelsAreUsedWhateverSignsTheHomesPathHas)
{
    for (const char *name : {"a b", "a,b", "a#b", "a\"b", "a;b", "a+inv", "a 'b"}) {
        SCOPED_TRACE(name);
        const QString home = homeCalled(m_program, name);
        m_program.setVariable("KELSTD_HOME_DIR", home);
        test::writeFile(home + "/geoid_model_list/a.gtx", gtx);
        test::writeFile(home + "/geoid_model_list/b.ggf", ggf);
        const auto result = doctor();
        EXPECT_EQ(result.status, 0) << result.out;
        for (const char *model : {"a.gtx", "b.ggf"}) {
            const auto height =
                m_program.run({"geoid", "height", "--model", model, "--csv"}, "4,51,100\n");
            EXPECT_EQ(height.status, 0) << height.err;
            EXPECT_THAT(height.out, Mentions("41.10000,58.90000")) << model;
        }
    }
}

TEST_F(DoctorGeoid, AModelWhoseOwnNameHasSuchASign)
{
    for (const auto &[name, effect] :
         {std::pair("a,b.gtx", "a comma, at which PROJ begins to read another one"),
          std::pair("a\"b.gtx", "a quotation mark, with which a path ends for PROJ"),
          std::pair("a#b.gtx", "a \"#\", with which a comment begins for PROJ"),
          std::pair("a;b.gtx", "a semicolon, which PROJ takes for a blank")}) {
        const QString file = own(name, gtx);
        const auto result = doctor();
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.out, Mentions((std::string(name) + ": its name has " + effect).c_str()));
        ASSERT_TRUE(QFile::remove(file));
    }
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
