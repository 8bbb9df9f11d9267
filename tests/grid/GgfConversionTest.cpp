#include "support/FullDisk.h"
#include "support/GridFiles.h"
#include "support/Printers.h"
#include "support/ProjTest.h"
#include "support/TemporaryHome.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#ifdef KELSTD_TEST_ASAN
/// The sanitizer keeps what is freed aside, which a test below would take for memory in use.
extern "C" const char *__asan_default_options()
{
    return "quarantine_size_mb=1";
}
#endif

namespace KelStd {
namespace {

using test::Grid;
using test::readFile;
using test::RowOrder;
using test::writeFile;

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

/// Two rows of three values, written by hand. Bytes that have no meaning are FF.
QByteArray handMadeGgf(const char *rowOrder)
{
    return QByteArray(48, '\xFF')    // 0
           + hex("0000000000404440") // 48: origin latitude 40.5
           + QByteArray(8, '\xFF')   // 56
           + hex("00000000000028C0") // 64: origin longitude -12
           + QByteArray(8, '\xFF')   // 72
           + hex("000000000000E03F") // 80: latitude spacing 0.5
           + hex("000000000000D03F") // 88: longitude spacing 0.25
           + hex("02000000")         // 96: rows
           + hex("03000000")         // 100: columns
           + QByteArray(38, '\xFF')  // 104
           + hex(rowOrder)           // 142
           + QByteArray(3, '\xFF')   // 143
           + hex("0000803F")         // 146: 1
           + hex("00000040")         // 2
           + hex("00004040")         // 3
           + hex("000080C0")         // -4
           + hex("0000A0C0")         // -5
           + hex("0000C0C0");        // -6
}

constexpr const char *gtxHeaderHex = "4044400000000000"          // origin latitude 40.5
                                     "C028000000000000"          // origin longitude -12
                                     "3FE0000000000000"          // latitude spacing 0.5
                                     "3FD0000000000000"          // longitude spacing 0.25
                                     "00000002"                  // rows
                                     "00000003";                 // columns
constexpr const char *firstRowHex = "3F8000004000000040400000";  // 1 2 3
constexpr const char *secondRowHex = "C0800000C0A00000C0C00000"; // -4 -5 -6

class GgfConversion : public testing::Test
{
protected:
    QString path(const char *name) const { return m_dir.filePath(QString::fromUtf8(name)); }

    bool convert(const QByteArray &ggf) const
    {
        writeFile(source, ggf);
        return ProjLib::ConvertGeoidModelFile_GGF(source, target);
    }

    /// Names in the directory besides the source and the target.
    QStringList leftOver() const
    {
        QStringList names =
            QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        names.removeAll("in.ggf");
        names.removeAll("out.gtx");
        return names;
    }

