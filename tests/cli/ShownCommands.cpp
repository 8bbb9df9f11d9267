#include "cli/ShownCommands.h"

#include "support/Printers.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd::test {

QList<ShownCommand> commandsOf(const QString &page)
{
    static const QRegularExpression block(QStringLiteral("```console\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    QList<ShownCommand> commands;
    auto blocks = block.globalMatch(page);
    while (blocks.hasNext()) {
        for (const QString &line : blocks.next().captured(1).split(QLatin1Char('\n'))) {
            if (line.startsWith(QLatin1String("$ ")))
                commands.append({line.mid(2), {}});
            else if (!line.isEmpty())
                commands.last().lines += line;
        }
    }
    return commands;
}

void expectShown(const QStringList &lines, const QString &printed)
{
    const QStringList found = printed.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    int at = 0;
    bool mayPass = false;
    for (const QString &line : lines) {
        if (line == QLatin1String("...")) {
            mayPass = true;
            continue;
        }
        while (mayPass && at < found.size() && found.at(at) != line)
            ++at;
        ASSERT_LT(at, found.size()) << "not printed: " << line;
        EXPECT_EQ(found.at(at), line);
        ++at;
        mayPass = false;
    }
    EXPECT_TRUE(mayPass || at == found.size()) << found.value(at) << " is not shown";
}

} // namespace KelStd::test
