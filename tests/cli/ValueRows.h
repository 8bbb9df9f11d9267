#pragma once

// What `kelstd format` and `kelstd parse` have in common: values on the command line.

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <ostream>

namespace KelStd::test {

/// A run that prints values.
struct ValueRow
{
    const char *testName;
    QList<const char *> arguments;
    const char *out; ///< without the end of its last line
};

/// A run that prints nothing but a reason.
struct RefusedRow
{
    const char *testName;
    QList<const char *> arguments;
    int status;
    const char *message;
};

inline void PrintTo(const ValueRow &row, std::ostream *out)
{
    *out << row.testName;
}

inline void PrintTo(const RefusedRow &row, std::ostream *out)
{
    *out << row.testName;
}

inline QStringList wordsOf(const char *command, const QList<const char *> &arguments)
{
    QStringList words = {QString::fromLatin1(command)};
    for (const char *argument : arguments)
        words += QString::fromUtf8(argument);
    return words;
}

inline void expectPrinted(const char *command, const ValueRow &row)
{
    const auto result = ProgramRun().run(wordsOf(command, row.arguments));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, QString());
    EXPECT_EQ(result.out, QString::fromUtf8(row.out) + QLatin1Char('\n'));
}

inline void expectRefused(const char *command, const RefusedRow &row)
{
    const auto result = ProgramRun().run(wordsOf(command, row.arguments));
    EXPECT_EQ(result.status, row.status);
    EXPECT_EQ(result.out, QString());
    EXPECT_THAT(result.err, Mentions(row.message));
    EXPECT_EQ(result.errLines().size(), 1) << result.err;
}

} // namespace KelStd::test
