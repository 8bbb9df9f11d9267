#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>
#include <QtCore/QtGlobal>

/// What a document may have at most to be read and written.
namespace KelStd::io {

/// Documents that nest elements deeper are refused. Coordinate systems nest four deep; Qt's DOM
/// tree of some fifty thousand levels would exhaust the stack when it is destroyed.
inline constexpr int deepestNesting = 256;

/// Documents of more bytes are refused. A coordinate system has some four thousand; Qt cannot hold
/// a text of some thousand million at all, and raises `std::bad_alloc`.
inline constexpr qint64 largestDocument = qint64{64} * 1024 * 1024;

/// Documents of more tags, comments, instructions and attributes, all taken together, are refused.
/// A coordinate system has some three hundred; Qt's DOM tree takes up to 500 bytes for each, and
/// with this bound a document of 60 MB takes no more than ten times its size, whatever it is.
inline constexpr int maxMarkup = 400000;

/// False for a document that another parser than the library's own should not be given: one that
/// is too large, or has more markup than any coordinate system and is not safe to parse, or more
/// than a thousand attributes in a tag, which such a parser may compare each with every other. Also
/// false when the file cannot be read.
KELSTD_EXPORT bool isWithinLimits(const QString &fileName);

/// Which of the three bounds above a document exceeds, in words, translated: "its 70000000 bytes
/// are more than the 67108864 that are read". Empty for one that exceeds none, and where that
/// cannot be told: the file cannot be read, or is a pipe.
KELSTD_EXPORT QString exceededLimit(const QString &fileName);

} // namespace KelStd::io
