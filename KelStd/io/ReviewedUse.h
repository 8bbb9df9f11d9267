#pragma once

#include <KelStd/io/ReviewFindings.h>

/// The second half of a review: what the definitions will not use of a record that was read, and
/// what cannot be meant. An element that is doubted already is passed over.
namespace KelStd::io {

void reviewEllipsoidUse(const QDomElement &element, const Ellipsoid &ellipsoid,
                        ReviewFindings &findings);
void reviewProjectionUse(const QDomElement &element, const Projection &projection,
                         ReviewFindings &findings);
/// Where an ellipsoid's PROJ name brings grids, those are the datum shift, and the record's is not
/// used.
void reviewShiftBesideGrids(const QDomElement &element, const Ellipsoid &ellipsoid,
                            const stEllipsoinTransform &record, ReviewFindings &findings);
void reviewTransformUse(const QDomElement &element, const stEllipsoinTransform &record,
                        ReviewFindings &findings);

} // namespace KelStd::io
