#include <KelStd/catalogue/ShiftRefusal.h>

#include <algorithm>

namespace KelStd::catalogue {

namespace {

using Kind = CatalogueFailureKind;

QString gridsOf(const std::vector<ShiftCandidate> &candidates)
{
    QStringList names;
    for (const ShiftCandidate &candidate : candidates)
        names += candidate.row.missingGrids;
    names.removeDuplicates();
    constexpr int most = 6;
    const auto more = names.size() - most;
    QString text = QStringList(names.mid(0, most)).join(QLatin1String(", "));
    if (more > 0)
        text += QStringLiteral(" and %1 more").arg(more);
    return text;
}

QString consentText(const ImportWork &work)
{
    return QStringLiteral("use %1, which takes its positions as WGS 84 ones, without any shift")
        .arg(work.words.consent);
}

} // namespace

QString nameOf(const DatumShift &shift)
{
    return shift.code.isEmpty() ? shift.name
                                : shift.code + QLatin1String(" (") + shift.name + QLatin1Char(')');
}

bool refuseForShift(ImportWork &work)
{
    const QString name = work.source.system.name;
    const QString consent = consentText(work);
    const bool needsGrids =
        std::any_of(work.candidates.cbegin(), work.candidates.cend(),
                    [](const ShiftCandidate &candidate) { return !candidate.row.grids.isEmpty(); });
    if (needsGrids) {
        const QString missing = gridsOf(work.candidates);
        return work.refuse(
            Kind::GridOnly,
            missing.isEmpty()
                ? QStringLiteral("every shift between %1 and WGS 84 chains grids, which a system "
                                 "cannot carry; %2")
                      .arg(name, consent)
                : QStringLiteral("every shift between %1 and WGS 84 that is better than a "
                                 "ballpark one needs a grid that is not there: %2; add one, or %3")
                      .arg(name, missing, consent));
    }
    const bool dependsOnTime =
        std::any_of(work.candidates.cbegin(), work.candidates.cend(),
                    [](const ShiftCandidate &candidate) { return candidate.row.isTimeDependent; })
        || (work.candidates.empty() && hasShiftsOfTime(work.session, work.source.geodetic.get()));
    if (dependsOnTime)
        return work.refuse(Kind::TimeSpecific,
                           QStringLiteral("the shifts between %1 and WGS 84 depend on the time, "
                                          "which a system cannot carry; %2")
                               .arg(name, consent));
    if (!work.candidates.empty())
        return work.refuse(Kind::NoShift,
                           QStringLiteral("the shift between %1 and WGS 84, %2, is of a kind that "
                                          "a system cannot carry; %3")
                               .arg(name, nameOf(work.candidates.front().row), consent));
    return work.refuse(Kind::NoShift,
                       QStringLiteral("PROJ knows no shift between %1 and WGS 84 but a ballpark "
                                      "one, which can be wrong by hundreds of metres; %2")
                           .arg(name, consent));
}

} // namespace KelStd::catalogue
