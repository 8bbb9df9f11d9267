#include <KelStd/catalogue/SourceSystem.h>

#include <KelStd/catalogue/SourceText.h>
#include <KelStd/catalogue/SourceUnits.h>
#include <KelStd/catalogue/WktParameters.h>
#include <KelStd/catalogue/WktSource.h>

#include <algorithm>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;
using Kind = CatalogueFailureKind;

bool fail(CatalogueFailure *failure, Kind kind, const QString &text)
{
    if (failure != nullptr)
        *failure = {kind, text};
    return false;
}

ProjObject readText(const ProjSession &session, const SourceText &source, CatalogueFailure *failure)
{
    QByteArray text = source.text;
    if (source.form == SourceForm::ProjString && !text.contains("type=crs"))
        text += " +type=crs";
    ProjObject object = session.fromText(text);
    if (object == nullptr)
        fail(failure, Kind::NotUnderstood,
             source.form == SourceForm::ProjJson
                 ? QStringLiteral("the text is no PROJJSON of a coordinate system")
                 : QStringLiteral("PROJ does not understand the PROJ string"));
    return object;
}

ProjObject readCode(const ProjSession &session, QByteArray text, const CatalogueWords &words,
                    CatalogueFailure *failure)
{
    if (!text.contains(':'))
        text.prepend("EPSG:");
    const QByteArray authority = text.left(text.indexOf(':')).toUpper();
    text = authority + text.mid(authority.size());
    ProjObject object = session.fromText(text);
    if (object == nullptr)
        fail(failure, Kind::NotUnderstood,
             QStringLiteral("PROJ's database has no coordinate system %1; %2 finds "
                            "systems by words")
                 .arg(QString::fromUtf8(text.left(80)), words.search));
    return object;
}

QString listed(const std::vector<FoundSystem> &systems)
{
    constexpr std::size_t most = 5;
    QStringList texts;
    for (std::size_t index = 0; index < std::min(most, systems.size()); ++index)
        texts += systems[index].code + QLatin1String(" (") + systems[index].name + QLatin1Char(')');
    if (systems.size() > most)
        texts += QStringLiteral("%1 more").arg(systems.size() - most);
    return texts.join(QLatin1String(", "));
}

ProjObject readName(const ProjSession &session, SystemList &list, const QString &name,
                    const CatalogueWords &words, CatalogueFailure *failure)
{
    list.read(session);
    std::vector<FoundSystem> found = list.named(name);
    const bool isOfWords = !name.contains(QLatin1Char(':')) && !name.endsWith(QLatin1Char('+'));
    if (found.empty() && !isOfWords) {
        fail(failure, Kind::NotUnderstood,
             QStringLiteral("\"%1\" is neither a code, as EPSG:28992 and EPSG:28992+5773, nor the "
                            "name of a coordinate system")
                 .arg(name));
        return nullptr;
    }
    if (found.empty()) {
        SystemQuery query;
        query.words = name;
        found = list.search(query);
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [](const FoundSystem &system) {
                                       return system.kind != SystemKind::Projected
                                              && system.kind != SystemKind::Compound;
                                   }),
                    found.end());
        if (found.size() != 1) {
            fail(failure, Kind::NotUnderstood,
                 found.empty() ? QStringLiteral("no coordinate system has the name \"%1\" or "
                                                "these words")
                                     .arg(name)
                               : QStringLiteral("\"%1\" is the name of no coordinate system, and "
                                                "its words are those of several: %2")
                                     .arg(name, listed(found)));
            return nullptr;
        }
    }
    return readCode(session, found.front().code.toUtf8(), words, failure);
}

