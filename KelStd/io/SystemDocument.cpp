#include <KelStd/io/SystemDocument.h>

#include <KelStd/io/ControlElement.h>
#include <KelStd/io/CoordDocument.h>
#include <KelStd/io/OriginElement.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/RecordWriters.h>
#include <KelStd/io/XmlDocument.h>

namespace KelStd::io {

namespace {

QDomDocument documentOf(const Coord &coord, const SystemOrigin &origin)
{
    QDomDocument document = coordDocument(coord);
    appendOrigin(document, origin);
    appendControl(document, origin.control);
    return document;
}

} // namespace

SystemOrigin readOriginAndControl(const QDomElement &root)
{
    SystemOrigin origin = readOrigin(root);
    origin.control = readControl(root);
    return origin;
}

bool readOrigin(const QString &fileName, SystemOrigin &origin, DocumentFailure &failure)
{
    QDomDocument document;
    failure = readDocument(fileName, Source::Any, document);
    if (!failure && hasReadableVersion(document.documentElement(), failure))
        origin = readOriginAndControl(document.documentElement());
    return !failure;
}

bool readSystem(const QString &fileName, Coord &coord, SystemOrigin &origin,
                DocumentFailure &failure)
{
    failure = readSystem(fileName, Source::Any, coord, origin);
    return !failure;
}

DocumentFailure readSystem(const QString &fileName, Source source, Coord &coord,
                           SystemOrigin &origin)
{
    QDomDocument document;
    DocumentFailure failure = readDocument(fileName, source, document);
    if (!failure)
        failure = readCoord(document.documentElement(), coord);
    if (!failure)
        origin = readOriginAndControl(document.documentElement());
    return failure;
}

bool writeSystem(const Coord &coord, const SystemOrigin &origin, const QString &fileName,
                 DocumentFailure &failure)
{
    failure = writeDocument(fileName, [&] { return documentOf(coord, origin); });
    return !failure;
}

bool systemDocument(const Coord &coord, const SystemOrigin &origin, QByteArray &bytes,
                    DocumentFailure &failure)
{
    failure = documentBytes(documentOf(coord, origin), bytes);
    return !failure;
}

SystemOrigin keptOrigin(const SystemOrigin &origin, const Coord &before, const Coord &after)
{
    // Equality leaves out names that people give, which change no number.
    if (before.ellipsoid != after.ellipsoid || before.projection != after.projection)
        return {};
    SystemOrigin kept = origin;
    if (before != after) // a site was fitted to what any of the records made of its points
        kept.control.clear();
    if (before.ellipsoidTransform != after.ellipsoidTransform)
        kept.operation.reset();
    return kept;
}

} // namespace KelStd::io
