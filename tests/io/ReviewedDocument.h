#pragma once

#include "io/DocumentTest.h"

#include <KelStd/io/DocumentReview.h>

#include <iosfwd>

namespace KelStd::io {

/// How a finding looks in a failed expectation.
void PrintTo(const DocumentFinding &finding, std::ostream *out);

} // namespace KelStd::io

namespace KelStd::test {

/// The Dutch grid of the test data, whose document has one element a line, with one text of it
/// replaced, which must be there.
QByteArray dutchGridWith(const QByteArray &from, const QByteArray &to);

/// A test that reviews documents of its own.
class ReviewTest : public DocumentTest
{
protected:
    /// The findings on a document that is read.
    QList<io::DocumentFinding> reviewed(const QByteArray &document) const;
    QList<io::DocumentFinding> reviewedEllipsoids(const QByteArray &document) const;
    QList<io::DocumentFinding> reviewedProjections(const QByteArray &document) const;
};

} // namespace KelStd::test