/// A definition's own shift to WGS 84; false where it has one that cannot be taken.
bool takeTextShift(const ProjSession &session, const PJ *bound, SourceSystem &result,
                   CatalogueFailure *failure)
{
    const proj::ProjFunctions &proj = session.functions();
    const ProjObject operation(proj.proj_crs_get_coordoperation(session.context(), bound));
    if (operation == nullptr)
        return true;
    const ProjObject hub(proj.proj_get_target_crs(session.context(), bound));
    double values[7] = {};
    if (proj.proj_coordoperation_get_grid_used_count(session.context(), operation.get()) > 0)
        return fail(failure, Kind::NotUnderstood,
                    QStringLiteral("the definition leads to a grid file of its own choice; import "
                                   "the system by its code, which finds the grid"));
    const bool leadsToWgs84 =
        hub != nullptr && session.nameOf(hub.get()).startsWith(QLatin1String("WGS 84"))
        && !session.methodOf(operation.get()).startsWith(QLatin1String("Inverse of"));
    if (leadsToWgs84
        && session.methodOf(operation.get()).startsWith(QLatin1String("Molodensky-Badekas")))
        result.textOperation = carriedShift(session.pipelineOf(operation.get()));
    if (result.textOperation)
        return true;
    if (!leadsToWgs84
        || proj.proj_coordoperation_get_towgs84_values(session.context(), operation.get(), values,
                                                       7, 0)
               == 0)
        return fail(failure, Kind::NotUnderstood,
                    QStringLiteral("the definition's own datum shift \"%1\" is none that can be "
                                   "taken over")
                        .arg(session.nameOf(operation.get())));
    Similarity shift;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        shift.translation[axis] = values[axis];
        shift.rotation[axis] = values[axis + 3];
    }
    shift.scale = values[6];
    result.textShift = shift;
    return true;
}

QString kindOfObject(PJ_TYPE type)
{
    switch (static_cast<int>(type)) {
    case PJ_TYPE_GEOGRAPHIC_2D_CRS:
    case PJ_TYPE_GEOGRAPHIC_3D_CRS: return QStringLiteral("geographic");
    case PJ_TYPE_GEOCENTRIC_CRS: return QStringLiteral("geocentric");
    case PJ_TYPE_VERTICAL_CRS: return QStringLiteral("vertical");
    case PJ_TYPE_ENGINEERING_CRS: return QStringLiteral("engineering");
    default: return {};
    }
}

/// Takes compound and bound systems apart until the projected one is found.
bool takeApart(const ProjSession &session, ProjObject object, SourceSystem &result,
               const CatalogueWords &words, CatalogueFailure *failure)
{
    const proj::ProjFunctions &proj = session.functions();
    constexpr int maxLayers = 4;
    for (int layer = 0; layer < maxLayers && object != nullptr; ++layer) {
        const PJ_TYPE type = session.typeOf(object.get());
        if (type == PJ_TYPE_PROJECTED_CRS) {
            result.geodetic = session.geodeticOf(object.get());
            result.projected = std::move(object);
            return result.geodetic != nullptr
                   || fail(failure, Kind::NotUnderstood,
                           QStringLiteral("the system has no geographic system below it"));
        }
        if (type == PJ_TYPE_COMPOUND_CRS) {
            result.vertical.reset(proj.proj_crs_get_sub_crs(session.context(), object.get(), 1));
            result.system.kind = SystemKind::Compound;
            object.reset(proj.proj_crs_get_sub_crs(session.context(), object.get(), 0));
        } else if (type == PJ_TYPE_BOUND_CRS) {
            if (!takeTextShift(session, object.get(), result, failure))
                return false;
            object.reset(proj.proj_get_source_crs(session.context(), object.get()));
        } else {
            const QString kind = kindOfObject(type);
            return kind.isEmpty()
                       ? fail(failure, Kind::NotUnderstood,
                              QStringLiteral("the source is no coordinate system that can be "
                                             "imported"))
                       : fail(failure, Kind::NotProjected,
                              QStringLiteral("%1 is a %2 system; choose a projected one that lies "
                                             "on it; %3 finds them")
                                  .arg(session.nameOf(object.get()), kind, words.search));
        }
    }
    return fail(failure, Kind::NotUnderstood,
                QStringLiteral("the system is nested in a way that is not known here"));
}

bool isSame(const ProjSession &session, const PJ *a, const PJ *b)
{
    return session.functions().proj_is_equivalent_to_with_ctx(
               session.context(), a, b, PJ_COMP_EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS)
           != 0;
}

struct Identified
{
    ProjObject surely; ///< the database's system that it is
    ProjObject likely; ///< one with the same numbers, whose datum the text does not name
};

