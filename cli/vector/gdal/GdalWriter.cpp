#include <cli/vector/gdal/GdalWriter.h>

#include <cli/vector/gdal/GdalMessages.h>
#include <cli/vector/gdal/GdalReference.h>

#include <cpl_conv.h>
#include <cpl_string.h>
#include <gdal.h>
#include <ogr_api.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <optional>

namespace KelStd::cli::vector {

namespace {

constexpr int rowsPerTransaction = 65536;

/// A DBF holds a number as text: room for the digits of every double that a survey has.
constexpr int dbfNumberWidth = 31;
constexpr int dbfDecimals = 15;
constexpr int dbfWholeDigits = dbfNumberWidth - dbfDecimals - 1;
constexpr std::size_t dbfMaxText = 254; ///< [bytes]

const char *const shapefile = "ESRI Shapefile";
const char *const geoPackage = "GPKG";

/// The options with which the layer of a format is created.
CPLStringList optionsOf(const NewLayer &layer)
{
    CPLStringList options;
    if (layer.format == shapefile) {
        // Its own RESIZE measures texts without the blanks that they begin with, and cuts them.
        options.SetNameValue("ENCODING", "UTF-8");
    } else {
        // Columns that no field's name is equal to.
        std::string key = "fid";
        std::string geometry = "geom";
        for (bool isTaken = true; isTaken;) {
            isTaken = false;
            for (const Field &field : layer.fields) {
                for (std::string *const name : {&key, &geometry}) {
                    if (EQUAL(field.name.c_str(), name->c_str())) {
                        *name += '_';
                        isTaken = true;
                    }
                }
            }
        }
        options.SetNameValue("FID", key.c_str());
        options.SetNameValue("GEOMETRY_NAME", geometry.c_str());
        if (!layer.heightReference.empty()) {
            const std::string description = heightReferenceInDescription + layer.heightReference;
            options.SetNameValue("DESCRIPTION", description.c_str());
        }
    }
    return options;
}

/// The name as a GeoPackage may have it, where no sign stands first, nor the word of its own
/// tables.
std::string layerName(const NewLayer &layer)
{
    const std::string &name = layer.name;
    const bool isOwn = EQUALN(name.c_str(), "gpkg", 4);
    const bool isSign = !name.empty() && std::ispunct(static_cast<unsigned char>(name[0])) != 0;
    return layer.format == geoPackage && (isOwn || isSign) ? '_' + name : name;
}

OGRFieldType ogrType(FieldType type)
{
    switch (type) {
    case FieldType::Integer: return OFTInteger64;
    case FieldType::Real: return OFTReal;
    case FieldType::Boolean: return OFTInteger;
    case FieldType::Date: return OFTDate;
    case FieldType::Text: break;
    }
    return OFTString;
}

/// The number as a DBF holds it; nothing where it has no room.
std::optional<double> asHeldByDbf(double number)
{
    std::array<char, 400> text = {}; // the largest double has 309 digits before the point
    const int size = std::snprintf(text.data(), text.size(), "%.*f", dbfDecimals, number);
    return size <= dbfNumberWidth ? std::optional(CPLAtof(text.data())) : std::nullopt;
}

class Writer : public LayerWriter
{
public:
    ~Writer() override
    {
        const GdalMessages quiet;
        if (m_dataset != nullptr)
            GDALClose(m_dataset);
    }

