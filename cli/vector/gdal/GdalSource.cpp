#include <cli/vector/gdal/GdalSource.h>

#include <cli/vector/gdal/GdalLayerReader.h>
#include <cli/vector/gdal/GdalMessages.h>
#include <cli/vector/gdal/GdalReference.h>

#include <gdal.h>
#include <ogr_api.h>

#include <type_traits>

namespace KelStd::cli::vector {

namespace {

struct DatasetCloser
{
    void operator()(GDALDatasetH dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<std::remove_pointer_t<GDALDatasetH>, DatasetCloser>;

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

/// What the program wrote into the description of the layer; empty for nothing.
std::string heightReferenceOf(OGRLayerH layer)
{
    static const std::string before = heightReferenceInDescription;
    const char *const text = GDALGetMetadataItem(layer, "DESCRIPTION", nullptr);
    const std::string description = text == nullptr ? "" : text;
    return description.compare(0, before.size(), before) == 0 ? description.substr(before.size())
                                                              : std::string();
}

class Source : public LayerSource
{
public:
    explicit Source(Dataset dataset) : m_dataset(std::move(dataset))
    {
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
            // A height above the ground makes a point of KML none of a survey.
            facts.mayHaveOthers = OGR_GT_Flatten(type) != wkbPoint || m_format == "LIBKML";
            facts.features = facts.mayHavePoints ? featuresOf(layer) : -1;
            facts.reference = factsOf(OGRSpatialReference::FromHandle(OGR_L_GetSpatialRef(layer)));
            facts.heightReference = heightReferenceOf(layer);
            m_layers.push_back(std::move(facts));
            m_handles.push_back(layer);
        }
    }

    const std::string &format() const override { return m_format; }
    const std::vector<Layer> &layers() const override { return m_layers; }

    std::unique_ptr<LayerReader> read(std::size_t index, std::string &error) override
    try {
        return readLayer(m_handles.at(index), m_format, m_layers.at(index));
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
    // What was found out of a file of GML is not kept beside it. Texts that look like times are not
    // written in another way. "@": for drivers that know it.
    const char *const options[] = {"@WRITE_GFS=NO", "@DATE_AS_STRING=YES", nullptr};
    Dataset dataset(GDALOpenEx(path.c_str(),
                               GDAL_OF_VECTOR | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR,
                               drivers.data(), options, nullptr));
    if (dataset == nullptr) {
        error = messages.text("it is of no format that is known");
        return nullptr;
    }
    auto source = std::make_unique<Source>(std::move(dataset));
    // What a driver could not read is left out of what it gives.
    if (messages.hasErrorOfFile()) {
        error = messages.text("");
        return nullptr;
    }
    return source;
}

} // namespace KelStd::cli::vector
