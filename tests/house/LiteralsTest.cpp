// Texts of the sources mean the same whatever character sets a compiler takes its sources and its
// literals to be in.

#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace KelStd {
namespace {

/// A string or character literal, and the code between it and the one before, without comments.
struct Literal
{
    QString before;
    QString body;
    int line;
};

/// The literals of a C++ source. Raw ones, which this does not know, are none of the house's.
QList<Literal> literalsOf(const QString &source)
{
    QList<Literal> literals;
    QString before;
    int line = 1;
    for (int i = 0; i < source.size(); ++i) {
        const QChar c = source.at(i);
        const QStringView rest = QStringView(source).mid(i);
        if (rest.startsWith(u"//") || rest.startsWith(u"/*")) {
            const bool isLine = rest.startsWith(u"//");
            const int end = source.indexOf(isLine ? QLatin1String("\n") : QLatin1String("*/"), i);
            const int next = end < 0 ? source.size() : isLine ? end : end + 2;
            line += source.mid(i, next - i).count(QLatin1Char('\n'));
            i = next - 1;
            continue;
        }
        line += c == QLatin1Char('\n') ? 1 : 0;
        const bool isDigitSeparator = c == QLatin1Char('\'') && i > 0 && source.at(i - 1).isDigit();
        if ((c != QLatin1Char('"') && c != QLatin1Char('\'')) || isDigitSeparator) {
            before += c;
            continue;
        }
        int end = i + 1;
        while (end < source.size() && source.at(end) != c)
            end += source.at(end) == QLatin1Char('\\') ? 2 : 1;
        literals.append({before, source.mid(i + 1, end - i - 1), line});
        before.clear();
        i = end;
    }
    return literals;
}

QStringList sources()
{
    return test::sourcesUnder(QStringLiteral("KelStd")) + test::sourcesUnder(QStringLiteral("cli"))
           + test::sourcesUnder(QStringLiteral("python"));
}

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

TEST(Literals, AreFoundInASource)
{
    const auto literals = literalsOf(QStringLiteral(
        "a(\"x\\\"y\"); // \"no\"\n/* 'no'\n */ QChar('\\''); 1'000; u\"\" \"z\"\n"));
    ASSERT_EQ(literals.size(), 4);
    EXPECT_EQ(literals.at(0).body, QStringLiteral("x\\\"y"));
    EXPECT_EQ(literals.at(0).before, QStringLiteral("a("));
    EXPECT_EQ(literals.at(1).body, QStringLiteral("\\'"));
    EXPECT_EQ(literals.at(1).line, 3);
    EXPECT_EQ(literals.at(3).body, QStringLiteral("z"));
}

TEST(Literals, HoldNoBytesWhoseMeaningTheCompilerMustGuess)
{
    const QStringList files = sources();
    ASSERT_GT(files.size(), 150);
    for (const QString &file : files) {
        for (const Literal &literal : literalsOf(test::sourceText(file)))
            EXPECT_TRUE(isAscii(literal.body)) << file << ':' << literal.line;
    }
}

/// In a literal of plain characters, "\u00B0" becomes whatever the compiler is told that those are.
TEST(Literals, NameCharactersByNumberOnlyInUtf16)
{
    for (const QString &file : sources()) {
        bool isUtf16 = false;
        for (const Literal &literal : literalsOf(test::sourceText(file))) {
            const QString before = literal.before.trimmed();
            if (!before.isEmpty()) // otherwise a piece of the literal before it
                isUtf16 = before.endsWith(QLatin1String("QStringLiteral("))
                          || before.endsWith(QLatin1Char('u'));
            const bool hasNumber = literal.body.contains(QLatin1String("\\u"), Qt::CaseInsensitive);
            EXPECT_TRUE(isUtf16 || !hasNumber) << file << ':' << literal.line;
        }
    }
}

} // namespace
} // namespace KelStd