    void expectRefused(const QByteArray &ggf) const
    {
        QFile::remove(target);
        EXPECT_FALSE(convert(ggf));
        EXPECT_FALSE(QFileInfo::exists(target));
        writeFile(target, "an older grid");
        EXPECT_FALSE(convert(ggf));
        EXPECT_EQ(readFile(target), "an older grid");
        EXPECT_EQ(leftOver(), QStringList());
    }

private:
    QTemporaryDir m_dir;

protected:
    const QString source = path("in.ggf");
    const QString target = path("out.gtx");
};

TEST_F(GgfConversion, KeepsRowsThatStandInTheOrderOfTheOutput)
{
    ASSERT_TRUE(convert(handMadeGgf("01")));
    EXPECT_EQ(readFile(target).toHex().toUpper(),
              QByteArray(gtxHeaderHex) + firstRowHex + secondRowHex);
    EXPECT_EQ(leftOver(), QStringList());
}

TEST_F(GgfConversion, ReversesRowsOfEveryOtherOrder)
{
    for (const char *order : {"00", "02", "FF", "31"}) {
        SCOPED_TRACE(order);
        ASSERT_TRUE(convert(handMadeGgf(order)));
        EXPECT_EQ(readFile(target).toHex().toUpper(),
                  QByteArray(gtxHeaderHex) + secondRowHex + firstRowHex);
    }
}

TEST_F(GgfConversion, NeedsNoProj)
{
    ProjLib::___unloadEnviroment();
    EXPECT_TRUE(convert(handMadeGgf("01")));
}

TEST_F(GgfConversion, IgnoresWhatFollowsTheValues)
{
    ASSERT_TRUE(convert(handMadeGgf("00") + QByteArray(1001, 'x')));
    EXPECT_EQ(readFile(target).toHex().toUpper(),
              QByteArray(gtxHeaderHex) + secondRowHex + firstRowHex);
}

TEST_F(GgfConversion, ReplacesALongerTarget)
{
    writeFile(target, QByteArray(5000, 'x'));
    ASSERT_TRUE(convert(handMadeGgf("01")));
    EXPECT_EQ(readFile(target).size(), 40 + 6 * 4);
}

TEST_F(GgfConversion, MayReplaceItsSource)
{
    writeFile(source, handMadeGgf("00"));
    ASSERT_TRUE(ProjLib::ConvertGeoidModelFile_GGF(source, source));
    EXPECT_EQ(readFile(source).toHex().toUpper(),
              QByteArray(gtxHeaderHex) + secondRowHex + firstRowHex);
}

/// Bits, not numbers: a signalling NaN with a payload, an infinity, a negative zero.
TEST_F(GgfConversion, CopiesEveryBitOfOddNumbers)
{
    QByteArray ggf = handMadeGgf("01");
    ggf.replace(48, 8, hex("010000000000F47F"));
    ggf.replace(64, 8, hex("000000000000F0FF"));
    ggf.replace(80, 8, hex("0000000000000080"));
    ggf.replace(88, 8, hex("0807060504030201"));
    ggf.replace(146, 8, hex("0100A07F78563412"));
    ASSERT_TRUE(convert(ggf));
    const QByteArray out = readFile(target).toHex().toUpper();
    EXPECT_EQ(out.left(64), "7FF4000000000001"
                            "FFF0000000000000"
                            "8000000000000000"
                            "0102030405060708");
    EXPECT_EQ(out.mid(80, 16), "7FA0000112345678");
}

TEST_F(GgfConversion, OneRowAndOneColumnAreAGrid)
{
    for (const RowOrder order : {RowOrder::OutputOrder, RowOrder::Reversed}) {
        for (const auto &[rows, columns] : {std::pair{1, 1}, {1, 7}, {7, 1}}) {
            Grid grid{10.0, 20.0, 1.0, 2.0, rows, columns, {}};
            for (int i = 0; i < rows * columns; ++i)
                grid.values.push_back(static_cast<float>(i));
            ASSERT_TRUE(convert(test::ggfBytes(grid, order)));
            EXPECT_EQ(readFile(target), test::gtxBytes(grid));
        }
    }
}

TEST_F(GgfConversion, RefusesAHeaderCutInAnyPlace)
{
    const QByteArray whole = handMadeGgf("01");
    // Within and at the ends of its pieces of 48, 56 and 42 bytes.
    for (const int size : {0, 1, 47, 48, 49, 95, 100, 103, 104, 105, 142, 143, 145})
        expectRefused(whole.left(size));
    // The whole header, and nothing or not enough after it.
    for (const int values : {0, 1, 2, 3, 5, 6, 7, 12, 23})
        expectRefused(whole.left(146 + values));
    EXPECT_TRUE(convert(whole.left(146 + 24)));
}

TEST_F(GgfConversion, RefusesCountsBelowOne)
{
    for (const int at : {96, 100}) {
        for (const char *count : {"00000000", "FFFFFFFF", "00000080"}) {
            SCOPED_TRACE(testing::Message() << at << ' ' << count);
            QByteArray ggf = handMadeGgf("01");
            ggf.replace(at, 4, hex(count));
            expectRefused(ggf);
        }
    }
}

struct Counts
{
    const char *rows;
    const char *columns;
};

/// Counts whose product is 0, small or negative in 32 or in 64 bits, and more rows than there are
/// bytes: none of them takes time or memory, none makes a grid of rows that are not there.
TEST_F(GgfConversion, RefusesCountsThatPromiseTooMuchAtOnce)
{
    for (const Counts &counts :
         {Counts{"00000100", "00000100"}, // 2^16 by 2^16: 0 in 32 bits
          Counts{"01000100", "FFFF0000"}, // 65537 by 65535: -1
          Counts{"FFFFFF7F", "FFFFFF7F"}, // the largest
          Counts{"FFFFFF7F", "01000000"}, // rows to be reduced
          Counts{"FFFFFF7F", "03000000"}, Counts{"01000000", "FFFFFF7F"}, // more columns than bytes
          Counts{"00000040", "04000000"},                                 // 2^30 by 4: 0 in 32 bits
          Counts{"03000000", "03000000"}}) {
        for (const char *order : {"00", "01"}) {
            SCOPED_TRACE(testing::Message() << counts.rows << ' ' << counts.columns);
            QByteArray ggf = handMadeGgf(order);
            ggf.replace(96, 4, hex(counts.rows));
            ggf.replace(100, 4, hex(counts.columns));
            QElapsedTimer timer;
            timer.start();
            expectRefused(ggf);
            EXPECT_LT(timer.elapsed(), 1000); // a loop over two thousand million rows takes longer
        }
    }
}

/// The largest size that this process reached [KiB].
long largestMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST_F(GgfConversion, KeepsALargeGridOutOfMemory)
{
    constexpr long size = 4L * 1801 * 3600 / 1024;
    writeFile(source, test::ggfBytes({-90.0, -180.0, 0.1, 0.1, 1, 1, {0.0F}}, RowOrder::Reversed));
    QFile file(source);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(96));
    ASSERT_EQ(file.write(hex("09070000100E0000")), 8); // 1801 rows, 3600 columns
    ASSERT_TRUE(file.resize(146 + 4L * 1801 * 3600));
    file.close();
    const long before = largestMemory();
    ASSERT_TRUE(ProjLib::ConvertGeoidModelFile_GGF(source, target));
    EXPECT_LT(largestMemory() - before, size / 4);
    EXPECT_EQ(QFileInfo(target).size(), 40 + 4L * 1801 * 3600);
}

TEST_F(GgfConversion, FailsWithoutAReadableSource)
{
    EXPECT_FALSE(ProjLib::ConvertGeoidModelFile_GGF(path("missing.ggf"), target));
    EXPECT_FALSE(ProjLib::ConvertGeoidModelFile_GGF(QString(), target));
    EXPECT_FALSE(ProjLib::ConvertGeoidModelFile_GGF(path("."), target));
    EXPECT_FALSE(QFileInfo::exists(target));
}

TEST_F(GgfConversion, FailsWithoutAWritableTarget)
{
    writeFile(source, handMadeGgf("01"));
    ASSERT_TRUE(QDir().mkdir(path("folder.gtx")));
    for (const QString &unwritable :
         {QString(), path("no/such/folder/out.gtx"), path("folder.gtx"), path("in.ggf/out.gtx")}) {
        SCOPED_TRACE(unwritable.toStdString());
        EXPECT_FALSE(ProjLib::ConvertGeoidModelFile_GGF(source, unwritable));
    }
    EXPECT_EQ(leftOver(), QStringList{"folder.gtx"});
}

/// Nothing but a file is replaced. A pipe stands for what else there is, devices among it.
TEST_F(GgfConversion, LeavesAPipeAlone)
{
    writeFile(source, handMadeGgf("01"));
    const QByteArray pipe = QFile::encodeName(path("pipe.gtx"));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    EXPECT_FALSE(ProjLib::ConvertGeoidModelFile_GGF(source, path("pipe.gtx")));
    EXPECT_FALSE(QFileInfo(path("pipe.gtx")).isFile());
    EXPECT_EQ(leftOver(), QStringList());
}

/// A disk that is full, as far as a process can be told so.
TEST_F(GgfConversion, ATargetThatCannotBeWrittenWholeStaysAsItWas)
{
    Grid grid{10.0, 20.0, 1.0, 1.0, 100, 100, std::vector<float>(10'000, 1.0F)};
    const QByteArray ggf = test::ggfBytes(grid, RowOrder::Reversed);
    writeFile(source, ggf);
    for (const rlim_t most : {0U, 10U, 40U, 20'000U, 40'039U}) {
        SCOPED_TRACE(most);
        QFile::remove(target);
        const auto convertLimited = [&] {
            const test::FullDisk limit(most);
            return ProjLib::ConvertGeoidModelFile_GGF(source, target);
        };
        EXPECT_FALSE(convertLimited());
        EXPECT_FALSE(QFileInfo::exists(target));
        writeFile(target, "an older grid");
        EXPECT_FALSE(convertLimited());
        EXPECT_EQ(readFile(target), "an older grid");
    }
    EXPECT_EQ(leftOver(), QStringList());
}

/// What a surveyor has of it: PROJ finds in the converted grid what was written into the other.
using ConvertedGrid = test::ProjTest;

TEST_F(ConvertedGrid, IsReadByProj)
{
    const test::TemporaryHome files;
    for (const RowOrder order : {RowOrder::OutputOrder, RowOrder::Reversed}) {
        const QString source = files.path(QStringLiteral("a.ggf"));
        const QString target = files.path(QStringLiteral("a.gtx"));
        writeFile(source, test::ggfBytes(test::slopingGrid(), order));
        ASSERT_TRUE(ProjLib::ConvertGeoidModelFile_GGF(source, target));
        double diff = 0.0;
        ASSERT_TRUE(ProjLib::Calc_geoid_diff(52.5, 3.5, 0.0, target, diff));
        EXPECT_NEAR(diff, -42.55, 1e-5);
    }
}

} // namespace
} // namespace KelStd
