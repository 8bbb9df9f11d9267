#include <cli/vector/gdal/GdalSource.h>

#include <cli/vector/gdal/DxfAttributes.h>
#include <cli/vector/gdal/GdalMessages.h>
#include <cli/vector/gdal/GdalReference.h>

#include <gdal.h>
#include <ogr_api.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <set>
#include <type_traits>

namespace KelStd::cli::vector {

namespace {

struct DatasetCloser
{
    void operator()(GDALDatasetH dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<std::remove_pointer_t<GDALDatasetH>, DatasetCloser>;

struct FeatureDestroyer
{
    void operator()(OGRFeatureH feature) const { OGR_F_Destroy(feature); }
};
using OwnedFeature = std::unique_ptr<std::remove_pointer_t<OGRFeatureH>, FeatureDestroyer>;

/// Fields that a driver adds to every feature, whatever the file says.
struct MadeUpField
{
    const char *driver;
    const char *field;
};

constexpr char altitudeMode[] = "altitudeMode"; ///< of KML, what a height is above

constexpr MadeUpField madeUpFields[] = {
    {"LIBKML", "tessellate"}, {"LIBKML", "extrude"},    {"LIBKML", "visibility"},
    {"LIBKML", "drawOrder"},  {"DXF", "PaperSpace"},    {"DXF", "SubClasses"},
    {"GPX", "ele"},           {"DXF", "EntityHandle"},  {"DXF", "Linetype"},
    {"DXF", "RawCodeValues"}, {"LIBKML", altitudeMode},
};

bool isMadeUp(const std::string &driver, const std::string &field)
{
    for (const MadeUpField &row : madeUpFields) {
        if (driver == row.driver && field == row.field)
            return true;
    }
    return false;
}

/// Drivers whose layers have all the fields that the format knows, used or not.
bool hasUnusedFields(const std::string &driver)
{
    return driver == "LIBKML" || driver == "GPX" || driver == "DXF";
}

FieldType typeOf(OGRFieldType type)
{
    switch (type) {
    case OFTInteger:
    case OFTInteger64: return FieldType::Integer;
    case OFTReal: return FieldType::Real;
    default: return FieldType::Text;
    }
}

bool isTime(OGRFieldType type)
{
    return type == OFTDate || type == OFTTime || type == OFTDateTime;
}

constexpr int secondUnits = 100000;    ///< parts of a second that a time can tell
constexpr std::size_t minFraction = 4; ///< a point and milliseconds

/// As ISO 8601 has it: "2024-05-01T10:20:30.5Z". The zone is written where the field has one.
std::string timeText(OGRFeatureH feature, int field, OGRFieldType type)
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    float second = 0.0F;
    int zone = 0;
    if (OGR_F_GetFieldAsDateTimeEx(feature, field, &year, &month, &day, &hour, &minute, &second,
                                   &zone)
        == 0)
        return OGR_F_GetFieldAsString(feature, field);
    std::array<char, 64> text = {};
    std::string result;
    if (type != OFTTime) {
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", year, month, day);
        result = text.data();
    }
    if (type == OFTDate)
        return result;
    // As many digits as the number has; a second just before the minute's end stays in it.
    constexpr int minuteUnits = 60 * secondUnits;
    int units = static_cast<int>(std::lround(static_cast<double>(second) * secondUnits));
    const bool mayBeLeapSecond = hour == 23 && minute == 59 && second >= 60.0F;
    if (units >= minuteUnits && !mayBeLeapSecond)
        units = minuteUnits - 1;
    std::snprintf(text.data(), text.size(), "%s%02d:%02d:%02d", result.empty() ? "" : "T", hour,
                  minute, units / secondUnits);
    result += text.data();
    if (units % secondUnits != 0) {
        std::snprintf(text.data(), text.size(), ".%05d", units % secondUnits);
        std::string fraction = text.data();
        fraction.erase(fraction.find_last_not_of('0') + 1);
        fraction.append(fraction.size() < minFraction ? minFraction - fraction.size() : 0, '0');
        result += fraction;
    }
    constexpr int local = 1; // below it the zone is not known either
    constexpr int utc = 100; // others count quarters of an hour from it
    if (zone == utc) {
        result += 'Z';
    } else if (zone > local) {
        const int minutes = std::abs(zone - utc) * 15;
        std::snprintf(text.data(), text.size(), "%c%02d:%02d", zone < utc ? '-' : '+', minutes / 60,
                      minutes % 60);
        result += text.data();
    }
    return result;
}

Value valueOf(OGRFeatureH feature, int field)
{
    if (OGR_F_IsFieldSetAndNotNull(feature, field) == 0)
        return {};
    const OGRFieldType type = OGR_Fld_GetType(OGR_F_GetFieldDefnRef(feature, field));
    if (isTime(type))
        return timeText(feature, field, type);
    switch (typeOf(type)) {
    case FieldType::Integer:
        return static_cast<long long>(OGR_F_GetFieldAsInteger64(feature, field));
    case FieldType::Real: return OGR_F_GetFieldAsDouble(feature, field);
    case FieldType::Text: break;
    }
    return std::string(OGR_F_GetFieldAsString(feature, field));
}

/// The one point of a geometry; null with the reason when it is something else.
OGRGeometryH pointOf(OGRGeometryH geometry, std::string &failure)
{
    if (geometry == nullptr) {
        failure = "it has no geometry";
        return nullptr;
    }
    if (OGR_G_IsEmpty(geometry) != 0) {
        failure = "its geometry is empty";
        return nullptr;
    }
    const OGRwkbGeometryType type = OGR_GT_Flatten(OGR_G_GetGeometryType(geometry));
    if (type == wkbPoint)
        return geometry;
    const bool isCollection = type == wkbMultiPoint || type == wkbGeometryCollection;
    const int parts = isCollection ? OGR_G_GetGeometryCount(geometry) : 0;
    if (parts == 1)
        return pointOf(OGR_G_GetGeometryRef(geometry, 0), failure);
    if (type == wkbMultiPoint)
        failure = "it is " + std::to_string(parts) + " points";
    else
        failure = std::string("it is no point but a ") + OGRGeometryTypeToName(type);
    return nullptr;
}

class Reader : public LayerReader
{
public:
    Reader(OGRLayerH layer, const std::string &driver, Layer facts)
        : m_layer(layer), m_driver(driver), m_facts(std::move(facts))
    {
        m_textField = driver == "DXF" ? fieldOf("Text") : -1;
        m_altitudeField = driver == "LIBKML" ? fieldOf(altitudeMode) : -1;
        m_extendedField = driver == "DXF" ? fieldOf("RawCodeValues") : -1;
        takeFields();
        OGR_L_ResetReading(m_layer);
    }

