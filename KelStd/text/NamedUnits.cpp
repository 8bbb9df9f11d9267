#include <KelStd/text/NamedUnits.h>

#include <cmath>
#include <string>

namespace KelStd::text {

namespace {

constexpr double radiansPerDegree = 3.14159265358979323846 / 180.0;
constexpr double foot = 0.3048;
constexpr double surveyFoot = 1200.0 / 3937.0; // Federal Register of April 5, 1893

/// More digits are lost by nobody; 6 mm in a northing of 6,000 km.
constexpr double sameSize = 1e-9;

constexpr NamedUnit namedUnits[] = {
    {"metre", 1.0},
    {"meter", 1.0},
    {"metres", 1.0},
    {"meters", 1.0},
    {"m", 1.0},
    {"kilometre", 1000.0},
    {"kilometer", 1000.0},
    {"km", 1000.0},
    {"foot", foot},
    {"feet", foot},
    {"ft", foot},
    {"internationalfoot", foot},
    {"footintl", foot},
    {"footinternational", foot},
    {"ussurveyfoot", surveyFoot},
    {"ussurveyfeet", surveyFoot},
    {"surveyfoot", surveyFoot},
    {"surveyfeet", surveyFoot},
    {"footsurveyus", surveyFoot},
    {"footus", surveyFoot},
    {"usfoot", surveyFoot},
    {"usfeet", surveyFoot},
    {"usft", surveyFoot},
    {"ftus", surveyFoot},
    {"yard", 3.0 * foot},
    {"yd", 3.0 * foot},
    {"ussurveyyard", 3.0 * surveyFoot},
    {"yardus", 3.0 * surveyFoot},
    {"usyd", 3.0 * surveyFoot},
    {"link", 0.66 * foot},
    {"ussurveylink", 0.66 * surveyFoot},
    {"linkus", 0.66 * surveyFoot},
    {"chain", 66.0 * foot},
    {"ch", 66.0 * foot},
    {"ussurveychain", 66.0 * surveyFoot},
    {"chainus", 66.0 * surveyFoot},
    {"usch", 66.0 * surveyFoot},
    {"degree", radiansPerDegree, true},
    {"degrees", radiansPerDegree, true},
    {"deg", radiansPerDegree, true},
    {"grad", 0.9 * radiansPerDegree, true},
    {"gon", 0.9 * radiansPerDegree, true},
    {"radian", 1.0, true},
};

} // namespace

const NamedUnit *namedUnit(const QString &name)
{
    std::string plain;
    for (const QChar c : name) {
        if (c.isLetterOrNumber())
            plain += c.toLower().toLatin1();
    }
    for (const NamedUnit &row : namedUnits) {
        if (row.name == plain)
            return &row;
    }
    return nullptr;
}

double differenceOf(const NamedUnit &named, double size)
{
    return std::abs(size / named.size - 1.0);
}

bool isSizeOf(const NamedUnit &named, double size)
{
    return differenceOf(named, size) <= sameSize;
}

} // namespace KelStd::text
