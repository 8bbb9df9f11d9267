// What a record's name may be, and the registry's records by their kind.

#include "library/RecordKinds.h"

#include <KelStd/library/LibraryRecord.h>
#include <KelStd/library/RecordNames.h>

#include <gmock/gmock.h>

namespace KelStd::test {
namespace {

using testing::HasSubstr;

TEST(RecordNames, AreRefusedWithAReason)
{
    struct Row
    {
        QString name;
        const char *fault; ///< a part of it, or null for a name that is fit
    };
    const Row rows[] = {
        {QStringLiteral("Harbour"), nullptr},
        {QStringLiteral("DHDN / 3"), "the name \"DHDN / 3\" has a path separator"},
        {QStringLiteral("a\\b"), "the name \"a\\b\" has a path separator"},
        {QStringLiteral("zone 3.1: north~"), nullptr},
        {QString(), "must not be empty or blank"},
        {QStringLiteral(" \t"), "must not be empty or blank"},
        {QStringLiteral(":a"), "the name \":a\" begins with a colon"},
        {QStringLiteral("~a"), "the name \"~a\" begins with a tilde"},
        {QStringLiteral(".a"), "the name \".a\" begins with a dot"},
        {QStringLiteral("a\x1B[2J"), "has a control character"},
        {QString(QChar(0xFFFF)), "has a control character, or one that stands for none"},
        {QString(251, QLatin1Char('n')), nullptr}, // and ".xml"
        {QString(252, QLatin1Char('n')), "would have 256 bytes, and file systems take 255"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name.toStdString());
        const QString fault = library::nameFault(row.name);
        if (row.fault == nullptr)
            EXPECT_EQ(fault, QString());
        else
            EXPECT_THAT(fault.toStdString(), HasSubstr(row.fault));
    }
}

class RegistryByKind : public LibraryTest
{};

TEST_F(RegistryByKind, FindsAddsReplacesAndRemoves)
{
    const QString name = QStringLiteral("A");
    const QString marked = QChar(QChar::ByteOrderMark) + name;
    write("standard/S.xml", SystemKind::document(QStringLiteral("S"), 1));
    library().loadLibrary();
    ASSERT_TRUE(library::addRecord(name, EllipsoidKind::record(name, 1)));
    ASSERT_TRUE(library::addRecord(name, ProjectionKind::record(name, 1)));
    ASSERT_TRUE(library::addRecord(name, SystemKind::record(name, 1)));
    for (const RecordKind kind :
         {RecordKind::Custom, RecordKind::Ellipsoid, RecordKind::Projection}) {
        EXPECT_EQ(library::namesOf(kind), QStringList(name));
        EXPECT_EQ(library::keyOf(kind, marked), name);
        const auto found = library::find(kind, marked);
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ(library::nameOf(*found), name);
    }
    EXPECT_TRUE(library::replaceRecord(name, SystemKind::record(name, 2)));
    EXPECT_EQ(SystemKind::valueOf(std::get<Coord>(*library::find(RecordKind::Custom, name))), 2);
    for (const RecordKind kind :
         {RecordKind::Custom, RecordKind::Ellipsoid, RecordKind::Projection}) {
        EXPECT_TRUE(library::removeRecord(kind, name));
        EXPECT_FALSE(library::find(kind, name).has_value());
    }
    EXPECT_FALSE(library::removeRecord(RecordKind::Standard, QStringLiteral("S")));
    EXPECT_EQ(library::namesOf(RecordKind::Standard), QStringList(QStringLiteral("S")));
}

} // namespace
} // namespace KelStd::test