    const Layer &layer() const override { return m_facts; }

    Result next(Feature &feature) override
    {
        const GdalMessages messages;
        const OwnedFeature read(OGR_L_GetNextFeature(m_layer));
        if (read == nullptr) {
            if (!messages.hasError())
                return Result::End;
            m_error = messages.text("");
            return Result::Error;
        }
        if (isLabel(read.get()))
            return Result::None;
        feature.id = OGR_F_GetFID(read.get());
        feature.failure.clear();
        feature.values.clear();
        for (const int field : m_fields)
            feature.values.push_back(valueOf(read.get(), field));
        appendAttributes(read.get(), feature.values);
        const OGRGeometryH point = pointOf(OGR_F_GetGeometryRef(read.get()), feature.failure);
        if (point == nullptr)
            return Result::Feature;
        feature.x = OGR_G_GetX(point, 0);
        feature.y = OGR_G_GetY(point, 0);
        feature.hasZ = OGR_G_Is3D(point) != 0;
        feature.z = feature.hasZ ? OGR_G_GetZ(point, 0) : 0.0;
        if (feature.hasZ && std::isnan(feature.z)) {
            feature.hasZ = false;
            feature.z = 0.0;
        }
        if (!std::isfinite(feature.x) || !std::isfinite(feature.y) || !std::isfinite(feature.z))
            feature.failure = "its position is not finite";
        if (m_altitudeField >= 0)
            applyAltitudeMode(read.get(), feature);
        return Result::Feature;
    }

