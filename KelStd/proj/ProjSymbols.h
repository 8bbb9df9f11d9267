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
    FUNCTION(proj_log_func)

struct ProjFunctions
{
#define KELSTD_DECLARE(name) decltype(&::name) name = nullptr;
    KELSTD_PROJ_FUNCTIONS(KELSTD_DECLARE)
    KELSTD_OPTIONAL_PROJ_FUNCTIONS(KELSTD_DECLARE) // null for a library without it
#undef KELSTD_DECLARE
};

/// PROJ's default context, which every call uses.
inline constexpr PJ_CONTEXT *defaultContext = nullptr;

} // namespace KelStd::proj
