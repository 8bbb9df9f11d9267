#pragma once

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

} // namespace KelStd::io
