#include <cli/vector/PlaneText.h>

#include <cli/terminal/ShownText.h>

#include <KelStd/catalogue/Catalogue.h>

#include <QtCore/QStringList>

#include <vector>

namespace KelStd::cli::vector {

namespace {

/// A system without its site: easting and northing of layers are those of the projection, beside
/// which a site stands.
Coord planeOf(const LayerSystem &system)
{
    Coord plane = system.coord;
    plane.planeTransform = stPlaneTransform();
    plane.elevationFitting = stElevationFitting();
    return plane;
}

/// Without that of the heights: "EPSG:28992" of "EPSG:28992+5773".
QString codeOfPlane(const LayerSystem &system)
{
    return system.origin.fullCode().section(QLatin1Char('+'), 0, 0);
}

QString gridsOf(const Coord &coord)
{
    const QString name = coord.ellipsoid.proj4EllpsName;
    return name.contains(QLatin1String("nadgrids")) ? name : QString();
}

bool haveSameShift(const Coord &one, const Coord &other)
{
    return one.ellipsoidTransform.isSameLogic(other.ellipsoidTransform)
           && gridsOf(one) == gridsOf(other);
}

} // namespace

Reference referenceOf(const LayerSystem &system, VectorFiles &files, QString &reason)
{
    Reference reference;
    catalogue::Catalogue catalogue;
    catalogue::CatalogueFailure failure;
    const auto exported = catalogue.exportSystem(planeOf(system), catalogue::ExportForm::Wkt2,
                                                 system.origin.fullCode(), &failure);
    if (!exported) {
        reason = failure.text;
        return reference;
    }
    std::string error;
    if (!files.describe(exported->text.toStdString(), reference, error))
        reason = QString::fromStdString(error);
    return reference;
}

PlaneText planeTextOf(const LayerSystem &system)
{
    PlaneText text;
    catalogue::Catalogue catalogue;
    const auto exported =
        catalogue.exportSystem(planeOf(system), catalogue::ExportForm::Proj, codeOfPlane(system));
    if (!exported)
        return text;
    if (!exported->code.isEmpty())
        text.code = system.origin.fullCode();
    else
        text.definition = exported->text.simplified();
    return text;
}

QString shiftBesideCode(const LayerSystem &system, const QString &target)
{
    const QString code = codeOfPlane(system);
    const QByteArray source = code.toUtf8();
    catalogue::Catalogue catalogue;
    const auto shifts = catalogue.datumShifts(source);
    QStringList choices;
    if (system.origin.operation)
        choices += system.origin.operation->code;
    choices += QString();
    for (const catalogue::DatumShift &shift :
         shifts ? shifts->shifts : std::vector<catalogue::DatumShift>()) {
        if (shift.isAvailable)
            choices += QString::number(shift.number);
    }
    catalogue::ImportOptions options;
    options.takeAsWgs84 = true;
    bool isImported = false;
    for (const QString &choice : choices) {
        options.shift = choice;
        // Parameters are published ones, or fitted to the way in which they are applied here.
        for (const bool fit : {false, true}) {
            options.fit = fit;
            const auto imported = catalogue.importSystem(source, options);
            if (imported.system && haveSameShift(*imported.system, system.coord))
                return {};
            isImported = isImported || imported.system;
        }
    }
    if (!isImported)
        return {};
    return QStringLiteral("warning: %1 names the system by its code %2, for which the database has "
                          "another datum shift than the system %3: programs that read it take "
                          "theirs")
        .arg(target, code, shown(system.name));
}

} // namespace KelStd::cli::vector
