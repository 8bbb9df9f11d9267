#include <cli/vector/gdal/GdalReference.h>

#include <cli/vector/gdal/GdalMessages.h>

#include <cpl_conv.h>

#include <array>
#include <cmath>
#include <cstring>

namespace KelStd::cli::vector {

namespace {

std::string textOr(const char *text)
{
    return text == nullptr ? std::string() : std::string(text);
}

/// What GDAL gives to be freed.
std::string taken(char *text)
{
    std::string copy = textOr(text);
    CPLFree(text);
    return copy;
}

std::string codeOf(const OGRSpatialReference &system)
{
    const char *const authority = system.GetAuthorityName(nullptr);
    const char *const code = system.GetAuthorityCode(nullptr);
    if (authority == nullptr || code == nullptr)
        return {};
    return std::string(authority) + ':' + code;
}

const char *nameOf(OGRAxisOrientation orientation)
{
    return OSRAxisEnumToName(orientation);
}

/// The two axes as they are stored: the first to the east and the second to the north, once GDAL
/// has turned those of systems that name the northing first. Around a pole both go north or south.
bool isEastThenNorth(const OGRSpatialReference &system, std::string &otherAxes)
{
    const std::vector<int> &mapping = system.GetDataAxisToSRSAxisMapping();
    std::array<OGRAxisOrientation, 2> orientations = {OAO_Other, OAO_Other};
    std::array<std::string, 2> names;
    for (std::size_t i = 0; i < 2; ++i) {
        const int axis = i < mapping.size() ? std::abs(mapping[i]) - 1 : static_cast<int>(i);
        names[i] = textOr(system.GetAxis(nullptr, axis, &orientations[i]));
        if (i < mapping.size() && mapping[i] < 0)
            orientations[i] = OAO_Other;
    }
    if (orientations[0] == OAO_East && orientations[1] == OAO_North)
        return true;
    const bool isPolar = orientations[0] == orientations[1]
                         && (orientations[0] == OAO_North || orientations[0] == OAO_South);
    const auto begins = [](const std::string &text, const char *word) {
        return text.compare(0, std::strlen(word), word) == 0;
    };
    if (isPolar && begins(names[0], "East") && begins(names[1], "North"))
        return true;
    otherAxes = names[0] + " to the " + nameOf(orientations[0]) + ", " + names[1] + " to the "
                + nameOf(orientations[1]);
    return false;
}

Reference::Kind kindOf(const OGRSpatialReference &system)
{
    // A derived one has longitudes and latitudes of its own, as about another pole.
    if (system.IsDerivedGeographic())
        return Reference::Kind::Other;
    if (system.IsProjected())
        return Reference::Kind::Projected;
    if (system.IsGeocentric())
        return Reference::Kind::Geocentric;
    if (system.IsGeographic())
        return Reference::Kind::Geographic;
    return Reference::Kind::Other;
}

std::string wktOf(const OGRSpatialReference &system)
{
    const char *const options[] = {"FORMAT=WKT2_2019", nullptr};
    char *definition = nullptr;
    system.exportToWkt(&definition, options);
    return taken(definition);
}

/// A datum with another prime meridian is called after the one with that of Greenwich:
/// "NGO 1948 (Oslo)".
void takeGreenwich(const OGRSpatialReference &system, Reference &facts)
{
    const char *meridian = nullptr;
    facts.primeMeridian = system.GetPrimeMeridian(&meridian);
    if (facts.primeMeridian == 0.0)
        return;
    std::string name = facts.datum;
    for (const std::string &ending :
         {'_' + textOr(meridian), " (" + textOr(meridian) + ')', "_(" + textOr(meridian) + ')'}) {
        const bool ends = name.size() > ending.size()
                          && name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
        if (ends)
            name.erase(name.size() - ending.size());
    }
    OGRSpatialReference same;
    same.SetGeogCS(name.c_str(), name.c_str(), facts.ellipsoid.c_str(), facts.semiMajor,
                   facts.inverseFlattening, "Greenwich", 0.0);
    facts.greenwichDatum = name;
    facts.greenwichDefinition = wktOf(same);
}

/// Unit and direction of the third axis, of a system of heights or of the positions' own.
void takeHeightAxis(const OGRSpatialReference &system, Reference &facts)
{
    constexpr int heightAxis = 2;
    if (system.IsGeocentric() || system.GetAxesCount() <= heightAxis)
        return;
    OGRAxisOrientation orientation = OAO_Other;
    double factor = 0.0;
    if (system.GetAxis(nullptr, heightAxis, &orientation, &factor) == nullptr)
        return;
    facts.countsDown = orientation == OAO_Down;
    facts.hasHeightUnit = factor > 0.0;
    if (facts.hasHeightUnit)
        facts.heightFactor = factor;
}

} // namespace

Reference factsOf(const OGRSpatialReference *given)
{
    Reference facts;
    if (given == nullptr || given->IsEmpty())
        return facts;
    const GdalMessages quiet;
    OGRSpatialReference system(*given);
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    facts.name = textOr(system.GetName());
    facts.code = codeOf(system);
    facts.definition = wktOf(system);

    takeHeightAxis(system, facts);
    if (system.IsCompound()) {
        facts.vertical = textOr(system.GetAttrValue("COMPD_CS|VERT_CS"));
        if (facts.vertical.empty())
            facts.vertical = "heights of their own";
        system.StripVertical();
        if (facts.code.empty())
            facts.code = codeOf(system);
        system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    } else if (system.GetAxesCount() == 3 && !system.IsGeocentric()) {
        system.DemoteTo2D(nullptr);
        system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    }
    facts.kind = kindOf(system);
    // What a GeoPackage says where it names no system, and GDAL where it was given none.
    if (facts.name.compare(0, 10, "Undefined ") == 0) {
        facts = Reference();
        return facts;
    }
    facts.datum = textOr(system.GetAttrValue("DATUM"));
    facts.ellipsoid = textOr(system.GetAttrValue("SPHEROID"));
    facts.semiMajor = system.GetSemiMajor();
    facts.inverseFlattening = system.GetInvFlattening();
    takeGreenwich(system, facts);
    const char *unit = nullptr;
    if (facts.kind == Reference::Kind::Geographic)
        facts.unitFactor = system.GetAngularUnits(&unit);
    else
        facts.unitFactor = system.GetLinearUnits(&unit);
    facts.unit = textOr(unit);
    if (facts.kind == Reference::Kind::Projected) {
        char *projection = nullptr;
        if (system.exportToProj4(&projection) == OGRERR_NONE)
            facts.projection = taken(projection);
        else
            CPLFree(projection);
    }
    std::array<double, 7> shift = {};
    if (system.GetTOWGS84(shift.data(), static_cast<int>(shift.size())) == OGRERR_NONE)
        facts.toWgs84.assign(shift.begin(), shift.end());
    const bool isOnGround =
        facts.kind == Reference::Kind::Projected || facts.kind == Reference::Kind::Geographic;
    if (isOnGround && !isEastThenNorth(system, facts.otherAxes))
        facts.kind = Reference::Kind::Other;
    facts.isLocal = system.IsLocal() && isEastThenNorth(system, facts.otherAxes);
    return facts;
}

bool readReference(const std::string &text, OGRSpatialReference &system, std::string &error)
{
    const GdalMessages messages;
    // A definition is neither a file nor an address.
    const char *const options[] = {"ALLOW_NETWORK_ACCESS=NO", "ALLOW_FILE_ACCESS=NO", nullptr};
    if (system.SetFromUserInput(text.c_str(), options) != OGRERR_NONE) {
        error = messages.text("it is no coordinate reference system");
        return false;
    }
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return true;
}

bool haveSameDatum(const std::string &one, const std::string &other)
{
    std::array<OGRSpatialReference, 2> systems;
    std::string error;
    if (!readReference(one, systems[0], error) || !readReference(other, systems[1], error))
        return false;
    const GdalMessages quiet;
    for (OGRSpatialReference &system : systems) {
        system.StripVertical();
        if (system.GetAxesCount() == 3 && !system.IsGeocentric())
            system.DemoteTo2D(nullptr);
    }
    const char *const options[] = {"CRITERION=EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS",
                                   "IGNORE_DATA_AXIS_TO_SRS_AXIS_MAPPING=YES",
                                   "IGNORE_COORDINATE_EPOCH=YES", nullptr};
    return systems[0].IsSameGeogCS(&systems[1], options) != 0;
}

} // namespace KelStd::cli::vector
