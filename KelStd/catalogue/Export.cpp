#include <KelStd/catalogue/Export.h>

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/DerivedSystem.h>
#include <KelStd/catalogue/MethodDifference.h>
#include <KelStd/catalogue/OwnCheck.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/ProjectionRecords.h>
#include <KelStd/catalogue/RecordedShift.h>
#include <KelStd/catalogue/SitePipeline.h>
#include <KelStd/location/ChainDefinitions.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <cmath>
#include <utility>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

constexpr double sameSystem = 0.001; ///< [m]
constexpr int placesPerSide = 4;

using PlaneUnit = std::optional<SystemOrigin::PlaneUnit>;

/// Whether a definition counts in metres.
bool isMetre(const std::pair<QByteArray, QByteArray> &parameter)
{
    return parameter.first == "units" && parameter.second == "m";
}

/// The system without a part of its definition, as PROJ reads it. What is defined in metres counts
/// in `unit`, where there is one.
ProjObject objectOf(const ProjSession &session, const Coord &coord, const PlaneUnit &unit,
                    bool withShift)
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
        if (unit && isMetre(parameter)) {
            constexpr int digits = 15; // PROJ knows its units by them, as "us-ft"
            text += " +to_meter=" + QByteArray::number(unit->metres, 'g', digits);
            continue;
        }
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
    const auto colon = code.indexOf(QLatin1Char(':'));
    return colon < 0 ? QByteArray() : code.left(colon).toUtf8();
}

QByteArray numberOf(const QString &code)
{
    return code.mid(code.indexOf(QLatin1Char(':')) + 1).toUtf8();
}

/// Places all over the area of a system of the database.
std::vector<GroundPoint> placesOf(const ProjSession &session, const PJ *known)
{
    return placesIn(session.areaOf(known), placesPerSide);
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
    const CarriedShift shift = recordedShift(coord, primeMeridianOf(session, geodetic.get()));
    const OwnCheck check =
        ownCheck(session, coord, withFullRotation(shift.steps),
                 projectionSteps(session, object.get()), placesOf(session, object.get()));
    const bool isSame =
        check.isReady && check.compared > 0 && check.missing == 0 && check.difference <= sameSystem;
    return isSame ? std::move(object) : nullptr;
}

bool isWgs84(const ProjSession &session, const PJ *projected)
{
    const ProjObject geodetic = session.geodeticOf(projected);
    return geodetic != nullptr && session.codeOf(geodetic.get()) == QLatin1String("EPSG:4326");
}

/// The database's operation from a geodetic system to WGS 84 with this code; null for one that
/// leads the other way.
ProjObject operationOf(const ProjSession &session, const PJ *geodetic, const QString &code)
{
    const proj::ProjFunctions &proj = session.functions();
    ProjObject operation(proj.proj_create_from_database(
        session.context(), authorityOf(code).constData(), numberOf(code).constData(),
        PJ_CATEGORY_COORDINATE_OPERATION, 0, nullptr));
    if (operation == nullptr || session.typeOf(operation.get()) != PJ_TYPE_TRANSFORMATION)
        return nullptr; // also for a chain of several
    const ProjObject from(proj.proj_get_source_crs(session.context(), operation.get()));
    const ProjObject to(proj.proj_get_target_crs(session.context(), operation.get()));
    // The name is the same with two and with three dimensions.
    const bool leadsThere = from != nullptr && to != nullptr
                            && session.nameOf(from.get()) == session.nameOf(geodetic)
                            && session.codeOf(to.get()) == QLatin1String("EPSG:4326");
    return leadsThere ? std::move(operation) : nullptr;
}

/// But for what is lost when a definition is written.
bool areSame(const Similarity &a, const Similarity &b)
{
    constexpr double tolerance = 1e-9; // [m], ["], [ppm]
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (std::abs(a.translation[axis] - b.translation[axis]) > tolerance
            || std::abs(a.rotation[axis] - b.rotation[axis]) > tolerance)
            return false;
    }
    return std::abs(a.scale - b.scale) <= tolerance;
}