/// The systems of the database that a text's one may be, by PROJ's identification; surely only
/// after a comparison of what they say.
Identified identified(const ProjSession &session, const PJ *object)
{
    const proj::ProjFunctions &proj = session.functions();
    int *confidences = nullptr;
    const ObjectList list(
        proj.proj_identify(session.context(), object, nullptr, nullptr, &confidences));
    Identified result;
    constexpr int surely = 90; // by PROJ's own measure: equal but for the name
    const int count = confidences == nullptr ? 0 : session.countOf(list);
    for (int index = 0; index < count && result.surely == nullptr; ++index) {
        ProjObject candidate = session.elementOf(list, index);
        if (candidate == nullptr)
            continue;
        if (confidences[index] >= surely && isSame(session, candidate.get(), object))
            result.surely = std::move(candidate);
        else if (result.likely == nullptr)
            result.likely = std::move(candidate);
    }
    if (confidences != nullptr)
        proj.proj_int_list_destroy(confidences);
    return result;
}

/// What a text says of itself is held against the database.
void identify(const ProjSession &session, SourceSystem &result)
{
    FoundSystem &system = result.system;
    const QString claimed = session.codeOf(result.projected.get());
    const Identified found = identified(session, result.projected.get());
    const ProjObject &known = found.surely;
    system.code = known == nullptr ? QString() : session.codeOf(known.get());
    if (!claimed.isEmpty() && claimed != system.code)
        result.warnings += QStringLiteral("The definition calls itself %1, but says something "
                                          "else; its own numbers are taken.")
                               .arg(claimed);
    system.area = session.areaOf(result.projected.get());
    if (known != nullptr && !system.area.isKnown)
        system.area = session.areaOf(known.get());
    // The datum shifts of the database hang on its own geographic system.
    if (session.codeOf(result.geodetic.get()).isEmpty()) {
        if (ProjObject base = identified(session, result.geodetic.get()).surely)
            result.geodetic = std::move(base);
        else if (result.textShift && found.likely != nullptr)
            result.likelyGeodetic = session.geodeticOf(found.likely.get());
    }
}

} // namespace

std::optional<SourceSystem> sourceSystem(ProjSession &session, SystemList &list,
                                         const QByteArray &source, const CatalogueWords &words,
                                         CatalogueFailure *failure)
{
    const auto text = sourceText(source, failure);
    if (!text)
        return std::nullopt;
    ProjObject object;
    bool isOfDatabase = true;
    switch (text->form) {
    case SourceForm::Code: object = readCode(session, text->text, words, failure); break;
    case SourceForm::Name:
        object = readName(session, list, QString::fromUtf8(text->text), words, failure);
        break;
    case SourceForm::Wkt:
        isOfDatabase = false;
        object = readWkt(session, text->text, failure);
        break;
    case SourceForm::Urn: object = readText(session, *text, failure); break;
    case SourceForm::ProjJson:
    case SourceForm::ProjString:
        isOfDatabase = false;
        object = readText(session, *text, failure);
        break;
    }
    if (object == nullptr)
        return std::nullopt;
    QByteArray wkt; // of a definition that names parameters
    if (text->form == SourceForm::Wkt)
        wkt = withWholeAngles(text->text);
    else if (text->form == SourceForm::ProjJson)
        wkt = wktOf(session, object.get());
    SourceSystem result;
    result.source = text->label;
    result.system.kind = SystemKind::Projected;
    result.system.name = session.nameOf(object.get());
    result.system.code = session.codeOf(object.get());
    result.system.area = session.areaOf(object.get());
    result.system.isDeprecated = session.functions().proj_is_deprecated(object.get()) != 0;
    if (!takeApart(session, std::move(object), result, words, failure))
        return std::nullopt;
    result.isText = !isOfDatabase;
    result.verticalShift = verticalShiftOf(wkt);
    if (!isOfDatabase) {
        QString doubt = doubtOnUnits(session, result.projected.get(), result.geodetic.get());
        if (doubt.isEmpty())
            doubt = doubtOnParameters(session, wkt);
        if (!doubt.isEmpty()) {
            fail(failure, Kind::NotUnderstood, doubt);
            return std::nullopt;
        }
        identify(session, result);
    } else if (!result.system.area.isKnown) {
        result.system.area = session.areaOf(result.projected.get());
    }
    if (text->form == SourceForm::Code && result.system.code.isEmpty())
        result.system.code = QString::fromUtf8(text->text);
    if (result.system.isDeprecated)
        result.warnings += QStringLiteral("%1 is deprecated.").arg(result.system.code);
    return result;
}

} // namespace KelStd::catalogue
