#include <KelStd/catalogue/RecordedShift.h>

#include <KelStd/location/ChainDefinitions.h>

namespace KelStd::catalogue {

CarriedShift recordedShift(const Coord &coord, double primeMeridian)
{
    const ChainDefinitions definitions(&coord);
    const std::vector<ProjStep> steps = stepsOf(definitions.localGeographic.toUtf8());
    const double axis = coord.ellipsoid.biggerHalfAxle.value.toDouble();
    const double reciprocal = coord.ellipsoid.reciprocal;
    if (steps.empty())
        return shiftOfNothing(axis, reciprocal, primeMeridian);
    const ProjStep &step = steps.front();
    if (step.has("nadgrids")) {
        CarriedShift shift = shiftOfNothing(axis, reciprocal, primeMeridian);
        // Only the turn of longitudes stays before the grid.
        const bool isTurned = primeMeridian != 0.0;
        shift.steps.resize(isTurned ? 1 : 0);
        shift.steps.push_back({"hgridshift", false, {{"grids", step.text("nadgrids")}}});
        shift.kind = ShiftKind::Grid;
        return shift;
    }
    Similarity similarity;
    const QList<QByteArray> numbers = step.text("towgs84").split(',');
    for (int index = 0; index < numbers.size() && index < 7; ++index) {
        const double number = numbers.at(index).toDouble();
        const auto place = static_cast<std::size_t>(index);
        if (index < 3)
            similarity.translation[place] = number;
        else if (index < 6)
            similarity.rotation[place - 3] = number;
        else
            similarity.scale = number;
    }
    return similarity.isNull() ? shiftOfNothing(axis, reciprocal, primeMeridian)
                               : shiftOfText(similarity, axis, reciprocal, primeMeridian);
}

} // namespace KelStd::catalogue
