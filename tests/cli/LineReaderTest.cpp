#include <cli/run/LineReader.h>

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace KelStd {
namespace {

using cli::LineReader;
using Result = LineReader::Result;

/// Every line of a file with these bytes; "TOO LONG" for one that is.
QList<QByteArray> linesOf(const QByteArray &bytes)
{
    const test::TemporaryHome home;
    test::writeFile(home.path(QStringLiteral("input")), bytes);
    LineReader reader;
    QString error;
    EXPECT_TRUE(reader.open(home.path(QStringLiteral("input")), error)) << error;
    QList<QByteArray> lines;
    QByteArray line;
    for (;;) {
        const Result result = reader.next(line);
        if (result == Result::End || result == Result::Error) {
            EXPECT_EQ(result, Result::End) << reader.errorText();
            return lines;
        }
        lines += result == Result::Line ? line : QByteArray("TOO LONG");
        EXPECT_EQ(reader.lineNumber(), lines.size());
    }
}

TEST(LineReader, EndsOfLinesAreThoseOfTheFirstLine)
{
    EXPECT_EQ(linesOf("a\nb\r\nc\n"), (QList<QByteArray>{"a", "b", "c"}));
    EXPECT_EQ(linesOf("a\rb\r"), (QList<QByteArray>{"a", "b"}));
    EXPECT_EQ(linesOf("a\nb\rc\n"), (QList<QByteArray>{"a", "b\rc"}));
}

TEST(LineReader, AnUnterminatedLastLineCounts)
{
    EXPECT_EQ(linesOf("a\nb"), (QList<QByteArray>{"a", "b"}));
    EXPECT_EQ(linesOf("a\n\n"), (QList<QByteArray>{"a", ""}));
    EXPECT_EQ(linesOf(""), (QList<QByteArray>{}));
}

TEST(LineReader, LinesMayCrossTheEndOfItsBuffer)
{
    // Lines of 4 to 23 bytes, together far more than the buffer holds.
    QList<QByteArray> expected;
    for (int i = 0; i < 20000; ++i)
        expected += QByteArray::number(1000 + i) + QByteArray(i % 20, '.');
    EXPECT_EQ(linesOf(expected.join('\n') + '\n'), expected);
}

TEST(LineReader, ALineOfTheGreatestLengthIsReadAndALongerOneSkipped)
{
    const QByteArray greatest(positions::maxLineBytes, 'x');
    EXPECT_EQ(linesOf("a\n" + greatest + "\nb\n"), (QList<QByteArray>{"a", greatest, "b"}));
    EXPECT_EQ(linesOf("a\n" + greatest + "x\nb\n"), (QList<QByteArray>{"a", "TOO LONG", "b"}));
    EXPECT_EQ(linesOf(QByteArray(1000000, 'x') + "\nb"), (QList<QByteArray>{"TOO LONG", "b"}));
    EXPECT_EQ(linesOf(QByteArray(1000000, 'x')), (QList<QByteArray>{"TOO LONG"}));
}

TEST(LineReader, ZeroBytesAreKept)
{
    EXPECT_EQ(linesOf(QByteArray("a\0b\nc\n", 6)), (QList<QByteArray>{QByteArray("a\0b", 3), "c"}));
}

/// A line is given as soon as it is there, before the writer writes more or ends.
TEST(LineReader, DoesNotWaitForTheNextLine)
{
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    LineReader reader;
    QString error;
    ASSERT_TRUE(reader.open(QStringLiteral("/dev/fd/%1").arg(ends[0]), error)) << error;
    QByteArray line;
    for (const char *text : {"first", "second"}) {
        const QByteArray sent = QByteArray(text) + '\n';
        ASSERT_EQ(write(ends[1], sent.constData(), static_cast<std::size_t>(sent.size())),
                  sent.size());
        ASSERT_EQ(reader.next(line), Result::Line);
        EXPECT_EQ(line, QByteArray(text));
    }
    close(ends[1]);
    EXPECT_EQ(reader.next(line), Result::End);
    close(ends[0]);
}

TEST(LineReader, AnInputThatBreaksOffIsAnErrorWithItsReason)
{
    // The memory of a process cannot be read at address 0.
    LineReader reader;
    QString error;
    ASSERT_TRUE(reader.open(QStringLiteral("/proc/self/mem"), error)) << error;
    QByteArray line;
    EXPECT_EQ(reader.next(line), Result::Error);
    EXPECT_FALSE(reader.errorText().isEmpty());
}

} // namespace
} // namespace KelStd
