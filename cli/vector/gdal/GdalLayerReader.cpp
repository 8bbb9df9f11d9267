#include <cli/vector/gdal/GdalLayerReader.h>

#include <cli/vector/gdal/DxfAttributes.h>
#include <cli/vector/gdal/GdalFields.h>
#include <cli/vector/gdal/GdalMessages.h>

#include <cpl_conv.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace KelStd::cli::vector {

namespace {

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

/// As well-known text.
std::string textOf(OGRGeometryH geometry)
{
    char *text = nullptr;
    std::string result;
    if (OGR_G_ExportToIsoWkt(geometry, &text) == OGRERR_NONE)
        result = text;
    CPLFree(text);
    return result;
}

class Reader : public LayerReader
{
public:
    Reader(OGRLayerH layer, const std::string &driver, Layer facts)
        : m_layer(layer), m_driver(driver), m_facts(std::move(facts))
    {
        m_textField = driver == "DXF" ? fieldOf("Text") : -1;
        m_paperField = driver == "DXF" ? fieldOf("PaperSpace") : -1;
        m_altitudeField = driver == "LIBKML" ? fieldOf(altitudeMode) : -1;
        m_extendedField = driver == "DXF" ? fieldOf("RawCodeValues") : -1;
        if (guessesTypes(driver))
            readAsTexts();
        takeFields();
        OGR_L_ResetReading(m_layer);
    }

    const Layer &layer() const override { return m_facts; }

    Result next(Feature &feature) override
    {
        const GdalMessages messages;
        const OwnedFeature read(OGR_L_GetNextFeature(m_layer));
        // Some drivers give a last feature along with the error that ends the file.
        if (messages.hasError()) {
            m_error = messages.text("");
            return Result::Error;
        }
        if (messages.hasWarning() && m_warning.empty())
            m_warning = messages.text("");
        if (read == nullptr)
            return Result::End;
        if (isOnPaper(read.get()))
            return Result::OnPaper;
        if (isLabel(read.get()))
            return Result::None;
        feature.id = OGR_F_GetFID(read.get());
        feature.failure.clear();
        feature.geometry.clear();
        feature.values.clear();
        for (const int field : m_fields)
            feature.values.push_back(valueOf(read.get(), field));
        appendAttributes(read.get(), feature.values);
        const OGRGeometryH geometry = OGR_F_GetGeometryRef(read.get());
        takePoint(read.get(), geometry, feature);
        if (!feature.failure.empty() && geometry != nullptr)
            feature.geometry = textOf(geometry);
        return Result::Feature;
    }

    std::string errorText() const override { return m_error; }
    std::string warningText() const override { return m_warning; }

private:
    /// Sets the position, or why there is none.
    void takePoint(OGRFeatureH read, OGRGeometryH geometry, Feature &feature) const
    {
        const OGRGeometryH point = pointOf(geometry, feature.failure);
        if (point == nullptr)
            return;
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
            applyAltitudeMode(read, feature);
    }

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

