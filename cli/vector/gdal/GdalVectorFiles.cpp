#include <cli/vector/VectorFiles.h>

#include <cli/vector/gdal/GdalMessages.h>
#include <cli/vector/gdal/GdalReference.h>
#include <cli/vector/gdal/GdalSource.h>
#include <cli/vector/gdal/GdalWriter.h>

#include <cpl_conv.h>
#include <gdal.h>
#include <proj.h>

#include <dlfcn.h>

#include <exception>

namespace KelStd::cli::vector {

namespace {

/// Those of the names whose driver GDAL has.
std::vector<std::string> available(const std::vector<const char *> &names)
{
    std::vector<std::string> found;
    for (const char *const name : names) {
        if (GDALGetDriverByName(name) != nullptr)
            found.emplace_back(name);
    }
    return found;
}

class GdalVectorFiles : public VectorFiles
{
public:
    GdalVectorFiles()
    {
        // Drivers are GDAL's own: none of a directory that a variable names.
        CPLSetConfigOption("GDAL_DRIVER_PATH", "disable");
        // A file that is read is left as it is, and so is the directory that it lies in.
        CPLSetConfigOption("GDAL_PAM_ENABLED", "NO");
        CPLSetConfigOption("GML_DOWNLOAD_SCHEMA", "NO");
        CPLSetConfigOption("GML_FIELDTYPES", "ALWAYS_STRING"); // where no schema says them
        CPLSetConfigOption("OGR_ENABLE_PARTIAL_REPROJECTION", "NO");
        CPLSetConfigOption("GPX_ELE_AS_25D", "YES");
        // The extended data of drawings is among what GDAL has no fields for.
        CPLSetConfigOption("DXF_INCLUDE_RAW_CODE_VALUES", "TRUE");
        GDALAllRegister();
    }

    std::string release() const override { return GDALVersionInfo("RELEASE_NAME"); }
    std::vector<std::string> readFormats() const override { return available(readDrivers()); }
    std::vector<std::string> writtenFormats() const override { return available(writtenDrivers()); }

    std::string projFile() const override
    {
        Dl_info info = {};
        const auto address = reinterpret_cast<void *>(&proj_info);
        return dladdr(address, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
    }

    std::unique_ptr<LayerSource> open(const std::string &path, std::string &error) override
    try {
        return openSource(path, error);
    } catch (const std::exception &raised) {
        error = raised.what();
        return nullptr;
    }

    bool describe(const std::string &text, Reference &reference, std::string &error) override
    {
        OGRSpatialReference system;
        if (!readReference(text, system, error))
            return false;
        reference = factsOf(&system);
        return true;
    }

    bool haveSameDatum(const std::string &one, const std::string &other) override
    {
        return vector::haveSameDatum(one, other);
    }

    std::unique_ptr<LayerWriter> create(const NewLayer &layer, std::string &error) override
    try {
        return createLayer(layer, error);
    } catch (const std::exception &raised) {
        error = raised.what();
        return nullptr;
    }
};

} // namespace

} // namespace KelStd::cli::vector

extern "C" __attribute__((visibility("default"))) KelStd::cli::vector::VectorFiles *
kelstdVectorFiles(int version)
{
    using namespace KelStd::cli::vector;
    if (version != interfaceVersion)
        return nullptr;
    // It lives as long as the process: GDAL keeps much that is freed when its library goes.
    static auto *const files = new GdalVectorFiles;
    return files;
}
