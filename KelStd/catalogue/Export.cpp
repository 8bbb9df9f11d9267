#include <KelStd/catalogue/Export.h>

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/DerivedSystem.h>
#include <KelStd/catalogue/OwnCheck.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/catalogue/RecordedShift.h>
#include <KelStd/catalogue/SitePipeline.h>
#include <KelStd/location/ChainDefinitions.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double sameSystem = 0.001; ///< [m]
constexpr int placesPerSide = 4;

/// The system without a part of its definition, as PROJ reads it.
ProjObject objectOf(const ProjSession &session, const Coord &coord, bool withShift)
{
    const ChainDefinitions definitions(&coord);
    std::vector<ProjStep> steps = stepsOf(definitions.localProjected.toUtf8());
    if (steps.size() != 1)
        return nullptr;
    ProjStep &step = steps.front();
    QByteArray text = "+proj=" + step.name;
    const bool hasGrid = step.has("nadgrids");
    for (const auto &parameter : step.parameters) {
        // A grid shifts in place of the numbers beside it.
        const bool isShift = parameter.first == "nadgrids" || parameter.first == "towgs84";
        const bool isEnu = parameter.first == "axis" && parameter.second == "enu";
        if (isEnu || (isShift && (!withShift || (hasGrid && parameter.first == "towgs84"))))
            continue;
        text += " +" + parameter.first;
        if (!parameter.second.isEmpty())
            text += "=" + parameter.second;
    }
    return session.fromText(text + " +no_defs +type=crs");
}

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

QByteArray authorityOf(const QString &code)
{
    return code.left(std::max(0, code.indexOf(QLatin1Char(':')))).toUtf8();
}

QByteArray numberOf(const QString &code)
{
    return code.mid(code.indexOf(QLatin1Char(':')) + 1).toUtf8();
}

/// The database's projected system of a code, where `coord` is that system; else null.
ProjObject verified(const ProjSession &session, const Coord &coord, const QString &code)
{
    ProjObject object = session.fromDatabase(authorityOf(code), numberOf(code));
    if (object != nullptr && session.typeOf(object.get()) == PJ_TYPE_COMPOUND_CRS)
        object.reset(session.functions().proj_crs_get_sub_crs(session.context(), object.get(), 0));
    // PROJ reads some methods otherwise than they are published: their texts would be misread.
    if (object == nullptr || session.typeOf(object.get()) != PJ_TYPE_PROJECTED_CRS
        || missingTurn(session, object.get()) != 0.0)
        return nullptr;
    const ProjObject geodetic = session.geodeticOf(object.get());
    if (geodetic == nullptr)
        return nullptr;
    const CarriedShift shift =
        recordedShift(session, coord, primeMeridianOf(session, geodetic.get()));
    SystemArea area = session.areaOf(object.get());
    const OwnCheck check =
        ownCheck(session, coord, withFullRotation(shift.steps),
                 projectionSteps(session, object.get()), placesIn(area, placesPerSide));
    const bool isSame =
        check.isReady && check.compared > 0 && check.missing == 0 && check.difference <= sameSystem;
    return isSame ? std::move(object) : nullptr;
}

bool isWgs84(const ProjSession &session, const PJ *projected)
{
    const ProjObject geodetic = session.geodeticOf(projected);
    return geodetic != nullptr && session.codeOf(geodetic.get()) == QLatin1String("EPSG:4326");
}

/// The system with its datum shift, by the database's words where it is verified.
ProjObject boundObject(const ProjSession &session, const Coord &coord, const PJ *known)
{
    ProjObject bound = objectOf(session, coord, true);
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
    return fromJson(session, json);
}

bool isSet(const Coord &coord)
{
    return coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Three
           || coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Seven
           || coord.ellipsoid.proj4EllpsName.contains(QLatin1String("nadgrids"));
}

/// The system whose plane is that of its site.
ProjObject siteObject(const ProjSession &session, const Coord &coord,
                      const calibration::SiteTransform &site)
{
    const ProjObject bound = boundObject(session, coord, nullptr);
    if (bound == nullptr)
        return nullptr;
    const QString name = coord.coord_name.isEmpty() ? QStringLiteral("site") : coord.coord_name;
    return fromJson(session, derivedSystem(jsonOf(session, bound.get()), name, site.plane()));
}

