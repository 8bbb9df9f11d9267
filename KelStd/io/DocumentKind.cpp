#include <KelStd/io/DocumentKind.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/ListNames.h>
#include <KelStd/io/XmlDocument.h>

namespace KelStd::io {

DocumentKind documentKind(const QString &fileName, DocumentFailure &failure)
{
    QDomDocument document;
    failure = readDocument(fileName, Source::RegularFile, document);
    const QString name = document.documentElement().tagName();
    if (name == Coord_IO::xml_segName_root)
        return DocumentKind::System;
    if (name == QLatin1String(ellipsoidListName))
        return DocumentKind::EllipsoidList;
    if (name == QLatin1String(projectionListName))
        return DocumentKind::ProjectionList;
    return DocumentKind::Other;
}

} // namespace KelStd::io
