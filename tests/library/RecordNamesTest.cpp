// What a record's name may be, and the registry's records by their kind.

#include "library/RecordKinds.h"

#include <KelStd/library/LibraryRecord.h>
#include <KelStd/library/RecordNames.h>

#include <QtCore/QMap>

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
        {QStringLiteral("DHDN / 3"), nullptr},
        {QStringLiteral("a\\b"), nullptr},
        {QStringLiteral("a/../b"), nullptr}, // in a file "a%2F..%2Fb.xml"
        {QStringLiteral("/a"), "the name \"/a\" begins like a path to somewhere else"},
        {QStringLiteral("\\\\host\\a"), "begins like a path to somewhere else"},
        {QStringLiteral("C:/a"), "begins like a path to somewhere else"},
        {QStringLiteral("C:\\a"), "begins like a path to somewhere else"},
        {QStringLiteral("../a"), "the name \"../a\" begins with a dot"},
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
        {QString(248, QLatin1Char('n')) + QStringLiteral("/"), nullptr}, // "%2F", and ".xml"
        {QString(249, QLatin1Char('n')) + QStringLiteral("/"), "would have 256 bytes"},
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

TEST(RecordNames, HaveSafeNamesOfFiles)
{
    struct Row
    {
        const char *name;
        const char *fileName;
    };
    const Row rows[] = {
        {"Harbour", "Harbour.xml"},
        {"Amersfoort / RD New", "Amersfoort %2F RD New.xml"},
        {"a\\b", "a%5Cb.xml"},
        {"A %1 50% %", "A %1 50% %.xml"},
        {"a%2Fb", "a%252Fb.xml"},
        {"a%2fb", "a%252fb.xml"},
        {"a%252Fb", "a%25252Fb.xml"},
        {"a%5Cb%25", "a%255Cb%2525.xml"},
        {"%2", "%2.xml"},
        {"..//..", "..%2F%2F...xml"},
        {"", ".xml"},
        {"zone 3: \xC3\xA4", "zone 3: \xC3\xA4.xml"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(library::safeFileName(QString::fromUtf8(row.name)),
                  QString::fromUtf8(row.fileName));
}

// Every name of six signs that look like escapes or become some, in whatever case a file system
// takes for the same.
TEST(RecordNames, ShareNoSafeNameOfAFile)
{
    const QString signs = QStringLiteral("%25FC/\\");
    QMap<QString, QString> names;
    for (int number = 0; number < 7 * 7 * 7 * 7 * 7; ++number) {
        QString name;
        for (int rest = number, i = 0; i < 5; ++i, rest /= 7)
            name += signs.at(rest % 7);
        const QString file = library::safeFileName(name).toLower();
        ASSERT_FALSE(names.contains(file)) << name << " and " << names.value(file);
        ASSERT_FALSE(file.contains(QLatin1Char('/')) || file.contains(QLatin1Char('\\')));
        names.insert(file, name);
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
