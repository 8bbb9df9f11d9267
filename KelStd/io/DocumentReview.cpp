#include <KelStd/io/DocumentReview.h>

#include <KelStd/io/CoordDocument.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/OriginElement.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/RecordWriters.h>
#include <KelStd/io/ReviewedForm.h>
#include <KelStd/io/ReviewedUse.h>
#include <KelStd/io/XmlDocument.h>

#include <algorithm>

namespace KelStd::io {

namespace {

/// Reads a document, and reviews it whether or not `read` takes it; what it took is reviewed
/// further by `reviewUse`.
template <typename Read, typename ReviewForm, typename ReviewUse>
DocumentFailure review(const QString &fileName, Source source, QList<DocumentFinding> &all,
                       Read read, ReviewForm reviewForm, ReviewUse reviewUse)
{
    QDomDocument document;
    Damage damage = Damage::None;
    DocumentFailure failure = readDocument(fileName, source, document, damage);
    if (failure)
        return failure;
    const QDomElement root = document.documentElement();
    failure = read(root);
    QList<DocumentFinding> found;
    ReviewFindings findings(found);
    reviewForm(root, findings);
    if (damage == Damage::Some)
        reviewDamage(root, findings);
    if (!failure)
        reviewUse(root, findings);
    std::stable_sort(
        found.begin(), found.end(),
        [](const DocumentFinding &a, const DocumentFinding &b) { return a.line < b.line; });
    all += found;
    return failure;
}

void reviewCoordUse(const QDomElement &root, const Coord &coord, ReviewFindings &findings)
{
    using Names = Coord_IO;
    const QDomElement shift = root.firstChildElement(Names::xml_segName_ellipsoidTransform);
    reviewEllipsoidUse(root.firstChildElement(Names::xml_segName_ellipsoid), coord.ellipsoid,
                       findings);
    reviewProjectionUse(root.firstChildElement(Names::xml_segName_projection), coord.projection,
                        findings);
    reviewShiftBesideGrids(shift, coord.ellipsoid, coord.ellipsoidTransform, findings);
    reviewTransformUse(shift, coord.ellipsoidTransform, findings);
}

template <typename Record>
DocumentFailure reviewList(const QString &fileName, const QString &recordName, Reader<Record> read,
                           void (*reviewUse)(const QDomElement &, const Record &, ReviewFindings &),
                           QList<Record> &records, QList<DocumentFinding> &findings)
{
    const auto before = records.size();
    return review(
        fileName, Source::RegularFile, findings,
        [&](const QDomElement &root) {
            DocumentFailure failure;
            readRecords(root, recordName, read, records, failure);
            return failure;
        },
        [&](const QDomElement &root, ReviewFindings &found) {
            reviewListForm(root, recordName, found);
        },
        [&](const QDomElement &root, ReviewFindings &found) {
            auto at = before;
            readEach(root, recordName, [&](const QDomElement &element) {
                reviewUse(element, records.at(at++), found);
                return true;
            });
        });
}

} // namespace

bool reviewSystem(const QString &fileName, Coord &coord, SystemOrigin &origin,
                  QList<DocumentFinding> &findings, DocumentFailure &failure)
{
    failure = review(
        fileName, Source::Any, findings,
        [&](const QDomElement &root) {
            const DocumentFailure fault = readCoord(root, coord);
            if (!fault)
                origin = readOriginAndControl(root);
            return fault;
        },
        &reviewCoordForm,
        [&coord](const QDomElement &root, ReviewFindings &found) {
            reviewCoordUse(root, coord, found);
        });
    return !failure;
}

bool reviewCoord(const QString &fileName, Coord &coord, QList<DocumentFinding> &findings,
                 DocumentFailure &failure)
{
    SystemOrigin passedOver;
    return reviewSystem(fileName, coord, passedOver, findings, failure);
}

bool reviewCoord(const QString &fileName, Coord &coord, QList<DocumentFinding> &findings,
                 QString *error)
{
    DocumentFailure failure;
    reviewCoord(fileName, coord, findings, failure);
    return reportedAsContract(failure, error);
}

bool reviewFromMemory(const Coord &given, QList<DocumentFinding> &findings,
                      DocumentFailure &failure)
{
    QDomDocument document;
    Coord read;
    failure = reparse(coordDocument(given), document);
    if (!failure)
        failure = readCoord(document.documentElement(), read);
    if (failure)
        return false;
    ReviewFindings found(findings);
    reviewCoordForm(document.documentElement(), found);
    reviewCoordUse(document.documentElement(), read, found);
    return true;
}

bool reviewEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                         QList<DocumentFinding> &findings, DocumentFailure &failure)
{
    failure = reviewList(fileName, Coord_IO::xml_segName_ellipsoid, &readEllipsoid,
                         &reviewEllipsoidUse, ellipsoids, findings);
    return !failure;
}

bool reviewEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                         QList<DocumentFinding> &findings, QString *error)
{
    DocumentFailure failure;
    reviewEllipsoidList(fileName, ellipsoids, findings, failure);
    return reportedAsContract(failure, error);
}

bool reviewProjectionList(const QString &fileName, QList<Projection> &projections,
                          QList<DocumentFinding> &findings, DocumentFailure &failure)
{
    failure = reviewList(fileName, Coord_IO::xml_segName_projection, &readProjection,
                         &reviewProjectionUse, projections, findings);
    return !failure;
}

bool reviewProjectionList(const QString &fileName, QList<Projection> &projections,
                          QList<DocumentFinding> &findings, QString *error)
{
    DocumentFailure failure;
    reviewProjectionList(fileName, projections, findings, failure);
    return reportedAsContract(failure, error);
}

} // namespace KelStd::io