    std::string errorText() const override { return m_error; }

private:
    int fieldOf(const char *name) const
    {
        return OGR_FD_GetFieldIndex(OGR_L_GetLayerDefn(m_layer), name);
    }

    /// Heights above the ground are none of a survey; on the ground there is none. KML puts points
    /// there that say nothing, and those of a survey say nothing: then only 0 is no height.
    void applyAltitudeMode(OGRFeatureH read, Feature &feature) const
    {
        const std::string mode = OGR_F_GetFieldAsString(read, m_altitudeField);
        if (mode.compare(0, 8, "relative") == 0)
            feature.failure = "its height is one above the ground (" + mode + ")";
        else if (mode.compare(0, 5, "clamp") == 0 || (mode.empty() && feature.z == 0.0))
            feature.hasZ = false;
    }

    /// A text of a drawing is no position.
    bool isLabel(OGRFeatureH feature) const
    {
        return m_textField >= 0 && OGR_F_IsFieldSetAndNotNull(feature, m_textField) != 0;
    }

    /// GDAL writes attributes into GPX as elements of its own, and reads them with their prefix.
    std::string ownName(const std::string &name) const
    {
        static const std::string prefix = "ogr_";
        const bool isPrefixed = m_driver == "GPX" && name.compare(0, prefix.size(), prefix) == 0;
        return isPrefixed ? name.substr(prefix.size()) : name;
    }

    void takeFields()
    {
        const OGRFeatureDefnH definition = OGR_L_GetLayerDefn(m_layer);
        const int count = OGR_FD_GetFieldCount(definition);
        const bool knowsAll = !hasUnusedFields(m_driver);
        const std::set<int> used = knowsAll ? std::set<int>() : usedFields(count);
        for (int i = 0; i < count; ++i) {
            const OGRFieldDefnH field = OGR_FD_GetFieldDefn(definition, i);
            const std::string name = OGR_Fld_GetNameRef(field);
            if (isMadeUp(m_driver, name) || !(knowsAll || used.count(i) > 0))
                continue;
            m_fields.push_back(i);
            m_facts.fields.push_back({ownName(name), typeOf(OGR_Fld_GetType(field))});
        }
        for (const Field &attribute : m_attributes)
            m_facts.fields.push_back(attribute);
    }

    /// The fields that some feature has a value of. Notes the attributes in extended data.
    std::set<int> usedFields(int count)
    {
        const GdalMessages quiet;
        std::set<int> used;
        OGR_L_ResetReading(m_layer);
        while (const OwnedFeature read{OGR_L_GetNextFeature(m_layer)}) {
            if (isLabel(read.get()))
                continue;
            for (int i = 0; i < count; ++i) {
                if (OGR_F_IsFieldSetAndNotNull(read.get(), i) != 0)
                    used.insert(i);
            }
            noteAttributes(read.get());
        }
        return used;
    }

    std::vector<DxfAttribute> attributesOf(OGRFeatureH feature) const
    {
        const bool hasSome = m_extendedField >= 0 && !isLabel(feature)
                             && OGR_F_IsFieldSetAndNotNull(feature, m_extendedField) != 0;
        return hasSome ? dxfAttributes(OGR_F_GetFieldAsStringList(feature, m_extendedField))
                       : std::vector<DxfAttribute>();
    }

    void noteAttributes(OGRFeatureH feature)
    {
        for (const DxfAttribute &attribute : attributesOf(feature)) {
            const bool isNumber = std::holds_alternative<double>(attribute.value);
            const auto known =
                std::find_if(m_attributes.begin(), m_attributes.end(),
                             [&](const Field &field) { return field.name == attribute.name; });
            if (known == m_attributes.end())
                m_attributes.push_back(
                    {attribute.name, isNumber ? FieldType::Real : FieldType::Text});
            else if (!isNumber)
                known->type = FieldType::Text;
        }
    }

