#pragma once

#include <QtCore/QtGlobal>

/// Marks what a platform library offers to the rest of the process. A host that supplies its own
/// implementation in place of the default one compiles it against these same headers.
#if defined(KELSTD_STATIC)
#    define KELSTD_PLATFORM_EXPORT
#elif defined(KELSTD_BUILDING_PLATFORM)
#    define KELSTD_PLATFORM_EXPORT Q_DECL_EXPORT
#else
#    define KELSTD_PLATFORM_EXPORT Q_DECL_IMPORT
#endif
