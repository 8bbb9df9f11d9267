#include <KelStd/positions/ColumnChoice.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/LineSplitter.h>
#include <KelStd/positions/PickedColumns.h>

#include <algorithm>

namespace KelStd::positions {

std::optional<ColumnChoice> ColumnChoice::from(const QString &list, QString &mistake,
                                               const InputWords &words)
{
    ColumnChoice choice;
    const SplitLine split = splitAt(list, QLatin1Char(','));
    if (!split.mistake.isEmpty()) {
        mistake = QStringLiteral("%1 '%2': %3; a heading with a comma stands in quotation marks, "
                                 "and a mark in it is doubled")
                      .arg(words.columns, list, split.mistake);
        return std::nullopt;
    }
    for (const QString &column : split.fields)
        choice.m_columns += column.trimmed();
    const auto count = choice.m_columns.size();
    if (count < componentsPerFrame - 1 || count > componentsPerFrame + 1) {
        mistake = QStringLiteral("%1 '%2' has %3 columns; there are three, or four with that "
                                 "of the point name first, or two without a height")
                      .arg(words.columns, list, QString::number(count));
        return std::nullopt;
    }
    for (const QString &column : choice.m_columns) {
        if (column.isEmpty() || (isColumnNumber(column) && columnNumber(column) < 0)) {
            mistake = QStringLiteral("%1 '%2': '%3' is no column; they are headings and "
                                     "numbers from 1")
                          .arg(words.columns, list, column);
            return std::nullopt;
        }
    }
    return choice;
}

bool ColumnChoice::hasHeadings() const
{
    return std::any_of(m_columns.cbegin(), m_columns.cend(),
                       [](const QString &column) { return !isColumnNumber(column); });
}

} // namespace KelStd::positions