    /// Where a sheet is drawn, coordinates are those of the paper.
    bool isOnPaper(OGRFeatureH feature) const
    {
        return m_paperField >= 0 && OGR_F_IsFieldSetAndNotNull(feature, m_paperField) != 0
               && OGR_F_GetFieldAsInteger(feature, m_paperField) != 0;
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

    /// Has numbers read as the texts that they are in the file, each to its last digit. What they
    /// are carried as, all of them say together.
    void readAsTexts()
    {
        const GdalMessages quiet;
        OGR_L_ResetReading(m_layer); // features that it has read ahead are of the types before
        const OGRFeatureDefnH definition = OGR_L_GetLayerDefn(m_layer);
        const int count = OGR_FD_GetFieldCount(definition);
        for (int i = 0; i < count; ++i) {
            const OGRFieldDefnH field = OGR_FD_GetFieldDefn(definition, i);
            const FieldType type = typeOf(field);
            if (type != FieldType::Integer && type != FieldType::Real)
                continue;
            OGR_Fld_SetType(field, OFTString);
            // Later releases may keep to what they have guessed.
            if (OGR_Fld_GetType(field) == OFTString)
                m_numbers.emplace(i, type);
            else
                m_warning = "numbers lose the zeros that they begin with";
        }
    }

    void takeFields()
    {
        const OGRFeatureDefnH definition = OGR_L_GetLayerDefn(m_layer);
        const int count = OGR_FD_GetFieldCount(definition);
        const bool knowsAll = !hasUnusedFields(m_driver);
        const std::set<int> used = knowsAll ? std::set<int>() : usedFields(count);
        const std::set<int> dates = hasDatesAsTexts(m_driver) ? dateFields(count) : std::set<int>();
        for (int i = 0; i < count; ++i) {
            const OGRFieldDefnH field = OGR_FD_GetFieldDefn(definition, i);
            const std::string name = OGR_Fld_GetNameRef(field);
            if (isMadeUp(m_driver, name) || !(knowsAll || used.count(i) > 0))
                continue;
            m_fields.push_back(i);
            if (isGuessedTime(m_driver, field) && m_warning.empty())
                m_warning = "texts of \"" + name
                            + "\" are taken for times and may be written in "
                              "another way";
            const auto number = m_numbers.find(i);
            const FieldType type = dates.count(i) > 0 ? FieldType::Date : typeOf(field);
            m_facts.fields.push_back(
                {ownName(name), number == m_numbers.end() ? type : number->second});
        }
        for (const Field &attribute : m_attributes)
            m_facts.fields.push_back(attribute);
    }

    /// Those of texts that are all dates.
    std::set<int> dateFields(int count)
    {
        const GdalMessages quiet;
        std::set<int> dates;
        std::set<int> others;
        OGR_L_ResetReading(m_layer);
        while (const OwnedFeature read{OGR_L_GetNextFeature(m_layer)}) {
            for (int i = 0; i < count; ++i) {
                if (OGR_F_IsFieldSetAndNotNull(read.get(), i) == 0)
                    continue;
                const bool isOne =
                    OGR_Fld_GetType(OGR_F_GetFieldDefnRef(read.get(), i)) == OFTString
                    && isDate(OGR_F_GetFieldAsString(read.get(), i));
                (isOne ? dates : others).insert(i);
            }
        }
        for (const int field : others)
            dates.erase(field);
        return dates;
    }

    /// The fields that some feature has a value of. Notes the attributes in extended data.
    std::set<int> usedFields(int count)
    {
        const GdalMessages quiet;
        std::set<int> used;
        OGR_L_ResetReading(m_layer);
        while (const OwnedFeature read{OGR_L_GetNextFeature(m_layer)}) {
            if (isLabel(read.get()) || isOnPaper(read.get()))
                continue;
            for (int i = 0; i < count; ++i) {
                if (OGR_F_IsFieldSetAndNotNull(read.get(), i) == 0)
                    continue;
                used.insert(i);
                if (m_numbers.count(i) > 0 && !isPlainNumber(OGR_F_GetFieldAsString(read.get(), i)))
                    m_numbers.erase(i);
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
    std::map<int, FieldType> m_numbers; ///< fields that are read as texts, and hold numbers
    std::vector<int> m_fields;          ///< of the layer, in the order of the facts
    int m_textField = -1;
    int m_paperField = -1;
    int m_altitudeField = -1;
    int m_extendedField = -1;
    std::vector<Field> m_attributes; ///< in extended data, behind the fields
    std::string m_error;
    std::string m_warning;
};

} // namespace

std::unique_ptr<LayerReader> readLayer(OGRLayerH layer, const std::string &driver, Layer facts)
{
    return std::make_unique<Reader>(layer, driver, std::move(facts));
}

} // namespace KelStd::cli::vector
