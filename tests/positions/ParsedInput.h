#pragma once

#include <KelStd/positions/PositionParser.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string>
#include <utility>
#include <vector>

namespace KelStd::test {

/// What a parser makes of a whole input: the positions and names in order, and why lines failed.
struct ParsedInput
{
    std::vector<Pos> positions;
    std::vector<std::string> names;
    std::vector<QString> failures; ///< "2: reason"
    QString end;                   ///< "1: reason" when the run ended; empty when it did not
};

inline ParsedInput parsed(positions::PositionParser parser, const QByteArray &input)
{
    using Result = positions::PositionParser::Result;
    ParsedInput all;
    const auto message = [&parser] {
        return QStringLiteral("%1: %2").arg(parser.reasonLine()).arg(parser.reason());
    };
    QList<QByteArray> lines = input.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (int i = 0; i < lines.size(); ++i) {
        QByteArray line = lines.at(i);
        if (line.endsWith('\r'))
            line.chop(1);
        switch (parser.parse({line.constData(), static_cast<std::size_t>(line.size())}, i + 1)) {
        case Result::Nothing: break;
        case Result::Position:
            all.positions.push_back(parser.position());
            all.names.emplace_back(parser.name());
            break;
        case Result::BadLine: all.failures.push_back(message()); break;
        case Result::BadHeader: all.end = message(); return all;
        }
    }
    if (!parser.finish())
        all.end = message();
    return all;
}

/// The words of `kelstd convert`.
inline positions::InputWords optionWords()
{
    return {QStringLiteral("--columns"), QStringLiteral("--skip"), QStringLiteral("--from"),
            QStringLiteral("--length-unit"), QStringLiteral("--height")};
}

inline positions::PositionParser parserFor(positions::InputForm form, const char *columns = "",
                                           qint64 skipped = 0)
{
    QString mistake;
    form.words = optionWords();
    std::optional<positions::ColumnChoice> choice;
    if (*columns != '\0')
        choice = positions::ColumnChoice::from(QString::fromUtf8(columns), mistake, form.words);
    positions::PositionParser parser(form, choice);
    parser.setSkippedLines(skipped);
    return parser;
}

} // namespace KelStd::test