/// What a pipeline of the site does not say.
QStringList lostOfPipeline(const Coord &coord, const QByteArray &pipeline)
{
    QStringList lost{QStringLiteral("The name of the system.")};
    if (!coord.geoidModel.modelFileName.isEmpty())
        lost += QStringLiteral("Positions for which the geoid model \"%1\" has no value.")
                    .arg(coord.geoidModel.modelFileName);
    if (pipeline.contains("+grids="))
        lost += QStringLiteral("The files of grids: the text names them by their paths here.");
    return lost;
}

QStringList lostOf(const ProjSession &session, const Coord &coord, ExportForm form, const PJ *known)
{
    QStringList lost;
    if (!coord.geoidModel.modelFileName.isEmpty())
        lost += QStringLiteral("The geoid model \"%1\": heights of the text are ellipsoidal.")
                    .arg(coord.geoidModel.modelFileName);
    if (coord.planeTransform.fuction != PlaneTransformFunction_None && form == ExportForm::Esri)
        lost += QStringLiteral("The plane transformation.");
    if (coord.elevationFitting.function != ElevationFittingFunction_None)
        lost += QStringLiteral("The height fitting.");
    if (form == ExportForm::Esri && isSet(coord))
        lost += QStringLiteral("The datum shift: the form has none, and who reads the text takes "
                               "one of his own.");
    if (form == ExportForm::Proj)
        lost += QStringLiteral("The name of the system.");
    if (coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Seven
        && form != ExportForm::Esri)
        lost += QStringLiteral("The full rotation matrix: readers apply the seven parameters "
                               "linearly.");
    const std::vector<Axis> axes = known == nullptr ? std::vector<Axis>() : session.axesOf(known);
    if (!axes.empty() && axes.front().factor != 1.0)
        lost += QStringLiteral("Metres: northing and easting of the text count in the unit \"%1\".")
                    .arg(axes.front().unit);
    return lost;
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

} // namespace

std::optional<ExportedSystem> exported(const ProjSession &session, const Coord &coord,
                                       ExportForm form, const QString &code,
                                       CatalogueFailure *failure)
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
        const auto pipeline = sitePipeline(session, coord, *site, reason);
        if (!pipeline)
            return refuse(reason);
        result.text = QString::fromUtf8(*pipeline);
        result.lost = lostOfPipeline(coord, *pipeline);
        return result;
    }
    const bool isDerived = site->hasPlane() && form != ExportForm::Esri;
    const ProjObject known = isDerived ? nullptr : verified(session, coord, code);
    ProjObject object;
    if (isDerived) {
        object = siteObject(session, coord, *site);
        if (object == nullptr)
            return refuse(QStringLiteral("PROJ cannot write the system in this form"));
    } else if (form == ExportForm::Esri) {
        if (known == nullptr && isSet(coord))
            return refuse(QStringLiteral("an ESRI text has no datum shift, and the system has one "
                                         "and is not known to be one of the database; WKT 2 "
                                         "carries it"));
        if (known == nullptr)
            object = objectOf(session, coord, false);
    } else if (form == ExportForm::Proj) {
        object = objectOf(session, coord, true);
    } else if (known == nullptr || isSet(coord) || !isWgs84(session, known.get())) {
        object = boundObject(session, coord, known.get());
        if (object == nullptr)
            return refuse(QStringLiteral("PROJ cannot write the system in this form"));
    }
    const PJ *const written = object != nullptr ? object.get() : known.get();
    result.text = written == nullptr ? QString() : textOf(session, written, form);
    if (result.text.isEmpty())
        return refuse(QStringLiteral("PROJ cannot write the system in this form"));
    if (known != nullptr)
        result.code = session.codeOf(known.get());
    const bool isOfDatabase = known != nullptr && form != ExportForm::Proj;
    result.lost = lostOf(session, coord, form, isOfDatabase ? known.get() : nullptr);
    return result;
}

} // namespace KelStd::catalogue
