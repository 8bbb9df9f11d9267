#include <cli/run/Input.h>
#include <cli/run/LineBlocks.h>

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <optional>
#include <thread>

#include <unistd.h>

namespace KelStd {
namespace {

using cli::Input;
using cli::LineBlock;
using cli::LineBlocks;
using cli::LineCursor;
using positions::maxLineBytes;
using Result = LineBlocks::Result;

constexpr int pieceSize = 1 << 16; // what is read at once

/// How a list is read whose quoted fields may go over several lines.
struct Joined
{
    bool isSettled = true; ///< from the beginning
    qint64 skipped = 0;
};

/// Every block of an input.
QList<LineBlock> blocksOf(const QString &name, const std::optional<Joined> &joined = {})
{
    Input input;
    QString error;
    EXPECT_TRUE(input.open(name, error)) << error;
    LineBlocks reader(input);
    if (joined) {
        reader.joinQuotedFields(joined->skipped);
        reader.setShape({QLatin1Char(','), 4}, joined->isSettled);
    }
    QList<LineBlock> blocks;
    LineBlock block;
    Result result = reader.next(block);
    for (; result == Result::Block; result = reader.next(block))
        blocks += block;
    EXPECT_EQ(result, Result::End) << reader.errorText();
    return blocks;
}

/// Those of a file with these bytes.
QList<LineBlock> blocksOfFile(const QByteArray &bytes, const std::optional<Joined> &joined = {})
{
    const test::TemporaryHome home;
    const QString file = home.path(QStringLiteral("input"));
    test::writeFile(file, bytes);
    return blocksOf(file, joined);
}

/// The ends of a pipe; each is closed when it is still open.
struct Pipe
{
    Pipe() { EXPECT_EQ(pipe(ends), 0); }
    ~Pipe()
    {
        closeWriter();
        close(ends[0]);
    }
    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;

    QString reader() const { return QStringLiteral("/dev/fd/%1").arg(ends[0]); }
    void send(const QByteArray &bytes) const
    {
        EXPECT_EQ(write(ends[1], bytes.constData(), static_cast<std::size_t>(bytes.size())),
                  bytes.size());
    }
    void closeWriter()
    {
        if (ends[1] >= 0)
            close(ends[1]);
        ends[1] = -1;
    }

    int ends[2] = {-1, -1};
};

/// Those of a pipe that delivers so many bytes at a time.
QList<LineBlock> blocksOfPipe(const QByteArray &bytes, int size,
                              const std::optional<Joined> &joined = {})
{
    Pipe pipe;
    std::thread writer([&] {
        for (int i = 0; i < bytes.size(); i += size)
            pipe.send(bytes.mid(i, size));
        pipe.closeWriter();
    });
    const QList<LineBlock> blocks = blocksOf(pipe.reader(), joined);
    writer.join();
    return blocks;
}

struct Line
{
    QByteArray text; ///< "TOO LONG" for one that is
    qint64 number;
    qint64 opener = 0;

