#include <KelStd/positions/ColumnChoice.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/PickedColumns.h>

#include <algorithm>

namespace KelStd::positions {

std::optional<ColumnChoice> ColumnChoice::from(const QString &list, QString &mistake,
                                               const InputWords &words)
{
    ColumnChoice choice;
    for (const QString &column : list.split(QLatin1Char(',')))
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
