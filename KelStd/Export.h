#pragma once

#include <QtCore/QtGlobal>

/// Marks what leaves the shared library; everything else in it is hidden.
#if defined(KELSTD_STATIC)
#    define KELSTD_EXPORT
#elif defined(KELSTD_BUILDING_LIBRARY)
#    define KELSTD_EXPORT Q_DECL_EXPORT
#else
#    define KELSTD_EXPORT Q_DECL_IMPORT
#endif