    bool operator==(const Line &other) const
    {
        return text == other.text && number == other.number && opener == other.opener;
    }
};

void PrintTo(const Line &line, std::ostream *out)
{
    *out << line.number << ':' << line.text.left(20).toStdString() << " of " << line.text.size();
    if (line.opener > 0)
        *out << ", may be a piece of " << line.opener;
}

QList<Line> linesOf(const QList<LineBlock> &blocks)
{
    QList<Line> lines;
    for (const LineBlock &block : blocks) {
        LineCursor cursor(block);
        while (cursor.next()) {
            const std::string_view line = cursor.line();
            lines += {cursor.isTooLong() ? QByteArray("TOO LONG")
                                         : QByteArray(line.data(), static_cast<int>(line.size())),
                      cursor.lineNumber(), cursor.opener()};
            if (cursor.isTooLong()) {
                EXPECT_GT(line.size(), maxLineBytes);
            }
        }
    }
    return lines;
}

/// The lines as they are found by cutting the whole at its line feeds.
QList<Line> expectedLines(const QByteArray &bytes)
{
    QList<QByteArray> texts = bytes.split('\n');
    if (texts.last().isEmpty())
        texts.removeLast();
    QList<Line> lines;
    for (QByteArray &text : texts) {
        if (text.size() > maxLineBytes)
            text = "TOO LONG";
        else if (text.endsWith('\r'))
            text.chop(1);
        lines += {text, lines.size() + 1};
    }
    return lines;
}

/// Lines of 10 to 59 bytes, `size` bytes of them.
QByteArray linesOfSize(int size)
{
    QByteArray bytes;
    for (int i = 0; bytes.size() < size; ++i)
        bytes += QByteArray::number(1000000000 + i) + QByteArray(i % 50, '.') + '\n';
    bytes.truncate(size - 1);
    return bytes + '\n';
}

TEST(LineBlocks, OfAnEmptyInputThereAreNone)
{
    EXPECT_TRUE(blocksOfFile({}).isEmpty());
}

TEST(LineBlocks, HoldWholeLinesAndTogetherAllOfThem)
{
    const QByteArray bytes = linesOfSize(10 * pieceSize + 17);
    const QList<LineBlock> blocks = blocksOfFile(bytes);
    EXPECT_GE(blocks.size(), 10);
    QByteArray together;
    for (const LineBlock &block : blocks) {
        EXPECT_EQ(block.firstLine, 1 + together.count('\n'));
        EXPECT_TRUE(block.bytes.endsWith('\n'));
        together += block.bytes;
    }
    EXPECT_TRUE(together == bytes);
}

TEST(LineBlocks, TheLastLineMayHaveNoEnd)
{
    const QByteArray bytes = linesOfSize(2 * pieceSize) + "last";
    const QList<LineBlock> blocks = blocksOfFile(bytes);
    EXPECT_TRUE(blocks.last().bytes.endsWith("\nlast") || blocks.last().bytes == "last");
    EXPECT_EQ(linesOf(blocks), expectedLines(bytes));
}

struct SmallInput
{
    QByteArray bytes;
    QList<Line> lines;
};

/// A carriage return ends lines where it ends the first one.
TEST(LineBlocks, EndsOfLinesAreThoseOfTheFirstLine)
{
    const SmallInput rows[] = {
        {"a\nb\n", {{"a", 1}, {"b", 2}}},
        {"a\r\nb\r\n", {{"a", 1}, {"b", 2}}},
        {"a\r\n\r\nb", {{"a", 1}, {"", 2}, {"b", 3}}},
        {"\n\n", {{"", 1}, {"", 2}}},
        {"\r", {{"", 1}}},
        {"a\rb\r", {{"a", 1}, {"b", 2}}},
        {"a\r\rb", {{"a", 1}, {"", 2}, {"b", 3}}},
        {"a\rb\r\r\n", {{"a", 1}, {"b", 2}, {"", 3}, {"", 4}}},
        {"a\nb\rc\r\n", {{"a", 1}, {"b\rc", 2}}},
        {"a\n\r", {{"a", 1}, {"", 2}}},
    };
    for (const SmallInput &row : rows) {
        EXPECT_EQ(linesOf(blocksOfFile(row.bytes)), row.lines) << row.bytes.toHex().constData();
        EXPECT_EQ(linesOf(blocksOfPipe(row.bytes, 1)), row.lines) << row.bytes.toHex().constData();
    }
}

/// UTF-16 behind its mark, in pieces that tear its characters.
TEST(LineBlocks, OfSixteenBitsAreUtf8)
{
    const SmallInput rows[] = {
        {QByteArray("\xFF\xFE"
                    "a\0\n\0\xFC\0\r\0\n\0",
                    12),
         {{"a", 1}, {"\xC3\xBC", 2}}},
        {QByteArray("\xFE\xFF\0a\0\r\x20\x32\0\r", 10), {{"a", 1}, {"\xE2\x80\xB2", 2}}},
        // A surrogate pair, and half a character at the end.
        {QByteArray("\xFF\xFE\x3D\xD8\x00\xDE\n\0b", 9),
         {{"\xF0\x9F\x98\x80", 1}, {"\xEF\xBF\xBD", 2}}},
        {QByteArray("\xFF\xFE", 2), {}},
        {QByteArray("\xFF", 1), {{"\xFF", 1}}},
    };
    for (const SmallInput &row : rows) {
        EXPECT_EQ(linesOf(blocksOfFile(row.bytes)), row.lines) << row.bytes.toHex().constData();
        EXPECT_EQ(linesOf(blocksOfPipe(row.bytes, 1)), row.lines) << row.bytes.toHex().constData();
    }
}

/// Wherever the pieces end in which it comes.
TEST(LineBlocks, ACharacterOfTwoUnitsMayBeTorn)
{
    const QByteArray bytes("\xFF\xFE\x3D\xD8\x00\xDE\n\0", 8);
    for (int first = 2; first < bytes.size(); ++first) {
        cli::InputText text;
        QByteArray rest = bytes.left(first);
        text.normalise(rest, 0, false);
        const auto before = rest.size();
        rest += bytes.mid(first);
        text.normalise(rest, before, false);
        EXPECT_EQ(rest, QByteArray("\xF0\x9F\x98\x80\n")) << first;
    }
}

/// Lines about the greatest length, which begin and end on every side of the border of what is read
/// at once.
TEST(LineBlocks, ALineThatIsTooLongIsOneLineWhereverItStands)
{
    const test::TemporaryHome home;
    const QString file = home.path(QStringLiteral("input"));
    for (const int length : {4094, 4095, 4096, 4097, 4098, 9000, 2 * pieceSize + 5}) {
        for (const char *end : {"\n", "\r\n", ""}) {
            for (const int before : {0, 1, 2, 100, 4094, 4095, 4096, 4097, 4098, 4099, 4100}) {
                QByteArray bytes = linesOfSize(pieceSize - before) + QByteArray(length, 'x') + end;
                if (*end != '\0')
                    bytes += "5,52,1\n" + linesOfSize(pieceSize) + "end";
                test::writeFile(file, bytes);
                ASSERT_EQ(linesOf(blocksOf(file)), expectedLines(bytes))
                    << length << ' ' << before << ' ' << QByteArray(end).toHex().constData();
            }
        }
    }
}

TEST(LineBlocks, LinesThatAreTooLongMayFollowEachOther)
{
    const QByteArray tooLong(5000, 'x');
    const QByteArray bytes =
        tooLong + '\n' + tooLong + "\na\n" + QByteArray(3 * pieceSize, 'y') + '\n' + tooLong;
    const QList<Line> lines = {
        {"TOO LONG", 1}, {"TOO LONG", 2}, {"a", 3}, {"TOO LONG", 4}, {"TOO LONG", 5}};
    EXPECT_EQ(linesOf(blocksOfFile(bytes)), lines);
    for (const int size : {1, 4095, 4096, 4097, 5001})
        EXPECT_EQ(linesOf(blocksOfPipe(bytes, size)), lines) << size;
}

/// Lines of four fields between commas, whose last one may be in quotation marks.
const SmallInput quotedInputs[] = {
    {"1,2,3,\"a\nb\"\n4,5,6,c\n", {{"1,2,3,\"a\nb\"", 1}, {"4,5,6,c", 3}}},
    {"1,2,3,\"a\r\nb\"\r\n4,5,6,c\r\n", {{"1,2,3,\"a\r\nb\"", 1}, {"4,5,6,c", 3}}},
    {"1,2,3,\"a\n\n\nb\"", {{"1,2,3,\"a\n\n\nb\"", 1}}},
    {"1,2,3,\"\"\"\n\"\"\"\n4,5,6,\"c\nd\"\n",
     {{"1,2,3,\"\"\"\n\"\"\"", 1}, {"4,5,6,\"c\nd\"", 3}}},
    {"\xEF\xBB\xBF\"a\nb\",2,3,4\n5,6,7,8\n", {{"\xEF\xBB\xBF\"a\nb\",2,3,4", 1}, {"5,6,7,8", 3}}},
    // Marks that open no field.
    {"1,2,3,2\" pipe\n4,5,6,c\n", {{"1,2,3,2\" pipe", 1}, {"4,5,6,c", 2}}},
    {"# 1,2,3,\"a\n4,5,6,c\"\n", {{"# 1,2,3,\"a", 1}, {"4,5,6,c\"", 2}}},
    // Fields that are never closed.
    {"1,2,3,\"a\n4,5,6,b\n7,8,9,c\n", {{"1,2,3,\"a", 1}, {"4,5,6,b", 2}, {"7,8,9,c", 3}}},
    {"1,2,3,\"a\n", {{"1,2,3,\"a", 1}}},
    {"1,2,3,\"a", {{"1,2,3,\"a", 1}}},
    // The input breaks off in one.
    {"0,0,0,0\n1,2,3,\"a\n4,5,6,b\n7,8,9,c",
     {{"0,0,0,0", 1}, {"1,2,3,\"a", 2}, {"4,5,6,b", 3, 2}, {"7,8,9,c", 4, 2}}},
    // A mark with text behind it closes none.
    {"1,2,3,\"a\n4,5,6,\"b\"\n7,8,9,c\n", {{"1,2,3,\"a", 1}, {"4,5,6,\"b\"", 2}, {"7,8,9,c", 3}}},
    {"1,2,3,\"a\n4,5,6,b\n7,8,9,\"c\"\n0,0,0,0\n",
     {{"1,2,3,\"a", 1}, {"4,5,6,b", 2, 1}, {"7,8,9,\"c\"", 3}, {"0,0,0,0", 4}}},
    {"1,2,3,\"a\n4,5,6,5\" b\"\n7,8,9,c\n",
     {{"1,2,3,\"a", 1}, {"4,5,6,5\" b\"", 2, 1}, {"7,8,9,c", 3}}},
    {"1,2,3,\"a\n4,5,6,\"b\n7,8,9,\"c\nd\"\n",
     {{"1,2,3,\"a", 1}, {"4,5,6,\"b", 2}, {"7,8,9,\"c\nd\"", 3}}},
};

TEST(LineBlocks, LinesOfAQuotedFieldAreOneLine)
{
    for (const SmallInput &row : quotedInputs) {
        for (const bool isSettled : {false, true}) {
            const Joined joined{isSettled, 0};
            EXPECT_EQ(linesOf(blocksOfFile(row.bytes, joined)), row.lines) << row.bytes.constData();
            for (const int size : {1, 2, 7}) {
                EXPECT_EQ(linesOf(blocksOfPipe(row.bytes, size, joined)), row.lines)
                    << row.bytes.constData();
            }
        }
    }
}

TEST(LineBlocks, WithoutFieldsEveryLineIsItself)
{
    for (const SmallInput &row : quotedInputs)
        EXPECT_EQ(linesOf(blocksOfFile(row.bytes)), expectedLines(row.bytes));
}

TEST(LineBlocks, OfSkippedLinesEachIsItself)
{
    const QByteArray bytes = "\"title\n1,2,3,\"a\nb\"\n";
    const QList<Line> lines = {{"\"title", 1}, {"1,2,3,\"a\nb\"", 2}};
    EXPECT_EQ(linesOf(blocksOfFile(bytes, Joined{false, 1})), lines);
    EXPECT_EQ(linesOf(blocksOfFile(bytes, Joined{true, 1})), lines);
}

TEST(LineBlocks, UntilTheListIsKnownEachLineIsABlock)
{
    const QList<LineBlock> blocks =
        blocksOfFile("1,2,3,4\n5,6,7,\"a\nb\"\n8,9,0,c\n", Joined{false, 0});
    ASSERT_EQ(blocks.size(), 3);
    EXPECT_EQ(blocks.at(1).bytes, QByteArray("5,6,7,\"a\nb\"\n"));
    EXPECT_EQ(blocks.at(2).firstLine, 4);
}

/// The border of what is read at once lies anywhere in a quoted field, and the field is about as
/// long as the longest line.
TEST(LineBlocks, AQuotedFieldMayCrossTheBorderOfABlock)
{
    const test::TemporaryHome home;
    const QString file = home.path(QStringLiteral("input"));
    for (const int length : {20, 4080, 4095, 4096, 4097, 5000}) {
        for (const int before : {0, 1, 5, 7, 8, 9, 10, 11, 15, 19, 20, 21, 4000}) {
            const QByteArray lead = linesOfSize(pieceSize - before);
            const QByteArray field = "1,2,3,\"a\nxx\n" + QByteArray(length - 14, 'x') + "\n\"";
            ASSERT_EQ(field.size(), length);
            test::writeFile(file, lead + field + "\n4,5,6,b\n" + linesOfSize(pieceSize));
            QList<Line> expected = expectedLines(lead);
            const qint64 first = expected.size() + 1;
            if (length <= maxLineBytes) {
                expected += {Line{field, first}, Line{"4,5,6,b", first + 4}};
            } else {
                for (const QByteArray &line : field.split('\n')) {
                    const qint64 number = expected.size() + 1;
                    expected += {line.size() > maxLineBytes ? QByteArray("TOO LONG") : line, number,
                                 number > first ? first : 0};
                }
                expected += Line{"4,5,6,b", first + 4};
            }
            ASSERT_EQ(linesOf(blocksOf(file, Joined{})).mid(0, expected.size()), expected)
                << length << ' ' << before;
        }
    }
}

/// A field of many lines that is longer than any line may be.
TEST(LineBlocks, LinesOfATooLongFieldArePieces)
{
    const QByteArray inside = QByteArray("4,5,6,b\n").repeated(2000);
    struct
    {
        QByteArray behind;
        bool isField;
    } const rows[] = {
        {"end\"\n7,8,9,c\n", true},
        {"end\" ,\n7,8,9,c\n", true},
        {"\"\r\n7,8,9,c\n", true},
        {"7,8,9,\"\n7,8,9,c\n", true},
        {"a \"\"b\"\" \"\n7,8,9,c\n", true},
        {"7,8,9,c\n", false},

        {"7,8,9,\"c\"\n", false},
        {"7,8,9,5\" pipe\n7,8,9,c\n", false},
    };
    for (const auto &row : rows) {
        const QByteArray bytes = "1,2,3,\"a\n" + inside + row.behind;
        for (const bool isSettled : {false, true}) {
            const QList<Line> lines = linesOf(blocksOfFile(bytes, Joined{isSettled, 0}));
            ASSERT_EQ(lines.size(), expectedLines(bytes).size());
            EXPECT_EQ(lines.at(0).opener, 0);
            EXPECT_EQ(lines.at(1).opener, row.isField ? 1 : 0) << row.behind.constData();
            EXPECT_EQ(lines.at(2001).opener, row.isField ? 1 : 0) << row.behind.constData();
            EXPECT_EQ(lines.last().opener, 0) << row.behind.constData();
        }
    }
    const QList<Line> lines = linesOf(blocksOfFile("1,2,3,\"a\n" + inside + "7,8,9,c", Joined{}));
    EXPECT_EQ(lines.at(1).opener, 1);
    EXPECT_EQ(lines.last().opener, 1);
}

/// Who types the first line of a field has not ended it.
TEST(LineBlocks, AnOpenFieldWaitsForItsEnd)
{
    Pipe pipe;
    Input input;
    QString error;
    ASSERT_TRUE(input.open(pipe.reader(), error)) << error;
    LineBlocks reader(input);
    reader.joinQuotedFields(0);
    reader.setShape({QLatin1Char(','), 4}, true);
    LineBlock block;
    pipe.send("0,0,0,0\n1,2,3,\"a\n");
    EXPECT_TRUE(reader.isReady());
    ASSERT_EQ(reader.next(block), Result::Block);
    EXPECT_EQ(block.bytes, QByteArray("0,0,0,0\n"));
    EXPECT_FALSE(reader.isReady());
    pipe.send("b\"\n");
    EXPECT_TRUE(reader.isReady());
    ASSERT_EQ(reader.next(block), Result::Block);
    EXPECT_EQ(block.bytes, QByteArray("1,2,3,\"a\nb\"\n"));
    EXPECT_EQ(block.firstLine, 2);
    EXPECT_EQ(block.groups.size(), 1U);
    EXPECT_FALSE(reader.isReady());
}

TEST(LineBlocks, AFileWithoutLineEndsIsNotReadIntoMemory)
{
    const QList<LineBlock> blocks = blocksOfFile(QByteArray(10 * pieceSize, 'x'));
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_LE(blocks.first().bytes.size(), maxLineBytes + 1);
}

TEST(LineBlocks, APipeThatDeliversByteByByteGivesTheSameLines)
{
    const QByteArray bytes = linesOfSize(3000) + "\r\n" + QByteArray(4096, 'a') + "\r\n"
                             + QByteArray(4096, 'b') + '\n' + QByteArray(4095, 'c') + "\r\nlast";
    const QList<LineBlock> blocks = blocksOfPipe(bytes, 1);
    EXPECT_EQ(linesOf(blocks), expectedLines(bytes));
    for (const LineBlock &block : blocks.mid(0, blocks.size() - 1))
        EXPECT_TRUE(block.bytes.endsWith('\n'));
}

/// Half a line waits for its other half, and the lines before it do not.
TEST(LineBlocks, AWholeLineDoesNotWaitForTheNext)
{
    Pipe pipe;
    Input input;
    QString error;
    ASSERT_TRUE(input.open(pipe.reader(), error)) << error;
    LineBlocks reader(input);
    LineBlock block;
    pipe.send("first\nsecond\nthi");
    ASSERT_EQ(reader.next(block), Result::Block);
    EXPECT_EQ(block.bytes, QByteArray("first\nsecond\n"));
    EXPECT_EQ(block.firstLine, 1);
    pipe.send("rd\n");
    ASSERT_EQ(reader.next(block), Result::Block);
    EXPECT_EQ(block.bytes, QByteArray("third\n"));
    EXPECT_EQ(block.firstLine, 3);
    pipe.send("fourth");
    pipe.closeWriter();
    ASSERT_EQ(reader.next(block), Result::Block);
    EXPECT_EQ(block.bytes, QByteArray("fourth"));
    EXPECT_EQ(block.firstLine, 4);
    EXPECT_EQ(reader.next(block), Result::End);
}

TEST(LineBlocks, AreReadyWithAWholeLineAndAtTheEnd)
{
    Pipe pipe;
    Input input;
    QString error;
    ASSERT_TRUE(input.open(pipe.reader(), error)) << error;
    LineBlocks reader(input);
    EXPECT_FALSE(reader.isReady());
    pipe.send("fir");
    EXPECT_FALSE(reader.isReady());
    pipe.send("st\nsec");
    EXPECT_TRUE(reader.isReady());
    LineBlock block;
    ASSERT_EQ(reader.next(block), Result::Block);
    EXPECT_EQ(block.bytes, QByteArray("first\n"));
    EXPECT_FALSE(reader.isReady());
    pipe.send("ond");
    EXPECT_FALSE(reader.isReady());
    pipe.closeWriter();
    EXPECT_TRUE(reader.isReady());
    ASSERT_EQ(reader.next(block), Result::Block);
    EXPECT_EQ(block.bytes, QByteArray("second"));
    EXPECT_TRUE(reader.isReady());
    EXPECT_EQ(reader.next(block), Result::End);
}

/// Otherwise an input that never makes anybody wait would be read into memory.
TEST(LineBlocks, AskingWhetherTheyAreReadyReadsOnePieceAtMost)
{
    const test::TemporaryHome home;
    const QString file = home.path(QStringLiteral("input"));
    const QByteArray bytes = linesOfSize(10 * pieceSize);
    test::writeFile(file, bytes);
    Input input;
    QString error;
    ASSERT_TRUE(input.open(file, error)) << error;
    LineBlocks reader(input);
    QByteArray together;
    LineBlock block;
    while (reader.isReady() && reader.next(block) == Result::Block) {
        EXPECT_LE(block.bytes.size(), pieceSize + maxLineBytes);
        together += block.bytes;
    }
    EXPECT_TRUE(together == bytes);
}

TEST(LineBlocks, AnInputThatBreaksOffIsAnError)
{
    Input input;
    QString error;
    ASSERT_TRUE(input.open(QStringLiteral("/proc/self/mem"), error)) << error;
    LineBlocks reader(input);
    LineBlock block;
    EXPECT_EQ(reader.next(block), Result::Error);
    EXPECT_FALSE(reader.errorText().isEmpty());
}

} // namespace
} // namespace KelStd
