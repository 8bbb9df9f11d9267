#include <KelStd/coord/ControlPoint.h>

namespace KelStd {

namespace {

struct UseRow
{
    const char *word;
    bool isInPlan;
    bool isInHeight;
};

constexpr UseRow useRows[] = {
    {"hv", true, true},
    {"h", true, false},
    {"v", false, true},
    {"-", false, false},
};

} // namespace

QString ControlPoint::useWord() const
{
    for (const UseRow &row : useRows) {
        if (row.isInPlan == isUsedInPlan && row.isInHeight == isUsedInHeight)
            return QString::fromLatin1(row.word);
    }
    return {};
}

bool ControlPoint::setUse(const QString &word)
{
    for (const UseRow &row : useRows) {
        if (word.compare(QLatin1String(row.word), Qt::CaseInsensitive) == 0) {
            isUsedInPlan = row.isInPlan;
            isUsedInHeight = row.isInHeight;
            return true;
        }
    }
    return false;
}

bool ControlPoint::operator==(const ControlPoint &other) const
{
    return name == other.name && wgs84 == other.wgs84 && north == other.north && east == other.east
           && height == other.height && isUsedInPlan == other.isUsedInPlan
           && isUsedInHeight == other.isUsedInHeight && sigmaH == other.sigmaH
           && sigmaV == other.sigmaV;
}

} // namespace KelStd