    void appendAttributes(OGRFeatureH feature, std::vector<Value> &values) const
    {
        if (m_attributes.empty())
            return;
        const std::vector<DxfAttribute> attributes = attributesOf(feature);
        for (const Field &field : m_attributes) {
            const auto found =
                std::find_if(attributes.begin(), attributes.end(),
                             [&](const DxfAttribute &each) { return each.name == field.name; });
            values.push_back(found == attributes.end() ? Value() : found->value);
        }
    }

    OGRLayerH m_layer;
    std::string m_driver;
    Layer m_facts;
    std::vector<int> m_fields; ///< of the layer, in the order of the facts
    int m_textField = -1;
    int m_altitudeField = -1;
    int m_extendedField = -1;
    std::vector<Field> m_attributes; ///< in extended data, behind the fields
    std::string m_error;
};

bool mayHavePoints(OGRwkbGeometryType type)
{
    const OGRwkbGeometryType flat = OGR_GT_Flatten(type);
    return flat == wkbPoint || flat == wkbMultiPoint || flat == wkbGeometryCollection
           || flat == wkbUnknown;
}

/// How many there are where that is known without reading them all; 0 for none.
long long featuresOf(OGRLayerH layer)
{
    const long long count = OGR_L_GetFeatureCount(layer, 0);
    if (count >= 0)
        return count;
    OGR_L_ResetReading(layer);
    return OwnedFeature(OGR_L_GetNextFeature(layer)) == nullptr ? 0 : -1;
}

class Source : public LayerSource
{
public:
    explicit Source(Dataset dataset) : m_dataset(std::move(dataset))
    {
        const GdalMessages quiet;
        m_format = GDALGetDriverShortName(GDALGetDatasetDriver(m_dataset.get()));
        const int count = GDALDatasetGetLayerCount(m_dataset.get());
        for (int i = 0; i < count; ++i) {
            const OGRLayerH layer = GDALDatasetGetLayer(m_dataset.get(), i);
            if (layer == nullptr)
                continue;
            Layer facts;
            facts.name = OGR_L_GetName(layer);
            const OGRwkbGeometryType type = OGR_L_GetGeomType(layer);
            facts.geometry = OGRGeometryTypeToName(type);
            facts.mayHavePoints = mayHavePoints(type);
            facts.features = facts.mayHavePoints ? featuresOf(layer) : -1;
            facts.reference = factsOf(OGRSpatialReference::FromHandle(OGR_L_GetSpatialRef(layer)));
            m_layers.push_back(std::move(facts));
            m_handles.push_back(layer);
        }
    }

    const std::string &format() const override { return m_format; }
    const std::vector<Layer> &layers() const override { return m_layers; }

    std::unique_ptr<LayerReader> read(std::size_t index, std::string &error) override
    try {
        return std::make_unique<Reader>(m_handles.at(index), m_format, m_layers.at(index));
    } catch (const std::exception &raised) {
        error = raised.what();
        return nullptr;
    }

private:
    Dataset m_dataset;
    std::string m_format;
    std::vector<Layer> m_layers;
    std::vector<OGRLayerH> m_handles;
};

} // namespace

const std::vector<const char *> &readDrivers()
{
    static const std::vector<const char *> names = {
        "GPKG",     "ESRI Shapefile", "LIBKML",     "KML",    "GPX", "GeoJSON",
        "ESRIJSON", "GeoJSONSeq",     "FlatGeobuf", "GML",    "DXF", "MapInfo File",
        "SQLite",   "OpenFileGDB",    "DGN",        "GeoRSS", "JML",
    };
    return names;
}

std::unique_ptr<LayerSource> openSource(const std::string &path, std::string &error)
{
    const GdalMessages messages;
    std::vector<const char *> drivers = readDrivers();
    drivers.push_back(nullptr);
    Dataset dataset(GDALOpenEx(path.c_str(),
                               GDAL_OF_VECTOR | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR,
                               drivers.data(), nullptr, nullptr));
    if (dataset == nullptr) {
        error = messages.text("it is of no format that is known");
        return nullptr;
    }
    return std::make_unique<Source>(std::move(dataset));
}

} // namespace KelStd::cli::vector
