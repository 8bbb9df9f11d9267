#include <cli/vector/VectorInput.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/ShownText.h>
#include <cli/vector/CoordinateTexts.h>
#include <cli/vector/DrawingUnit.h>
#include <cli/vector/FieldNames.h>
#include <cli/vector/LayerChoice.h>
#include <cli/vector/LineBreaks.h>
#include <cli/vector/VectorFormats.h>
#include <cli/vector/VectorModule.h>

#include <KelStd/positions/PointNames.h>

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

namespace KelStd::cli::vector {

namespace {

const QString layerOption = QStringLiteral("layer");
const QString namesOption = QStringLiteral("names");

/// Formats whose heights are above mean sea level by their own standards.
bool hasSeaLevelHeights(const std::string &format)
{
    return format == "GPX" || format == "KML" || format == "LIBKML";
}

} // namespace

void VectorInput::addOptions(CommandLine &line)
{
    line.addOption({layerOption,
                    QStringLiteral("The layer of a vector file, where several hold\npoints."),
                    QStringLiteral("NAME")});
}

bool VectorInput::open(const QString &name, const CommandLine &line, Console &console)
{
    QString reason;
    m_name = name;
    m_files = vectorFiles(reason);
    if (m_files == nullptr) {
        console.report(QStringLiteral("cannot read %1: %2").arg(name, reason));
        return false;
    }
    std::string error;
    const QString path = QFileInfo(onDisk(name)).absoluteFilePath();
    m_source = m_files->open(path.toStdString(), error);
    if (m_source == nullptr) {
        console.report(
            QStringLiteral("cannot read %1: %2").arg(name, QString::fromStdString(error)));
        return false;
    }
    if (const QString damage = damagedCoordinate(path, m_source->format()); !damage.isEmpty()) {
        console.report(QStringLiteral("cannot read %1: %2").arg(name, damage));
        return false;
    }
    if (const QString missing = missingAttributes(path); !missing.isEmpty()) {
        console.report(
            QStringLiteral("warning: %1: no file .%2 is beside it, which has the names and "
                           "attributes of the points")
                .arg(name, missing));
    }
    if (m_source->format() == "GPX")
        warnOfLineBreaks(path, console);
    if (m_source->format() == "DXF") {
        m_drawingUnit = drawingUnit(path);
        m_drawn = drawingComment(path);
    }
    return pickLayer(line.value(layerOption), console)
           && pickName(line.value(namesOption), console);
}

void VectorInput::warnOfLineBreaks(const QString &path, Console &console) const
{
    if (const qint64 count = extensionsWithLineBreaks(path); count > 0) {
        console.report(QStringLiteral("warning: %1: line breaks in texts of extensions are left "
                                      "out; texts that have some: %2")
                           .arg(m_name)
                           .arg(count));
    }
}

bool VectorInput::pickLayer(const QString &wanted, Console &console)
{
    QString mistake;
    const auto layer = chosenLayer(m_source->layers(), wanted, m_name, mistake);
    if (!layer) {
        console.report(mistake);
        return false;
    }
    std::string error;
    m_reader = m_source->read(*layer, error);
    if (m_reader == nullptr) {
        console.report(
            QStringLiteral("cannot read %1: %2").arg(m_name, QString::fromStdString(error)));
        return false;
    }
    return true;
}

bool VectorInput::pickName(const QString &wanted, Console &console)
{
    const QStringList fields = fieldNames(m_reader->layer());
    if (wanted.isEmpty()) {
        m_form.nameField = positions::pointNameAmong(fields);
        return true;
    }
    m_form.nameField = static_cast<int>(fields.indexOf(wanted));
    if (m_form.nameField >= 0)
        return true;
    console.report(
        QStringLiteral("%1 has no field \"%2\"; there are %3")
            .arg(m_name, wanted,
                 fields.isEmpty() ? QStringLiteral("none") : fields.join(QLatin1String(", "))));
    return false;
}

bool VectorInput::mayHaveHeights() const
{
    const std::string &geometry = m_reader->layer().geometry;
    return geometry != "Point" && geometry != "Multi Point";
}

Reference VectorInput::layerReference() const
{
    Reference reference = m_reader->layer().reference;
    if (reference.kind != Reference::Kind::None || !m_drawn)
        return reference;
    const QString code = m_drawn->code();
    std::string error;
    if (code.isEmpty() || !m_files->describe(code.toStdString(), reference, error))
        return m_reader->layer().reference;
    return reference;
}

std::optional<positions::Frame> VectorInput::frame(const LayerSystem &system,
                                                   std::optional<positions::Frame> given,
                                                   const LayerUnits &units, Console &console)
{
    const Reference layer = layerReference();
    const bool isNameAllThatIsKnown =
        layer.kind == Reference::Kind::None && m_drawn && !m_drawn->system.isEmpty();
    const auto frame = isNameAllThatIsKnown ? frameByName(system, given, console)
                                            : frameOf(layer, system, given, console);
    if (!frame)
        return std::nullopt;
    m_form.frame = *frame;
    takeHeightReference(layer, system, console);
    if (!takeUnits(units, console))
        return std::nullopt;
    return frame;
}

/// That of a drawing of the program whose system has no code: it has to have the same name.
std::optional<positions::Frame> VectorInput::frameByName(const LayerSystem &system,
                                                         std::optional<positions::Frame> given,
                                                         Console &console) const
{
    constexpr positions::Frame drawn = positions::Frame::LocalProjected;
    const QString name = system.coord.coord_name;
    const bool isSame = m_drawn->system == systemInComment({}, name)
                        || m_drawn->system == systemInComment(system.origin.fullCode(), name);
    if (!isSame) {
        console.report(QStringLiteral("%1: the drawing is of the system \"%2\", as it says in its "
                                      "first line, and would be read as one of the system %3; "
                                      "--system takes the one that it is of")
                           .arg(m_name, shown(m_drawn->system), system.name));
        return std::nullopt;
    }
    if (given && *given != drawn) {
        console.report(
            QStringLiteral("%1: the drawing holds easting and northing of \"%2\", not %3")
                .arg(m_name, shown(m_drawn->system),
                     QString::fromLatin1(positions::rowOf(*given).option)));
        return std::nullopt;
    }
    // Systems of one name may be two.
    if (const QString mistake = mistakeOfDrawn(system); !mistake.isEmpty()) {
        console.report(QStringLiteral("%1: %2").arg(m_name, mistake));
        return std::nullopt;
    }
    return drawn;
}

/// Why the definition in a drawing is not that of the system; empty where there is none.
QString VectorInput::mistakeOfDrawn(const LayerSystem &system) const
{
    Reference layer;
    std::string error;
    if (m_drawn->definition.isEmpty()
        || !m_files->describe(m_drawn->definition.toStdString(), layer, error))
        return {};
    layer.name = m_drawn->system.toStdString();
    QString unknown;
    const Reference own = referenceOf(system, *m_files, unknown);
    layer.unitFactor = own.unitFactor; // a drawing says its unit beside
    return checkOf(own, system, unknown)
        .fit(layer, positions::Frame::LocalProjected, false)
        .mistake;
}

ReferenceCheck VectorInput::checkOf(const Reference &own, const LayerSystem &system,
                                    const QString &unknown) const
{
    ReferenceCheck check(own, system.name, !system.geoidModel.isEmpty(),
                         [this](const std::string &one, const std::string &other) {
                             return m_files->haveSameDatum(one, other);
                         });
    check.setUnknown(unknown);
    return check;
}

/// That of a layer with this reference system, or with none.
std::optional<positions::Frame> VectorInput::frameOf(const Reference &layer,
                                                     const LayerSystem &system,
                                                     std::optional<positions::Frame> given,
                                                     Console &console)
{
    QString unknown;
    const Reference own = referenceOf(system, *m_files, unknown);
    const ReferenceCheck check = checkOf(own, system, unknown);
    QString mistake;
    const std::optional<positions::Frame> frame =
        given ? given : check.onlyFrame(layer, mayHaveHeights(), mistake);
    if (!frame) {
        console.report(QStringLiteral("%1: %2").arg(m_name, mistake));
        return std::nullopt;
    }
    const ReferenceFit fit = check.fit(layer, *frame, mayHaveHeights());
    // A layer that declares no heights may have some all the same.
    if (!mayHaveHeights())
        m_form.whyNoHeights = check.fit(layer, *frame, true).mistake;
    if (!fit.mistake.isEmpty()) {
        // Who has a layer of another plane wants it in that of the system.
        const bool isOtherPlane = layer.kind == Reference::Kind::Projected && !layer.code.empty()
                                  && layer.code != own.code;
        const QString hint =
            isOtherPlane ? QStringLiteral("; --system %1 is that of the layer, and --to another "
                                          "one that is printed")
                               .arg(QString::fromStdString(layer.code))
                         : QString();
        console.report(QStringLiteral("%1: %2%3").arg(m_name, fit.mistake, hint));
        return std::nullopt;
    }
    for (const QString &warning : fit.warnings)
        console.report(QStringLiteral("warning: %1: %2").arg(m_name, warning));
    for (const QString &note : fit.notes)
        console.report(QStringLiteral("note: %1: %2").arg(m_name, note));
    const bool isGeographic =
        *frame == positions::Frame::Wgs84Geographic || *frame == positions::Frame::LocalGeographic;
    if (isGeographic && hasSeaLevelHeights(m_source->format()) && mayHaveHeights()) {
        console.report(QStringLiteral("note: %1: heights are taken as ellipsoidal; this format "
                                      "means heights above mean sea level")
                           .arg(m_name));
    }
    return frame;
}

bool VectorInput::takeAtSite(const LayerUnits &units, Console &console)
{
    const Reference &layer = m_reader->layer().reference;
    const bool mayBe = layer.kind == Reference::Kind::None || layer.isLocal;
    if (!mayBe || m_drawn) {
        const QString ofDrawing = m_drawn && m_drawn->system.isEmpty()
                                      ? QStringLiteral("the plane of a system without a name")
                                      : shown(m_drawn.value_or(DrawingComment()).system);
        const bool isPlane = m_drawn || layer.kind == Reference::Kind::Projected;
        console.report(
            QStringLiteral("%1: its coordinates are of %2, and positions at a site have no "
                           "reference system; %3")
                .arg(m_name, m_drawn ? ofDrawing : shownName(layer),
                     isPlane ? QStringLiteral("--from local-neh reads those of the plane")
                             : QStringLiteral("a layer of them that names none is read")));
        return false;
    }
    if (layer.isLocal) {
        console.report(QStringLiteral("note: %1: \"%2\" is taken as the coordinates of the site")
                           .arg(m_name, shown(QString::fromStdString(layer.name))));
    }
    m_form.frame = positions::Frame::LocalProjected;
    return takeUnits(units, console);
}

RecordSource &VectorInput::records()
{
    m_records = std::make_unique<LayerRecords>(*m_reader, m_name, m_form);
    return *m_records;
}

} // namespace KelStd::cli::vector