/// The database's operation about a point of rotation that the seven parameters of a system were
/// fitted to; null where they are published ones, or of another origin.
ProjObject fittedOperation(ProjSession &session, ShiftMemory &memory, const Coord &coord,
                           const PJ *known)
{
    const ProjObject geodetic = session.geodeticOf(known);
    if (geodetic == nullptr || coord.ellipsoidTransform.fuction != EllipsoinTransformFunction_Seven)
        return nullptr;
    const std::vector<ShiftCandidate> candidates =
        shiftCandidates(session, memory, geodetic.get(), session.areaOf(known), std::nullopt);
    const Similarity stored = recordedShift(coord, 0.0).similarity;
    const bool isPublished = std::any_of(
        candidates.cbegin(), candidates.cend(), [&stored](const ShiftCandidate &candidate) {
            return candidate.carried && candidate.carried->isPublished
                   && areSame(candidate.carried->similarity, stored);
        });
    if (isPublished)
        return nullptr;
    const std::vector<ProjStep> projection = projectionSteps(session, known);
    const std::vector<GroundPoint> places = placesOf(session, known);
    ProjObject best;
    double difference = sameSystem;
    for (const ShiftCandidate &candidate : candidates) {
        if (!candidate.carried || candidate.carried->kind != ShiftKind::Seven
            || candidate.row.code.isEmpty())
            continue;
        const OwnCheck check =
            ownCheck(session, coord, candidate.carried->steps, projection, places, WayBack::OfWay);
        if (!check.isReady || check.compared == 0 || check.difference >= difference)
            continue;
        best = candidate.carried->isPublished
                   ? nullptr
                   : operationOf(session, geodetic.get(), candidate.row.code);
        difference = check.difference;
    }
    return best;
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
ProjObject boundObject(const ProjSession &session, const Coord &coord, const PlaneUnit &unit,
                       const PJ *known, const PJ *operation)
{
    ProjObject bound = objectOf(session, coord, unit, true);
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

bool isSet(const Coord &coord)
{
    return coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Three
           || coord.ellipsoidTransform.fuction == EllipsoinTransformFunction_Seven
           || coord.ellipsoid.proj4EllpsName.contains(QLatin1String("nadgrids"));
}

/// The system whose plane is that of its site, in metres, which the records of a site are in.
ProjObject siteObject(const ProjSession &session, const Coord &coord,
                      const calibration::SiteTransform &site)
{
    const ProjObject bound = boundObject(session, coord, PlaneUnit(), nullptr, nullptr);
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

/// How far a reader is from the system who applies its seven parameters linearly, in words.
QString linearText(const ProjSession &session, const Coord &coord, const PJ *known)
{
    const ProjObject geodetic = known == nullptr ? nullptr : session.geodeticOf(known);
    if (geodetic == nullptr)
        return {};
    const CarriedShift shift = recordedShift(coord, primeMeridianOf(session, geodetic.get()));
    const OwnCheck check = ownCheck(session, coord, shift.steps, projectionSteps(session, known),
                                    placesOf(session, known));
    return check.isReady ? QStringLiteral(", which moves positions by up to %1 m")
                               .arg(check.difference, 0, 'f', 4)
                         : QString();
}

/// What to say of the unit of northing and easting. `inDatabase` is that of a text by the
/// database's words.
QStringList lostUnit(const Coord &coord, const PlaneUnit &unit, const Axis *inDatabase)
{
    constexpr double tolerance = 1e-9;
    const bool isTaken = coord.projection.loc_or_height_unit == Unit_Meter;
    const double own = unit ? unit->metres : 1.0;
    const double written = inDatabase != nullptr ? inDatabase->factor : isTaken ? own : 1.0;
    if (std::abs(written / own - 1.0) <= tolerance)
        return {};
    if (inDatabase != nullptr && !unit) {
        return {QStringLiteral("Metres: northing and easting of the text count in the unit \"%1\".")
                    .arg(inDatabase->unit)};
    }
    return {QStringLiteral("The unit \"%1\" of northing and easting: the text counts in another.")
                .arg(unit ? unit->name : QString())};
}

/// `isByOperation` says that the text has a published operation instead of the parameters.
QStringList lostOf(const ProjSession &session, const Coord &coord, ExportForm form, const PJ *known,
                   bool isByOperation, const PlaneUnit &unit)
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
        && form != ExportForm::Esri && !isByOperation)
        lost += QStringLiteral("The full rotation matrix: readers apply the seven parameters "
                               "linearly%1.")
                    .arg(linearText(session, coord, known));
    const std::vector<Axis> axes = known == nullptr ? std::vector<Axis>() : session.axesOf(known);
    const bool isByDatabase = form != ExportForm::Proj && !axes.empty();
    lost += lostUnit(coord, unit, isByDatabase ? &axes.front() : nullptr);
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
    ProjObject operation;
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
            object = objectOf(session, coord, planeUnit, false);
    } else if (form == ExportForm::Proj) {
        object = objectOf(session, coord, planeUnit, true);
    } else if (known == nullptr || isSet(coord) || !isWgs84(session, known.get())) {
        operation =
            known == nullptr ? nullptr : fittedOperation(session, memory, coord, known.get());
        object = boundObject(session, coord, planeUnit, known.get(), operation.get());
        if (object == nullptr)
            return refuse(QStringLiteral("PROJ cannot write the system in this form"));
    }
    const PJ *const written = object != nullptr ? object.get() : known.get();
    result.text = written == nullptr ? QString() : textOf(session, written, form);
    if (result.text.isEmpty())
        return refuse(QStringLiteral("PROJ cannot write the system in this form"));
    if (known != nullptr)
        result.code = session.codeOf(known.get());
    result.lost = lostOf(session, coord, form, known.get(), operation != nullptr, planeUnit);
    return result;
}

} // namespace KelStd::catalogue
