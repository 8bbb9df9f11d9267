// How much memory the program takes for the largest documents.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QFile>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>

#include <vector>

namespace KelStd {
namespace {

constexpr qint64 documentBytes = 60'000'000;

struct Shape
{
    const char *before; ///< what comes first in the root
    const char *piece;  ///< what is repeated: '#' is a number of its own
    int maxPieces;
    const char *after; ///< what follows
    char filling;      ///< of the rest of the file, in an element of its own
};

/// A document of exactly `documentBytes`, written piece by piece.
void writeDocument(const QString &path, const Shape &shape)
{
    QByteArray start = test::readFile(QStringLiteral(KELSTD_TEST_DATA_DIR "/systems/rd_new.xml"));
    const QByteArray end = "</Coord>";
    start.truncate(start.lastIndexOf(end));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(start + shape.before);
    const QByteArray open = "<fill>";
    const QByteArray close = "</fill>";
    const qint64 room =
        documentBytes - qstrlen(shape.after) - open.size() - close.size() - end.size() - 40;
    for (int i = 0; i < shape.maxPieces && file.pos() < room; ++i)
        file.write(QByteArray(shape.piece).replace('#', QByteArray::number(i)));
    file.write(shape.after + open);
    const QByteArray filling(1 << 16, shape.filling);
    while (file.pos() < documentBytes - close.size() - end.size()) {
        file.write(
            filling.constData(),
            qMin(qint64(filling.size()), documentBytes - close.size() - end.size() - file.pos()));
    }
    file.write(close + end);
    ASSERT_TRUE(file.flush());
    ASSERT_EQ(file.size(), documentBytes);
}

/// Runs the program without output; its largest resident memory, in bytes, or -1 when it crashed.
qint64 peakMemory(const test::ProgramRun &program, const QStringList &arguments)
{
    const auto process = program.process(arguments);
    std::vector<QByteArray> texts;
    for (const QString &word : QStringList(process->program()) + process->arguments())
        texts.push_back(QFile::encodeName(word));
    std::vector<char *> words;
    for (QByteArray &text : texts)
        words.push_back(text.data());
    words.push_back(nullptr);
    std::vector<QByteArray> variables;
    for (const QString &variable : process->processEnvironment().toStringList())
        variables.push_back(variable.toLocal8Bit());
    std::vector<char *> environment;
    for (QByteArray &variable : variables)
        environment.push_back(variable.data());
    environment.push_back(nullptr);

    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_RDWR);
        for (const int stream : {0, 1, 2})
            dup2(nowhere, stream);
        execve(words.front(), words.data(), environment.data());
        _exit(127);
    }
    int status = 0;
    rusage usage = {};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status)
        || WEXITSTATUS(status) == 127)
        return -1;
    return qint64(usage.ru_maxrss) * 1024;
}

class DocumentMemory : public testing::Test
{
protected:
    void expectBounded(const Shape &shape, const QStringList &command) const
    {
        const QString file = m_program.home().path(QStringLiteral("large.xml"));
        writeDocument(file, shape);
        const qint64 peak = peakMemory(m_program, command + QStringList(file));
        EXPECT_GT(peak, documentBytes) << "it was not read";
        EXPECT_LE(peak, KELSTD_TEST_MEMORY_FACTOR * documentBytes);
    }

    test::ProgramRun m_program;
};

constexpr int any = 100'000'000;

TEST_F(DocumentMemory, OfTinyElementsIsAtMostTenTimesTheDocument)
{
    expectBounded({"", "<a/>", any, "", 'x'},
                  {QStringLiteral("library"), QStringLiteral("add"), QStringLiteral("--create"),
                   QStringLiteral("--dir"), m_program.home().path(QStringLiteral("lib"))});
}

// As many attributes as are read, and a text of nearly the whole size.
TEST_F(DocumentMemory, OfWhatIsReadIsAtMostTenTimesTheDocument)
{
    expectBounded({"<x", " a#=\"\"", 390'000, "/>", 'x'},
                  {QStringLiteral("system"), QStringLiteral("show")});
}

} // namespace
} // namespace KelStd
