#include <KelStd/io/ListDocuments.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/ListNames.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/RecordWriters.h>
#include <KelStd/io/XmlDocument.h>

namespace KelStd::io {

namespace {

/// How one kind of list looks.
template <typename Record>
struct ListForm
{
    const char *rootName;
    const QString &recordName;
    Reader<Record> read;
    QDomElement (*element)(QDomDocument &, const Record &);
};

const ListForm<Ellipsoid> ellipsoidForm = {ellipsoidListName, Coord_IO::xml_segName_ellipsoid,
                                           &readEllipsoid, &ellipsoidElement};
const ListForm<Projection> projectionForm = {projectionListName, Coord_IO::xml_segName_projection,
                                             &readProjection, &projectionElement};

template <typename Record>
DocumentFailure readList(const ListForm<Record> &form, const QString &fileName,
                         QList<Record> &records)
{
    QDomDocument document;
    DocumentFailure failure = readDocument(fileName, Source::RegularFile, document);
    if (!failure)
        readRecords(document.documentElement(), form.recordName, form.read, records, failure);
    return failure;
}

template <typename Record>
bool writeList(const ListForm<Record> &form, const QList<Record> &records, const QString &fileName,
               QString *error)
{
    const auto makeDocument = [&form, &records] {
        QDomDocument document = documentFrame();
        QDomElement root = versionedElement(document, QString::fromLatin1(form.rootName));
        for (const Record &record : records)
            root.appendChild(form.element(document, record));
        document.appendChild(root);
        return document;
    };
    return writeDocument(fileName, makeDocument, error);
}

} // namespace

bool readEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids, QString *error)
{
    return reportedAsContract(readList(ellipsoidForm, fileName, ellipsoids), error);
}

bool readEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                       DocumentFailure &failure)
{
    failure = readList(ellipsoidForm, fileName, ellipsoids);
    return !failure;
}

bool readProjectionList(const QString &fileName, QList<Projection> &projections, QString *error)
{
    return reportedAsContract(readList(projectionForm, fileName, projections), error);
}

bool readProjectionList(const QString &fileName, QList<Projection> &projections,
                        DocumentFailure &failure)
{
    failure = readList(projectionForm, fileName, projections);
    return !failure;
}

bool writeEllipsoidList(const QList<Ellipsoid> &ellipsoids, const QString &fileName, QString *error)
{
    return writeList(ellipsoidForm, ellipsoids, fileName, error);
}

bool writeProjectionList(const QList<Projection> &projections, const QString &fileName,
                         QString *error)
{
    return writeList(projectionForm, projections, fileName, error);
}

} // namespace KelStd::io
