// What a layer says of its heights: what they are above, and in which unit they are.

#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>
#include <cli/vector/FieldNames.h>
#include <cli/vector/VectorInput.h>

#include <cmath>

namespace KelStd::cli::vector {

namespace {

/// Units in which a drawing is said to be because the template that it was begun with says so:
/// inches and millimetres.
bool isOfTemplates(double metres)
{
    constexpr double inch = 0.0254;
    constexpr double millimetre = 0.001;
    return metres == inch || metres == millimetre;
}

} // namespace

/// What the heights are above where the layer says so of all of them.
void VectorInput::takeHeightReference(const Reference &layer, const LayerSystem &system,
                                      Console &console)
{
    if (m_form.frame != positions::Frame::LocalProjected)
        return;
    const QString ofSystem = positions::heightReference(system.geoidModel);
    m_form.heightReference = m_drawn ? m_drawn->heightReference
                                     : QString::fromStdString(m_reader->layer().heightReference);
    // Which model it is, drawings did not always say.
    const bool isAboveSomeGeoid = m_form.heightReference == QLatin1String("geoid");
    if (isAboveSomeGeoid && !system.geoidModel.isEmpty())
        m_form.heightReference = ofSystem;
    if (!m_form.heightReference.isEmpty() && m_form.heightReference != ofSystem) {
        m_form.whyOtherHeights =
            QStringLiteral("the height is above \"%1\", as %2 says, and would be read as one above "
                           "the %3; give the system that the heights are of")
                .arg(shown(m_form.heightReference),
                     m_drawn ? QStringLiteral("the first line of the drawing")
                             : QStringLiteral("the description of the layer"),
                     ofSystem);
    }
    const bool isSaid = !m_form.heightReference.isEmpty() || !layer.vertical.empty()
                        || heightReferenceAmong(fieldNames(m_reader->layer())) >= 0;
    if (!isSaid && !system.geoidModel.isEmpty() && mayHaveHeights()) {
        console.report(QStringLiteral("note: %1: heights are taken as those above the %2; the "
                                      "layer does not say what they are above")
                           .arg(m_name, ofSystem));
    }
}

/// Heights of a plane may be in feet as well, which no reference system of a plane says. A drawing
/// has one unit: where it says that it is the one of the plane, heights are in it, too; where it
/// says another one, nobody but the user knows which of the two is right.
bool VectorInput::takeUnits(const LayerUnits &units, Console &console)
{
    constexpr double tolerance = 1e-5; // feet are feet: drawings seldom tell one from another
    const Reference layer = layerReference();
    const bool hasReference = layer.kind != Reference::Kind::None;
    m_form.planeUnit = hasReference ? layer.unitFactor : units.plane;
    // What the program drew is in the unit that it says beside the system, which may be another.
    if (m_drawn && m_drawingUnit)
        m_form.planeUnit = *m_drawingUnit;
    // What states a system in metres is not in the unit of what is printed.
    const bool isInMetres =
        m_form.frame != positions::Frame::LocalProjected || layer.unitFactor == 1.0;
    const std::optional<StatedUnit> stated =
        m_drawingUnit ? std::nullopt : statedHeightUnit(fieldNames(m_reader->layer()));
    m_form.heightUnit = layer.hasHeightUnit          ? layer.heightFactor
                        : hasReference && isInMetres ? 1.0
                        : stated                     ? stated->metres
                                                     : units.others;
    if (m_form.frame != positions::Frame::LocalProjected)
        return true;
    const bool isOfPlane =
        m_drawingUnit
        && std::abs(*m_drawingUnit - m_form.planeUnit) <= tolerance * m_form.planeUnit;
    if (m_drawingUnit && !isOfPlane) {
        const bool isBelieved = !units.areGiven && !isOfTemplates(*m_drawingUnit);
        console.report(
            QStringLiteral("%1%2: the drawing says that its unit is %3 m, and easting "
                           "and northing %4 read in units of %5 m; --length-unit says "
                           "%6")
                .arg(isBelieved ? QString() : QStringLiteral("warning: "), m_name)
                .arg(*m_drawingUnit, 0, 'g', 12)
                .arg(isBelieved ? QStringLiteral("would be") : QStringLiteral("are"))
                .arg(m_form.planeUnit, 0, 'g', 12)
                .arg(isBelieved ? QStringLiteral("which it is") : QStringLiteral("another one")));
        if (isBelieved)
            return false;
    }
    if (isOfPlane) {
        m_form.heightUnit = m_form.planeUnit;
        return true;
    }
    if (stated && !layer.hasHeightUnit) {
        if (!isInMetres && m_form.heightUnit != units.others && mayHaveHeights()) {
            console.report(QStringLiteral("note: %1: heights are read in units of %2 m, which the "
                                          "column \"%3\" says")
                               .arg(m_name)
                               .arg(m_form.heightUnit, 0, 'g', 12)
                               .arg(stated->column));
        }
        return true;
    }
    const bool isDifferent =
        std::abs(m_form.planeUnit - m_form.heightUnit) > tolerance * m_form.planeUnit;
    if (isDifferent && !layer.hasHeightUnit && mayHaveHeights()) {
        console.report(
            QStringLiteral("note: %1: easting and northing are read in the unit \"%2\" of "
                           "the %4, heights in %3; --length-unit says another one")
                .arg(m_name,
                     hasReference ? QString::fromStdString(layer.unit)
                                  : QStringLiteral("%1 m").arg(m_form.planeUnit, 0, 'g', 12),
                     m_form.heightUnit == 1.0
                         ? QStringLiteral("m")
                         : QStringLiteral("units of %1 m").arg(m_form.heightUnit, 0, 'g', 12),
                     hasReference ? QStringLiteral("layer") : QStringLiteral("system")));
    }
    return true;
}

} // namespace KelStd::cli::vector
