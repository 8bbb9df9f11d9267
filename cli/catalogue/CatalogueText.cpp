#include <cli/catalogue/CatalogueText.h>

#include <cli/terminal/ShownText.h>

#include <KelStd/platform/Toolkits.h>

#include <QtCore/QtGlobal>

#include <algorithm>

namespace KelStd::cli {

namespace {

using catalogue::DatumShift;
using catalogue::FoundSystem;
using catalogue::ImportReport;
using catalogue::ShiftKind;

constexpr int maxListed = 5; ///< of other shifts in a report: 'system shifts' lists them all

struct KindRow
{
    ShiftKind kind;
    const char *words;
};

constexpr KindRow kindRows[] = {
    {ShiftKind::None, "no shift"},           {ShiftKind::Three, "three parameters"},
    {ShiftKind::Seven, "seven parameters"},  {ShiftKind::Grid, "by grid"},
    {ShiftKind::Other, "a kind of its own"},
};

QString wordsOf(ShiftKind kind)
{
    for (const KindRow &row : kindRows) {
        if (row.kind == kind)
            return QString::fromLatin1(row.words);
    }
    return {};
}

/// The lines of a table, in columns as wide as their widest cell.
QStringList aligned(const QList<QStringList> &rows)
{
    QVector<int> widths;
    for (const QStringList &row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (int i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths.at(i), static_cast<int>(row.at(i).size()));
    }
    QStringList lines;
    for (const QStringList &row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i)
            line += i + 1 < row.size() ? row.at(i).leftJustified(widths.at(i) + 2) : row.at(i);
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        lines += line;
    }
    return lines;
}

QString metres(double value)
{
    constexpr int decimals = 3;
    return tk::Toolkits::DoubleToString(value, decimals) + QLatin1String(" m");
}

/// "12 %"; the whole only where nothing to speak of misses.
QString percent(double share)
{
    constexpr double whole = 100.0;
    constexpr double nearlyAll = 0.9995; // boxes that meet, but for their last digits
    if (share >= nearlyAll)
        return QStringLiteral("100 %");
    const int rounded = std::min(qRound(share * whole), 99);
    return share > 0.0 && rounded == 0 ? QStringLiteral("below 1 %")
                                       : QStringLiteral("%1 %").arg(rounded);
}

QString withCode(const QString &name, const QString &code)
{
    if (name.isEmpty())
        return code;
    return code.isEmpty() ? shown(name) : QStringLiteral("%1 (%2)").arg(shown(name), shown(code));
}

/// Why a shift cannot be taken, or what it needs.
QString needText(const DatumShift &shift)
{
    if (!shift.missingGrids.isEmpty()) {
        return QStringLiteral("needs %1, which is not there")
            .arg(shown(shift.missingGrids.join(QStringLiteral(", "))));
    }
    if (shift.isTimeDependent)
        return QStringLiteral("depends on the time");
    if (!shift.isAvailable)
        return QStringLiteral("cannot be taken over");
    return shift.grids.isEmpty()
               ? QString()
               : QStringLiteral("by %1").arg(shown(shift.grids.join(QStringLiteral(", "))));
}

QString otherShift(const DatumShift &shift)
{
    const QString need = needText(shift);
    return QStringLiteral("%1, %2, covers %3%4")
        .arg(withCode(shift.name, shift.code), accuracyText(shift.accuracy),
             percent(shift.coverage), need.isEmpty() ? QString() : QStringLiteral("; ") + need);
}

void addShifts(const QString &label, const std::vector<DatumShift> &shifts, QStringList &lines)
{
    int listed = 0;
    for (const DatumShift &shift : shifts) {
        if (++listed > maxListed) {
            lines += QStringLiteral("%1: %2 more; 'kelstd system shifts' lists them")
                         .arg(label)
                         .arg(static_cast<int>(shifts.size()) - maxListed);
            return;
        }
        lines += QStringLiteral("%1: %2").arg(label, otherShift(shift));
    }
}

QString shiftLine(const ImportReport::Shift &shift)
{
    QString text = QStringLiteral("datum shift: ") + wordsOf(shift.kind);
    const QString name = withCode(shift.name, shift.code);
    if (!name.isEmpty())
        text += QStringLiteral(", ") + name;
    if (!shift.grids.isEmpty())
        text += QStringLiteral(", grid ") + shown(shift.grids.join(QStringLiteral(", ")));
    if (!shift.frame.isEmpty())
        text += QStringLiteral(", which starts from ") + shown(shift.frame);
    if (shift.frame != shift.operationFrame)
        text +=
            QStringLiteral(" (the database's operation says %1)").arg(shown(shift.operationFrame));
    return text;
}

QString qualityLine(const ImportReport::Shift &shift)
{
    return QStringLiteral("%1; covers %2 of the system's area")
        .arg(accuracyText(shift.accuracy), percent(shift.coverage));
}

void addHeights(const ImportReport &report, QStringList &lines)
{
    if (!report.geoidModel.isEmpty()) {
        lines +=
            QStringLiteral("heights: above the geoid, by the model ") + shown(report.geoidModel);
    } else if (!report.missingGrid.isEmpty()) {
        lines += QStringLiteral("heights: ellipsoidal; the geoid grid %1 is not there")
                     .arg(shown(report.missingGrid));
    }
}

void addWarnings(const ImportReport &report, QStringList &lines)
{
    for (const QString &warning : report.warnings)
        lines += QStringLiteral("warning: ") + shown(warning);
}

} // namespace

