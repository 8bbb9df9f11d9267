#include "docs/PageTables.h"

#include "support/Printers.h"

#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd::test {

QList<QStringList> tableBelow(const QString &page, const QString &heading)
{
    const QStringList lines = page.split(QLatin1Char('\n'));
    const QRegularExpression title(
        QStringLiteral("\\A#+ %1\\z").arg(QRegularExpression::escape(heading)));
    int at = 0;
    while (!heading.isEmpty() && at < lines.size() && !title.match(lines.at(at)).hasMatch())
        ++at;
    while (at < lines.size() && !lines.at(at).startsWith(QLatin1Char('|')))
        ++at;
    QList<QStringList> rows;
    for (at += 2; at < lines.size() && lines.at(at).startsWith(QLatin1Char('|')); ++at) {
        QStringList cells = lines.at(at).split(QLatin1Char('|')).mid(1);
        cells.removeLast();
        for (QString &cell : cells)
            cell = cell.trimmed();
        rows += cells;
    }
    EXPECT_FALSE(rows.isEmpty()) << heading;
    return rows;
}

QByteArray bytesOf(const QList<QStringList> &rows)
{
    static const QRegularExpression form(
        QStringLiteral("\\A`((?:[0-9a-f]{2} ?)+)`(?: x (\\d+))?\\z"));
    QByteArray bytes;
    for (const QStringList &row : rows) {
        EXPECT_EQ(row.at(0).toInt(), bytes.size()) << row.join(QLatin1Char('|'));
        const auto match = form.match(row.at(1));
        EXPECT_TRUE(match.hasMatch()) << row.at(1);
        const QByteArray shown = QByteArray::fromHex(match.captured(1).toLatin1());
        bytes += match.captured(2).isEmpty() ? shown : shown.repeated(match.captured(2).toInt());
    }
    return bytes;
}

QStringList blocksOf(const QString &page, const QString &language)
{
    const QRegularExpression block(QStringLiteral("^```%1\n(.*?)^```$").arg(language),
                                   QRegularExpression::DotMatchesEverythingOption
                                       | QRegularExpression::MultilineOption);
    QStringList blocks;
    auto found = block.globalMatch(page);
    while (found.hasNext())
        blocks += found.next().captured(1);
    return blocks;
}

} // namespace KelStd::test
