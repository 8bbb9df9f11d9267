#include <KelStd/io/DocumentReview.h>

#include <KelStd/io/CoordDocument.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/ReviewedForm.h>
#include <KelStd/io/ReviewedUse.h>
#include <KelStd/io/XmlDocument.h>

#include <algorithm>

namespace KelStd::io {

namespace {

/// Reads a document, and reviews it whether or not `read` takes it; what it took is reviewed
/// further by `reviewUse`.
template <typename Read, typename ReviewForm, typename ReviewUse>
bool review(const QString &fileName, Source source, QList<DocumentFinding> &all, QString *error,
            Read read, ReviewForm reviewForm, ReviewUse reviewUse)
{
    QDomDocument document;
    Damage damage = Damage::None;
    if (!readDocument(fileName, source, document, damage, error))
        return false;
    const QDomElement root = document.documentElement();
    const bool isRead = read(root);
    QList<DocumentFinding> found;
    ReviewFindings findings(found);
    reviewForm(root, findings);
    if (damage == Damage::Some)
        reviewDamage(root, findings);
    if (isRead)
        reviewUse(root, findings);
    std::stable_sort(
        found.begin(), found.end(),
        [](const DocumentFinding &a, const DocumentFinding &b) { return a.line < b.line; });
    all += found;
    return isRead;
}

template <typename Record>
bool reviewList(const QString &fileName, const QString &recordName,
                bool (*read)(const QDomElement &, Record &),
                void (*reviewUse)(const QDomElement &, const Record &, ReviewFindings &),
                QList<Record> &records, QList<DocumentFinding> &findings, QString *error)
{
    const int before = records.size();
    return review(
        fileName, Source::RegularFile, findings, error,
        [&](const QDomElement &root) { return readRecords(root, recordName, read, records); },
        [&](const QDomElement &root, ReviewFindings &found) {
            reviewListForm(root, recordName, found);
        },
        [&](const QDomElement &root, ReviewFindings &found) {
            int at = before;
            readEach(root, recordName, [&](const QDomElement &element) {
                reviewUse(element, records.at(at++), found);
                return true;
            });
        });
}

} // namespace

bool reviewCoord(const QString &fileName, Coord &coord, QList<DocumentFinding> &findings,
                 QString *error)
{
    using Names = Coord_IO;
    return review(
        fileName, Source::Any, findings, error,
        [&](const QDomElement &root) { return readCoord(root, coord, error); }, &reviewCoordForm,
        [&coord](const QDomElement &root, ReviewFindings &found) {
            reviewEllipsoidUse(root.firstChildElement(Names::xml_segName_ellipsoid),
                               coord.ellipsoid, found);
            reviewProjectionUse(root.firstChildElement(Names::xml_segName_projection),
                                coord.projection, found);
            reviewTransformUse(root.firstChildElement(Names::xml_segName_ellipsoidTransform),
                               coord.ellipsoidTransform, found);
        });
}

bool reviewEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                         QList<DocumentFinding> &findings, QString *error)
{
    return reviewList(fileName, Coord_IO::xml_segName_ellipsoid, &readEllipsoid,
                      &reviewEllipsoidUse, ellipsoids, findings, error);
}

bool reviewProjectionList(const QString &fileName, QList<Projection> &projections,
                          QList<DocumentFinding> &findings, QString *error)
{
    return reviewList(fileName, Coord_IO::xml_segName_projection, &readProjection,
                      &reviewProjectionUse, projections, findings, error);
}

} // namespace KelStd::io