QString accuracyText(const std::optional<double> &accuracy)
{
    return accuracy ? QStringLiteral("accuracy %1").arg(metres(*accuracy))
                    : QStringLiteral("accuracy not known");
}

QStringList tableOf(const std::vector<FoundSystem> &systems)
{
    QList<QStringList> rows;
    for (const FoundSystem &system : systems) {
        const QString name = system.isDeprecated
                                 ? shown(system.name) + QStringLiteral(" (deprecated)")
                                 : shown(system.name);
        rows += QStringList{system.code, catalogue::kindWord(system.kind), name,
                            shown(system.area.name)};
    }
    return aligned(rows);
}

QStringList tableOf(const std::vector<DatumShift> &shifts)
{
    QList<QStringList> rows;
    for (const DatumShift &shift : shifts) {
        const QString need = needText(shift);
        rows += QStringList{QString::number(shift.number),
                            shift.code.isEmpty() ? QStringLiteral("-") : shift.code,
                            catalogue::shiftWord(shift.kind),
                            shift.accuracy ? metres(*shift.accuracy) : QStringLiteral("?"),
                            percent(shift.coverage),
                            need.isEmpty() ? shown(shift.name)
                                           : shown(shift.name) + QStringLiteral("; ") + need};
    }
    return aligned(rows);
}

QStringList reportLines(const ImportReport &report)
{
    QStringList lines = {QStringLiteral("system: ") + withCode(report.name, report.code)};
    if (!report.area.name.isEmpty())
        lines += QStringLiteral("area: ") + shown(report.area.name);
    lines += shiftLine(report.shift);
    if (report.shift.kind != ShiftKind::None || report.shift.accuracy)
        lines += QStringLiteral("datum shift: ") + qualityLine(report.shift);
    addShifts(QStringLiteral("better"), report.better, lines);
    addShifts(QStringLiteral("alternative"), report.alternatives, lines);
    addHeights(report, lines);
    if (report.metresPerUnit != 1.0) {
        lines += QStringLiteral("unit: the system's own is the %1; the document has metres")
                     .arg(shown(report.axisUnit));
    }
    constexpr double millimetres = 1000.0;
    lines += QStringLiteral("largest difference to PROJ by the same operation: %1 mm")
                 .arg(report.difference * millimetres, 0, 'f', 3);
    addWarnings(report, lines);
    return lines;
}

QStringList essentialLines(const ImportReport &report)
{
    QStringList lines = {QStringLiteral("note: %1 is taken from PROJ's database; %2; %3")
                             .arg(withCode(report.name, report.code), shiftLine(report.shift),
                                  accuracyText(report.shift.accuracy))};
    for (const DatumShift &shift : report.better) {
        lines += QStringLiteral("note: better would be ") + otherShift(shift);
        break; // the best of them
    }
    addHeights(report, lines);
    addWarnings(report, lines);
    return lines;
}

} // namespace KelStd::cli
