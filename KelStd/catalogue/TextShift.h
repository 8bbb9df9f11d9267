#pragma once

#include <KelStd/catalogue/CatalogueWords.h>
#include <KelStd/catalogue/ShiftCandidates.h>
#include <KelStd/coord/Coord.h>

#include <QtCore/QStringList>

#include <vector>

namespace KelStd::catalogue {

/// What is to be said of a definition's own datum shift.
struct TextShiftJudgement
{
    const ShiftCandidate *same = nullptr; ///< the database's operation that it is; null for none
    QStringList warnings;
};

/// Holds it against the database's operations of the same system, at a place. Messages name what
/// helps by `words`.
TextShiftJudgement judgedTextShift(const Similarity &text,
                                   const std::vector<ShiftCandidate> &candidates,
                                   const Coord &coord, const GroundPoint &place,
                                   const CatalogueWords &words);

} // namespace KelStd::catalogue
