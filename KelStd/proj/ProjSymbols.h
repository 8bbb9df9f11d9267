#pragma once

#include <proj.h>

static_assert(PROJ_VERSION_MAJOR == 9, "the functions are called by PROJ 9's signatures");

namespace KelStd::proj {

/// The functions that a usable PROJ library must have, in the order in which they are resolved.
/// Their types come from PROJ's header; nothing is linked.
#define KELSTD_PROJ_FUNCTIONS(FUNCTION)                                                            \
    FUNCTION(proj_context_create)                                                                  \
    FUNCTION(proj_context_destroy)                                                                 \
    FUNCTION(proj_trans)                                                                           \
    FUNCTION(proj_create)                                                                          \
    FUNCTION(proj_create_crs_to_crs)                                                               \
    FUNCTION(proj_destroy)                                                                         \
    FUNCTION(proj_cleanup)                                                                         \
    FUNCTION(proj_errno)                                                                           \
    FUNCTION(proj_errno_string)                                                                    \
    FUNCTION(proj_torad)

/// The functions that a library may lack, which is then left as it is.
#define KELSTD_OPTIONAL_PROJ_FUNCTIONS(FUNCTION)                                                   \
    FUNCTION(proj_context_clone)                                                                   \
    FUNCTION(proj_context_set_database_path)                                                       \
    FUNCTION(proj_context_set_fileapi)                                                             \
    FUNCTION(proj_context_set_search_paths)                                                        \
    FUNCTION(proj_errno_reset)                                                                     \
    FUNCTION(proj_factors)                                                                         \
    FUNCTION(proj_log_func)

/// The functions that ask PROJ's database and take its objects apart, all of which the catalogue of
/// systems needs; a library that lacks one of them is used for everything else.
#define KELSTD_CATALOGUE_PROJ_FUNCTIONS(FUNCTION)                                                  \
    FUNCTION(proj_as_proj_string)                                                                  \
    FUNCTION(proj_as_projjson)                                                                     \
    FUNCTION(proj_as_wkt)                                                                          \
    FUNCTION(proj_concatoperation_get_step)                                                        \
    FUNCTION(proj_concatoperation_get_step_count)                                                  \
    FUNCTION(proj_context_get_database_metadata)                                                   \
    FUNCTION(proj_context_set_enable_network)                                                      \
    FUNCTION(proj_coordoperation_get_accuracy)                                                     \
    FUNCTION(proj_coordoperation_get_grid_used)                                                    \
    FUNCTION(proj_coordoperation_get_grid_used_count)                                              \
    FUNCTION(proj_coordoperation_get_method_info)                                                  \
    FUNCTION(proj_coordoperation_get_param)                                                        \
    FUNCTION(proj_coordoperation_get_param_count)                                                  \
    FUNCTION(proj_coordoperation_get_towgs84_values)                                               \
    FUNCTION(proj_coordoperation_has_ballpark_transformation)                                      \
    FUNCTION(proj_create_from_database)                                                            \
    FUNCTION(proj_create_from_wkt)                                                                 \
    FUNCTION(proj_create_operation_factory_context)                                                \
    FUNCTION(proj_create_operations)                                                               \
    FUNCTION(proj_crs_get_coordinate_system)                                                       \
    FUNCTION(proj_crs_get_coordoperation)                                                          \
    FUNCTION(proj_crs_get_geodetic_crs)                                                            \
    FUNCTION(proj_crs_get_sub_crs)                                                                 \
    FUNCTION(proj_crs_info_list_destroy)                                                           \
    FUNCTION(proj_cs_get_axis_count)                                                               \
    FUNCTION(proj_cs_get_axis_info)                                                                \
    FUNCTION(proj_ellipsoid_get_parameters)                                                        \
    FUNCTION(proj_get_area_of_use)                                                                 \
    FUNCTION(proj_get_crs_info_list_from_database)                                                 \
    FUNCTION(proj_get_crs_list_parameters_create)                                                  \
    FUNCTION(proj_get_crs_list_parameters_destroy)                                                 \
    FUNCTION(proj_get_ellipsoid)                                                                   \
    FUNCTION(proj_get_id_auth_name)                                                                \
    FUNCTION(proj_get_id_code)                                                                     \
    FUNCTION(proj_get_name)                                                                        \
    FUNCTION(proj_get_prime_meridian)                                                              \
    FUNCTION(proj_get_source_crs)                                                                  \
    FUNCTION(proj_get_target_crs)                                                                  \
    FUNCTION(proj_get_type)                                                                        \
    FUNCTION(proj_identify)                                                                        \
    FUNCTION(proj_int_list_destroy)                                                                \
    FUNCTION(proj_is_deprecated)                                                                   \
    FUNCTION(proj_is_equivalent_to_with_ctx)                                                       \
    FUNCTION(proj_list_destroy)                                                                    \
    FUNCTION(proj_list_ellps)                                                                      \
    FUNCTION(proj_list_get)                                                                        \
    FUNCTION(proj_list_get_count)                                                                  \
    FUNCTION(proj_operation_factory_context_destroy)                                               \
    FUNCTION(proj_operation_factory_context_set_allow_ballpark_transformations)                    \
    FUNCTION(proj_operation_factory_context_set_allow_use_intermediate_crs)                        \
    FUNCTION(proj_operation_factory_context_set_crs_extent_use)                                    \
    FUNCTION(proj_operation_factory_context_set_grid_availability_use)                             \
    FUNCTION(proj_operation_factory_context_set_spatial_criterion)                                 \
    FUNCTION(proj_prime_meridian_get_parameters)                                                   \
    FUNCTION(proj_string_list_destroy)

struct ProjFunctions
{
#define KELSTD_DECLARE(name) decltype(&::name) name = nullptr;
    KELSTD_PROJ_FUNCTIONS(KELSTD_DECLARE)
    KELSTD_OPTIONAL_PROJ_FUNCTIONS(KELSTD_DECLARE)  // null for a library without it
    KELSTD_CATALOGUE_PROJ_FUNCTIONS(KELSTD_DECLARE) // the same
#undef KELSTD_DECLARE
};

/// Whether the library has what the catalogue of systems needs.
inline bool hasCatalogue(const ProjFunctions &functions)
{
    bool hasAll = true;
#define KELSTD_FIND(name) hasAll = hasAll && functions.name != nullptr;
    KELSTD_CATALOGUE_PROJ_FUNCTIONS(KELSTD_FIND)
#undef KELSTD_FIND
    return hasAll;
}

/// PROJ's default context, which every call uses.
inline constexpr PJ_CONTEXT *defaultContext = nullptr;

} // namespace KelStd::proj
