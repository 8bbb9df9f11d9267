#pragma once

#include <cli/vector/VectorFiles.h>

#include <ogr_api.h>

#include <memory>
#include <string>
#include <type_traits>

namespace KelStd::cli::vector {

struct FeatureDestroyer
{
    void operator()(OGRFeatureH feature) const { OGR_F_Destroy(feature); }
};
using OwnedFeature = std::unique_ptr<std::remove_pointer_t<OGRFeatureH>, FeatureDestroyer>;

/// Reads the features of a layer from its first one on. `facts`: of the layer, without its fields.
std::unique_ptr<LayerReader> readLayer(OGRLayerH layer, const std::string &driver, Layer facts);

} // namespace KelStd::cli::vector
