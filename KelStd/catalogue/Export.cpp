#include <KelStd/catalogue/Export.h>

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/catalogue/DefinedSystem.h>
#include <KelStd/catalogue/DerivedSystem.h>
#include <KelStd/catalogue/ExportLoss.h>
#include <KelStd/catalogue/KnownSystem.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/SitePipeline.h>
#include <KelStd/catalogue/TextCheck.h>
#include <KelStd/location/SystemNotes.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <vector>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

QJsonObject jsonOf(const ProjSession &session, const PJ *object)
{
    const char *const text =
        session.functions().proj_as_projjson(session.context(), object, nullptr);
    return QJsonDocument::fromJson(QByteArray(text == nullptr ? "" : text)).object();
}

ProjObject fromJson(const ProjSession &session, const QJsonObject &json)
{
    return session.fromText(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

/// What a bound system's text has of an operation.
QJsonObject abridged(const QJsonObject &operation)
{
    QJsonObject result;
    for (const char *key : {"name", "method", "parameters", "id"})
        result.insert(QLatin1String(key), operation.value(QLatin1String(key)));
    return result;
}

/// The system with its datum shift, by the database's words where it is verified. `operation` is
/// the shift's, or null for the parameters that the system has.
ProjObject boundObject(const ProjSession &session, const Coord &coord, const DefinitionParts &parts,
                       const PJ *known, const PJ *operation)
{
    ProjObject bound = definedSystem(session, coord, parts);
    if (bound == nullptr || session.typeOf(bound.get()) != PJ_TYPE_BOUND_CRS)
        return bound;
    QJsonObject json = jsonOf(session, bound.get());
    const QString source = QStringLiteral("source_crs");
    QJsonObject inner = known != nullptr ? jsonOf(session, known) : json.value(source).toObject();
    if (inner.isEmpty())
        return nullptr;
    inner.remove(QStringLiteral("$schema"));
    if (known == nullptr && !coord.coord_name.isEmpty())
        inner.insert(QStringLiteral("name"), coord.coord_name);
    json.insert(source, inner);
    if (operation != nullptr)
        json.insert(QStringLiteral("transformation"), abridged(jsonOf(session, operation)));
    return fromJson(session, json);
}

/// The system without a datum shift, by its name.
ProjObject namedObject(const ProjSession &session, const Coord &coord, const PlaneUnit &unit)
{
    ProjObject object = definedSystem(session, coord, {unit, false, false});
    if (object == nullptr || coord.coord_name.isEmpty())
        return object;
    QJsonObject json = jsonOf(session, object.get());
    json.insert(QStringLiteral("name"), coord.coord_name);
    return fromJson(session, json);
}

/// The system whose plane is that of its site.
ProjObject siteObject(const ProjSession &session, const Coord &coord, const PlaneUnit &unit,
                      const calibration::SiteTransform &site)
{
    const ProjObject written = definedSystem(session, coord, {unit, false, false});
    const ProjObject plain = boundObject(session, coord, {{}, true, true}, nullptr, nullptr);
    const std::vector<Axis> axes =
        written == nullptr ? std::vector<Axis>() : session.axesOf(written.get());
    if (plain == nullptr || axes.empty())
        return nullptr;
    const QString name = coord.coord_name.isEmpty() ? QStringLiteral("site") : coord.coord_name;
    const QJsonObject coordinates =
        jsonOf(session, written.get()).value(QStringLiteral("coordinate_system")).toObject();
    return fromJson(session,
                    derivedSystem(jsonOf(session, plain.get()), coordinates, name, site.plane(),
                                  planeDirections(session, coord), axes.front().factor));
}

/// PROJ's own text leaves out the directions of axes, but for those of a few methods.
QString withAxis(const ProjSession &session, const QString &text, const Coord &coord,
                 const PJ *known)
{
    const QString key = QStringLiteral(" +axis=");
    // In the order of the database's system, where it is one of them.
    const std::vector<ProjStep> ofKnown =
        known == nullptr ? std::vector<ProjStep>() : stepsOf(session.projTextOf(known));
    QByteArray axis = ofKnown.size() == 1 ? ofKnown.front().text("axis") : QByteArray();
    if (axis.isEmpty())
        axis = planeDirections(session, coord).axis;
    const auto end = text.indexOf(QLatin1String(" +no_defs"));
    if (axis.isEmpty() || end < 0 || text.contains(key))
        return text;
    return text.left(end) + key + QString::fromLatin1(axis) + text.mid(end);
}

QString textOf(const ProjSession &session, const PJ *object, ExportForm form)
{
    const proj::ProjFunctions &proj = session.functions();
    const char *text = nullptr;
    switch (form) {
    case ExportForm::Wkt2:
        text = proj.proj_as_wkt(session.context(), object, PJ_WKT2_2019, nullptr);
        break;
    case ExportForm::ProjJson:
        text = proj.proj_as_projjson(session.context(), object, nullptr);
        break;
    case ExportForm::Proj:
        text = proj.proj_as_proj_string(session.context(), object, PJ_PROJ_4, nullptr);
        break;
    case ExportForm::Esri: {
        const char *const options[] = {"MULTILINE=NO", nullptr};
        text = proj.proj_as_wkt(session.context(), object, PJ_WKT1_ESRI, options);
        break;
    }
    }
    return QString::fromUtf8(text == nullptr ? "" : text);
}

/// False for longitudes and latitudes.
bool isProjected(const ProjSession &session, const PJ *system)
{
    const ProjObject source(session.typeOf(system) == PJ_TYPE_BOUND_CRS
                                ? session.functions().proj_get_source_crs(session.context(), system)
                                : nullptr);
    const PJ_TYPE type = session.typeOf(source != nullptr ? source.get() : system);
    return type != PJ_TYPE_GEOGRAPHIC_2D_CRS && type != PJ_TYPE_GEOGRAPHIC_3D_CRS;
}

/// Why a text that was read back may not be handed out; empty where it may.
QString faultOf(const TextCheck &check, ExportForm form, const Coord &coord, const PJ *known)
{
    if (!check.isRead)
        return QStringLiteral("PROJ does not read what it writes of the system in this form");
    if (check.difference <= sameText)
        return {};
    const QString axes = location::unusualAxes(coord.ellipsoid);
    if (form != ExportForm::Esri || axes.isEmpty())
        return QStringLiteral("what PROJ writes of the system in this form is up to %1 m off it")
            .arg(check.difference, 0, 'g', 3);
    if (known != nullptr)
        return {};
    return QStringLiteral("an ESRI text does not say which way axes point, and those of the system "
                          "point %1; WKT 2 says so")
        .arg(axes);
}

} // namespace

std::optional<ExportedSystem> exported(ProjSession &session, ShiftMemory &memory,
                                       const Coord &coord, ExportForm form, const QString &code,
                                       const PlaneUnit &planeUnit, CatalogueFailure *failure)
{
    const auto refuse = [failure](const QString &text) {
        if (failure != nullptr)
            *failure = {CatalogueFailureKind::NotExportable, text};
        return std::nullopt;
    };
    calibration::SiteFailure siteFailure;
    const auto site = calibration::SiteTransform::of(coord, &siteFailure);
    if (!site)
        return refuse(siteFailure.text);
    ExportedSystem result;
    if (form == ExportForm::Proj && site->hasSite()) {
        QString reason;
        const auto pipeline = sitePipeline(session, coord, *site, planeUnit, reason);
        if (!pipeline)
            return refuse(reason);
        result.text = QString::fromUtf8(*pipeline);
        result.lost = lostOfPipeline(coord, *pipeline);
        return result;
    }
    const bool isDerived = site->hasPlane() && form != ExportForm::Esri;
    const ProjObject known = isDerived ? nullptr : verified(session, coord, code);
    ProjObject object;
    ProjObject operation;
    if (isDerived) {
        object = siteObject(session, coord, planeUnit, *site);
    } else if (form == ExportForm::Esri) {
        if (known == nullptr && isShiftSet(coord))
            return refuse(QStringLiteral("an ESRI text has no datum shift, and the system has one "
                                         "and is not known to be one of the database; WKT 2 "
                                         "carries it"));
        if (known == nullptr)
            object = namedObject(session, coord, planeUnit);
    } else if (form == ExportForm::Proj) {
        object = definedSystem(session, coord, {planeUnit, true, false});
    } else if (known == nullptr || isShiftSet(coord) || !isWgs84(session, known.get())) {
        operation =
            known == nullptr ? nullptr : fittedOperation(session, memory, coord, known.get());
        object =
            boundObject(session, coord, {planeUnit, true, false}, known.get(), operation.get());
    }
    const bool isOfRecords = isDerived || form == ExportForm::Proj || known == nullptr;
    WrittenText written;
    written.form = form;
    written.known = known.get();
    written.system = object != nullptr ? object.get() : isOfRecords ? nullptr : known.get();
    written.isByOperation = operation != nullptr;
    written.unit = planeUnit;
    if (written.system != nullptr)
        written.text = textOf(session, written.system, form);
    if (form == ExportForm::Proj)
        written.text = withAxis(session, written.text, coord, known.get());
    if (written.text.isEmpty())
        return refuse(QStringLiteral("PROJ cannot write the system in this form"));
    if (isProjected(session, written.system)) {
        const TextCheck check =
            checkText(session, written.text.toUtf8(), coord,
                      form == ExportForm::Esri ? calibration::SiteTransform() : *site,
                      known == nullptr ? SystemArea() : session.areaOf(known.get()));
        const QString fault = faultOf(check, form, coord, known.get());
        if (!fault.isEmpty())
            return refuse(fault);
        written.difference = check.difference;
    }
    result.text = written.text;
    if (known != nullptr)
        result.code = session.codeOf(known.get());
    result.lost = lostOf(session, coord, written);
    return result;
}

} // namespace KelStd::catalogue
