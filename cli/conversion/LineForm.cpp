#include <cli/conversion/LineForm.h>

#include <KelStd/positions/Columns.h>

namespace KelStd::cli {

namespace {

/// The height of positions without one: that of --height, or 0. Above what it is taken is always
/// said of the latter, and of the former where there are two kinds of heights.
positions::MissingHeight missingHeight(const ConvertOptions &options,
                                       const ConversionSystem &system)
{
    const QString &geoidModel = system.geoidModel;
    const bool isFitted = options.isFromSite && system.site.hasSurface();
    const bool isProjected = options.frame->frame == positions::Frame::LocalProjected;
    positions::MissingHeight height;
    height.isGiven = options.height.has_value();
    height.metres = options.height.value_or(0.0);
    if (isFitted) {
        height.above = QStringLiteral("the zero of the site's heights");
    } else if (!height.isGiven || !geoidModel.isEmpty()) {
        height.above = QStringLiteral("the ")
                       + positions::heightReference(isProjected ? geoidModel : QString());
    }
    return height;
}

} // namespace

positions::InputForm lineForm(const ConvertOptions &options, const ConversionSystem &given,
                              const std::optional<positions::PlaneUnit> &planeUnit)
{
    const LengthUnit *const unit = options.display.lengthUnit;
    const bool hasUnit = unit != nullptr;
    positions::InputForm form(options.frame->frame, positions::InputHeight::OfFrame,
                              hasUnit ? unit->unit : Unit_Meter);
    form.isAtSite = options.isFromSite;
    form.hasLengthUnit = hasUnit;
    form.planeUnit = planeUnit;
    form.localAxes = given.coord.ellipsoid.positiveDir;
    form.isPlaneHeightEllipsoidal = given.geoidModel.isEmpty();
    form.missingHeight = missingHeight(options, given);
    return form;
}

} // namespace KelStd::cli
