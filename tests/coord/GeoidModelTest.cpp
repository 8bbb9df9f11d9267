#include "coord/RecordExpectations.h"
#include "support/Printers.h"

#include <KelStd/coord/stGeoidModel.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

static_assert(test::isPlainValue<stGeoidModel>);

stGeoidModel named(const QString &name)
{
    stGeoidModel model;
    model.modelFileName = name;
    return model;
}

TEST(GeoidModel, FreshOneIsNone)
{
    EXPECT_TRUE(stGeoidModel().modelFileName.isEmpty());
}

TEST(GeoidModel, ClearGivesAFreshOne)
{
    stGeoidModel model = named(QStringLiteral("egm96_15.gtx"));
    model.clear();
    EXPECT_TRUE(model.modelFileName.isEmpty());
    test::expectEqual(model, stGeoidModel());
}

TEST(GeoidModel, CopiesAndMovesTakeTheName)
{
    test::expectCopiesAndMovesEqual(named(QStringLiteral("egm96_15.gtx")));
}

TEST(GeoidModel, NamesCompareWithTheirCaseInBothStrengths)
{
    struct
    {
        const char *a;
        const char *b;
        bool same;
    } const rows[] = {
        {"", "", true},
        {"egm96_15.gtx", "egm96_15.gtx", true},
        {"egm96_15.gtx", "EGM96_15.gtx", false},
        {"egm96_15.gtx", "egm96_15.gtx ", false},
        {"egm96_15.gtx", "", false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << '"' << row.a << "\" and \"" << row.b << '"');
        const stGeoidModel a = named(QString::fromUtf8(row.a));
        const stGeoidModel b = named(QString::fromUtf8(row.b));
        EXPECT_EQ(a == b, row.same);
        EXPECT_EQ(a != b, !row.same);
        EXPECT_EQ(a.isSameLogic(b), row.same);
        EXPECT_EQ(b.isSameLogic(a), row.same);
    }
}

TEST(GeoidModel, SameObjectIsTheSame)
{
    const stGeoidModel model = named(QStringLiteral("egm96_15.gtx"));
    EXPECT_TRUE(model == model);
    EXPECT_TRUE(model.isSameLogic(model));
}

} // namespace
} // namespace KelStd
