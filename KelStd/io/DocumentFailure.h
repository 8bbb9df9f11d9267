#pragma once

#include <KelStd/Export.h>
#include <KelStd/Failure.h>

#include <QtCore/QString>

/// Why a document was not read or written.
///
///     io::DocumentFailure failure;
///     if (!Coord_IO::xml_read(fileName, coord, failure))
///         report(fileName, io::describedFailure(failure));
namespace KelStd::io {

/// What a caller can decide by.
enum class DocumentFault
{
    None = 0, ///< no failure

    // The file
    CannotBeOpened,  ///< the text is the file's own
    CannotBeWritten, ///< the text is the file's own; the old file is as it was
    Empty,           ///< the file has no byte
    TooLarge,        ///< more than `largestDocument` bytes, read or to be written

    // The XML
    NotWellFormed,   ///< not XML: the text says what, as Qt's parser or our own look at it found
    NestedTooDeeply, ///< elements deeper than `deepestNesting`
    TooMuchMarkup,   ///< more than `maxMarkup`
    HasDeclarations, ///< its document type declares entities, elements or attributes of its own
    ForeignText,     ///< U+FFFE, U+FFFF or half a surrogate pair, which no document can hold

    // What it says
    OtherVersion,   ///< an element that is needed has another "ver" than 1, or none
    MissingElement, ///< a coordinate system without one of its records; the text is the contract's

};

/// The line is where the document is at fault; where an element is, that in which its first tag
/// ends. It is 0 for what concerns the file, and for a document that was not written. The text is
/// for people, never empty for a failure, and shortens what it quotes. It is English; translated
/// are those of `CannotBeOpened`, of `MissingElement` and of writing, which the contract's
/// functions say.
using DocumentFailure = Failure<DocumentFault>;

/// The failure in one line: "line 3: no well-formed XML: tag mismatch". Empty without a failure.
KELSTD_EXPORT QString describedFailure(const DocumentFailure &failure);

} // namespace KelStd::io
