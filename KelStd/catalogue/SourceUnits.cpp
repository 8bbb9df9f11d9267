#include <KelStd/catalogue/SourceUnits.h>

#include <KelStd/text/NamedUnits.h>

#include <QtCore/QRegularExpression>

#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

/// Ten digits of a degree, 0.0174532925, are 1.1e-9 of it off, more than of another unit, and would
/// put a central meridian of 147 degrees 13 mm aside.
constexpr double roundedAngle = 2e-9;

QString doubtOn(const QString &unit, double size)
{
    if (!(size > 0.0) || !std::isfinite(size))
        return QStringLiteral("its unit \"%1\" has the size %2, which is none")
            .arg(unit, QString::number(size, 'g', 15));
    const text::NamedUnit *named = text::namedUnit(unit);
    if (named == nullptr || text::isSizeOf(*named, size))
        return {};
    return QStringLiteral("its unit \"%1\" has the size %2, but is %3; one of the two is wrong")
        .arg(unit, QString::number(size, 'g', 15), QString::number(named->size, 'g', 15));
}

} // namespace

QByteArray withWholeAngles(const QByteArray &wkt)
{
    static const QRegularExpression unit(
        QStringLiteral("\\b(?:ANGLE)?UNIT\\s*[\\[(]\\s*\"([^\"]*)\"\\s*,\\s*([0-9.eE+-]+)"),
        QRegularExpression::CaseInsensitiveOption);
    QByteArray result;
    int taken = 0;
    // A letter is a byte of the text, whatever its encoding.
    auto found = unit.globalMatch(QString::fromLatin1(wkt));
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        const text::NamedUnit *named = text::namedUnit(match.captured(1));
        bool isNumber = false;
        const double size = match.captured(2).toDouble(&isNumber);
        if (named == nullptr || !named->isAngle || !isNumber
            || !(text::differenceOf(*named, size) <= roundedAngle))
            continue;
        const int start = static_cast<int>(match.capturedStart(2));
        result += wkt.mid(taken, start - taken) + QByteArray::number(named->size, 'g', 17);
        taken = static_cast<int>(match.capturedEnd(2));
    }
    return result + wkt.mid(taken);
}

QString doubtOnUnits(const ProjSession &session, const PJ *projected, const PJ *geodetic)
{
    const proj::ProjFunctions &proj = session.functions();
    std::vector<Unit> units;
    for (const PJ *system : {projected, geodetic}) {
        for (const Axis &axis : session.axesOf(system))
            units.push_back({axis.unit, axis.factor});
    }
    const ProjObject conversion(proj.proj_crs_get_coordoperation(session.context(), projected));
    if (conversion != nullptr) {
        for (const MethodValue &value : session.valuesOf(conversion.get()))
            units.push_back(value.unit);
    }
    for (const Unit &unit : units) {
        const QString doubt = doubtOn(unit.name, unit.size);
        if (!doubt.isEmpty())
            return doubt;
    }
    return {};
}

} // namespace KelStd::catalogue
