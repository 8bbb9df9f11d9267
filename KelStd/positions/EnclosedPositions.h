#pragma once

#include <KelStd/positions/LineSplitter.h>

#include <QtCore/QString>

#include <functional>

/// Positions in fields that go over several lines, which a forgotten quotation mark may hide there.
namespace KelStd::positions {

/// A line inside quotation marks that would be a position if it stood alone.
struct EnclosedPosition
{
    int line = 0; ///< 1 for the one behind the first line; 0 for none
    /// The mark that closes the field stands at the beginning of a field of this line, which it may
    /// open: both lines may lack another mark.
    bool mayStandAlone = false;
};

/// The first of `text`, which holds whole quotation marks; one that may stand alone goes before.
/// `isPosition` tells it of fields, some of which may be missing.
EnclosedPosition enclosedPosition(const QString &text, const ListShape &shape,
                                  const std::function<bool(const SplitLine &)> &isPosition);

/// Why lines that hold such a position, so many behind the first one, are refused.
QString enclosedDoubt(int line);

} // namespace KelStd::positions