    bool create(const NewLayer &layer, std::string &error)
    {
        const GdalMessages messages;
        m_fields = layer.fields;
        m_widths.assign(m_fields.size(), 1);
        m_isDbf = layer.format == shapefile;
        const GDALDriverH driver = GDALGetDriverByName(layer.format.c_str());
        if (driver == nullptr) {
            error = "GDAL has no driver " + layer.format;
            return false;
        }
        OGRSpatialReference system;
        if (!layer.reference.empty() && !readReference(layer.reference, system, error))
            return false;
        m_dataset = GDALCreate(driver, layer.path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
        if (m_dataset == nullptr)
            return failed(messages, error);
        const CPLStringList options = optionsOf(layer);
        m_layer = GDALDatasetCreateLayer(
            m_dataset, layerName(layer).c_str(),
            layer.reference.empty() ? nullptr : OGRSpatialReference::ToHandle(&system), wkbPoint25D,
            options.List());
        if (m_layer == nullptr || !createFields())
            return failed(messages, error);
        m_hasTransactions = GDALDatasetTestCapability(m_dataset, ODsCTransactions) != 0
                            && GDALDatasetStartTransaction(m_dataset, 0) == OGRERR_NONE;
        return messages.hasError() ? failed(messages, error) : true;
    }

    bool add(const Feature &feature, std::string &error) override
    {
        const GdalMessages messages;
        const OGRFeatureH made = OGR_F_Create(OGR_L_GetLayerDefn(m_layer));
        for (std::size_t i = 0; i < m_fields.size() && i < feature.values.size(); ++i) {
            if (!setValue(made, static_cast<int>(i), feature.values[i], error)) {
                OGR_F_Destroy(made);
                return false;
            }
        }
        const OGRGeometryH point = OGR_G_CreateGeometry(wkbPoint25D);
        OGR_G_SetPoint(point, 0, feature.x, feature.y, feature.z);
        OGR_F_SetGeometryDirectly(made, point);
        const OGRErr result = OGR_L_CreateFeature(m_layer, made);
        OGR_F_Destroy(made);
        // What a format cannot hold is said as a warning.
        if (result != OGRERR_NONE || messages.hasWarning())
            return failed(messages, error);
        if (m_hasTransactions && ++m_pending == rowsPerTransaction) {
            m_pending = 0;
            if (GDALDatasetCommitTransaction(m_dataset) != OGRERR_NONE
                || GDALDatasetStartTransaction(m_dataset, 0) != OGRERR_NONE)
                return failed(messages, error);
        }
        return true;
    }

    bool finish(std::string &error) override
    {
        const GdalMessages messages;
        if (m_hasTransactions && GDALDatasetCommitTransaction(m_dataset) != OGRERR_NONE)
            return failed(messages, error);
        if (m_isDbf && !narrowFields())
            return failed(messages, error);
        GDALFlushCache(m_dataset);
        // GDALClose has no result of its own in all releases; what it fails to write, it says.
        GDALClose(m_dataset);
        m_dataset = nullptr;
        return messages.hasWarning() ? failed(messages, error) : true;
    }

    long long roundedNumbers() const override { return m_rounded; }

private:
    static bool failed(const GdalMessages &messages, std::string &error)
    {
        error = messages.text("it cannot be written");
        return false;
    }

    bool createFields()
    {
        for (const Field &field : m_fields) {
            const OGRFieldDefnH made = OGR_Fld_Create(field.name.c_str(), ogrType(field.type));
            if (field.type == FieldType::Boolean)
                OGR_Fld_SetSubType(made, OFSTBoolean);
            if (m_isDbf && field.type == FieldType::Real) {
                OGR_Fld_SetWidth(made, dbfNumberWidth);
                OGR_Fld_SetPrecision(made, dbfDecimals);
            }
            const OGRErr result = OGR_L_CreateField(m_layer, made, 0);
            OGR_Fld_Destroy(made);
            if (result != OGRERR_NONE)
                return false;
        }
        return true;
    }

    /// Gives the fields of texts and whole numbers the width of the longest value that they have.
    bool narrowFields()
    {
        const OGRFeatureDefnH definition = OGR_L_GetLayerDefn(m_layer);
        for (std::size_t i = 0; i < m_fields.size(); ++i) {
            const FieldType type = m_fields[i].type;
            if (type != FieldType::Text && type != FieldType::Integer)
                continue;
            const auto index = static_cast<int>(i);
            const OGRFieldDefnH narrow = OGR_Fld_Create(m_fields[i].name.c_str(), ogrType(type));
            OGR_Fld_SetWidth(narrow, static_cast<int>(m_widths[i]));
            const bool isDone =
                OGR_Fld_GetWidth(OGR_FD_GetFieldDefn(definition, index))
                    <= static_cast<int>(m_widths[i])
                || OGR_L_AlterFieldDefn(m_layer, index, narrow, ALTER_WIDTH_PRECISION_FLAG)
                       == OGRERR_NONE;
            OGR_Fld_Destroy(narrow);
            if (!isDone)
                return false;
        }
        return true;
    }

    void noteWidth(int field, std::size_t bytes)
    {
        std::size_t &width = m_widths[static_cast<std::size_t>(field)];
        width = std::max(width, bytes);
    }

    bool setValue(OGRFeatureH feature, int field, const Value &value, std::string &error)
    {
        if (const auto *const text = std::get_if<std::string>(&value)) {
            if (m_isDbf && text->size() > dbfMaxText) {
                error = "the text in \"" + m_fields[static_cast<std::size_t>(field)].name
                        + "\" has " + std::to_string(text->size())
                        + " bytes, and a Shapefile holds " + std::to_string(dbfMaxText);
                return false;
            }
            if (m_fields[static_cast<std::size_t>(field)].type == FieldType::Date)
                return setDate(feature, field, *text, error);
            noteWidth(field, text->size());
            OGR_F_SetFieldString(feature, field, text->c_str());
        } else if (const auto *const number = std::get_if<double>(&value)) {
            return setNumber(feature, field, *number, error);
        } else if (const auto *const whole = std::get_if<long long>(&value)) {
            noteWidth(field, std::to_string(*whole).size());
            OGR_F_SetFieldInteger64(feature, field, *whole);
        } else {
            OGR_F_SetFieldNull(feature, field);
        }
        return true;
    }

    static bool setDate(OGRFeatureH feature, int field, const std::string &text, std::string &error)
    {
        int year = 0;
        int month = 0;
        int day = 0;
        if (std::sscanf(text.c_str(), "%d-%d-%d", &year, &month, &day) != 3) {
            error = "\"" + text + "\" is no date";
            return false;
        }
        OGR_F_SetFieldDateTime(feature, field, year, month, day, 0, 0, 0, 0);
        return true;
    }

    bool setNumber(OGRFeatureH feature, int field, double number, std::string &error)
    {
        OGR_F_SetFieldDouble(feature, field, number);
        if (!m_isDbf)
            return true;
        const std::optional<double> held = asHeldByDbf(number);
        if (!held) {
            std::array<char, 32> text = {};
            std::snprintf(text.data(), text.size(), "%.15g", number);
            error = "the number " + std::string(text.data()) + " in \""
                    + m_fields[static_cast<std::size_t>(field)].name
                    + "\" does not fit: a Shapefile holds " + std::to_string(dbfWholeDigits)
                    + " characters before the decimal point, a GeoPackage any number";
            return false;
        }
        constexpr double tolerance = 1e-12; // of the number; a double tells 2e-16
        if (std::abs(*held - number) > tolerance * std::abs(number))
            ++m_rounded;
        return true;
    }

    GDALDatasetH m_dataset = nullptr;
    OGRLayerH m_layer = nullptr;
    std::vector<Field> m_fields;
    std::vector<std::size_t> m_widths; ///< of the longest values [bytes]
    bool m_isDbf = false;
    bool m_hasTransactions = false;
    int m_pending = 0;
    long long m_rounded = 0;
};

} // namespace

const std::vector<const char *> &writtenDrivers()
{
    static const std::vector<const char *> names = {geoPackage, shapefile};
    return names;
}

std::unique_ptr<LayerWriter> createLayer(const NewLayer &layer, std::string &error)
{
    auto writer = std::make_unique<Writer>();
    if (!writer->create(layer, error))
        return nullptr;
    return writer;
}

} // namespace KelStd::cli::vector
