#include <KelStd/positions/OrderSearch.h>
#include <KelStd/positions/UnitDoubts.h>

#include <algorithm>

/// What the lines in front of the positions say of units: lines of units, titles and remarks.
namespace KelStd::positions {

namespace {

/// Different lines that name units and are kept; one more ends the run.
constexpr int maxKeptUnits = 1000;

} // namespace

bool OrderSearch::keepUnits(const QString &text, const TextLine &line, qint64 lineNumber)
{
    const QStringList units = unitsOfLine(line.split);
    const bool namesUnits = !units.isEmpty() || saysUnits(text);
    if (!namesUnits || m_unkeptUnits > 0)
        return !units.isEmpty();
    const bool isNew = std::none_of(m_units.cbegin(), m_units.cend(), [&](const NamedUnits &kept) {
        return kept.text == text && kept.units == units;
    });
    if (isNew && m_units.size() == maxKeptUnits)
        m_unkeptUnits = lineNumber;
    else if (isNew)
        m_units += {lineNumber, text, units,
                    QByteArray(line.bytes.data(), static_cast<int>(line.bytes.size()))};
    return !units.isEmpty();
}

QString OrderSearch::unitsAgainst(const QString &text, const SplitLine &line,
                                  const FieldOrder &order, bool &isUnits) const
{
    const QStringList units = unitsOfLine(line);
    isUnits = !units.isEmpty();
    return isUnits ? unitsMistake(units, order, m_form) : saidUnitMistake(text, order, m_form);
}

QString OrderSearch::takeUnits(const QString &text, const SplitLine &line, FieldOrder &order,
                               bool &isUnits) const
{
    const QStringList units = unitsOfLine(line);
    isUnits = !units.isEmpty();
    return isUnits ? positions::takeUnits(units, m_form, order)
                   : saidUnitMistake(text, order, m_form);
}

LineMistake OrderSearch::settleUnits(FieldOrder &order) const
{
    // A line of units goes before a title, wherever it stands.
    for (const NamedUnits &kept : m_units) {
        const QString mistake =
            kept.units.isEmpty() ? QString() : positions::takeUnits(kept.units, m_form, order);
        if (!mistake.isEmpty())
            return {kept.line, mistake};
    }
    for (const NamedUnits &kept : m_units) {
        const QString mistake =
            kept.units.isEmpty() ? saidUnitMistake(kept.text, order, m_form) : QString();
        // Headings that stand before the line would be passed over with it.
        const bool maySkip = !order.hasHeadings || !m_headings || m_headings->line > kept.line;
        if (!mistake.isEmpty())
            return {kept.line, maySkip ? withSkipHint(mistake, kept.line) : mistake};
    }
    if (m_unkeptUnits > 0) {
        return {m_unkeptUnits,
                QStringLiteral("more than %1 different lines in front of the positions name units, "
                               "and no more of them are compared with those that are read")
                    .arg(maxKeptUnits)};
    }
    return {};
}

QByteArray OrderSearch::linesOfUnits() const
{
    QByteArray lines;
    for (const NamedUnits &kept : m_units) {
        if (!kept.units.isEmpty())
            lines += kept.bytes + '\n';
    }
    return lines;
}

} // namespace KelStd::positions
