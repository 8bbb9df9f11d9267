#include <KelStd/positions/InputForm.h>

#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/UnitWords.h>

namespace KelStd::positions {

InputForm InputForm::atSite(EUnit inputUnit)
{
    InputForm form(Frame::LocalProjected, InputHeight::OfFrame, inputUnit);
    form.isAtSite = true;
    return form;
}

QString InputForm::frameName() const
{
    return QString::fromLatin1(isAtSite ? siteFrameName : rowOf(frame).option);
}

QString InputForm::unitText(int component) const
{
    const Column &column = columnOf(frame, component);
    if (isAngle(column))
        return QStringLiteral("deg");
    return isPlane(column) && planeUnit ? planeUnit->symbol : unitSymbol(lengthUnit);
}

double InputForm::metresPerUnit(int component) const
{
    const Column &column = columnOf(frame, component);
    if (isAngle(column))
        return 1.0;
    return isPlane(column) && planeUnit
               ? planeUnit->metres
               : CoordStringHelper::ConvertUnit_Length(1.0, lengthUnit, Unit_Meter);
}

} // namespace KelStd::positions
