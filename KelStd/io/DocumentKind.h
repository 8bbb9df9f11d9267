#pragma once

#include <KelStd/Export.h>
#include <KelStd/io/DocumentFailure.h>

#include <QtCore/QString>

namespace KelStd::io {

/// What the name of a document's root says that it holds. Reading does not ask for it.
enum class DocumentKind
{
    Other,          ///< none of those
    System,         ///< "Coord"
    EllipsoidList,  ///< "Ellipsoid_List"
    ProjectionList, ///< "Projection_List"
};

/// Looks at a regular file. A document that is not well-formed may have a kind all the same, when
/// its root comes before the fault; `failure` then says what is the matter, as
/// `Coord_IO::xml_read` does, and becomes none for one that is well-formed. May be called on any
/// thread.
KELSTD_EXPORT DocumentKind documentKind(const QString &fileName, DocumentFailure &failure);

} // namespace KelStd::io
