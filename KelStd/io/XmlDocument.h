#pragma once

#include <KelStd/io/DocumentFailure.h>
#include <KelStd/io/FileAccess.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtXml/QDomDocument>

#include <functional>

/// XML files read and written whole.
namespace KelStd::io {

/// False for a text with U+FFFE or U+FFFF, which XML leaves out (XML 1.0, section 2.2), or with
/// half a surrogate pair, which no encoding has.
bool isXmlText(const QString &text);

/// Readies a text for Qt's parser, which takes more than XML is and reads some of it as something
/// else. Whether the text is well-formed otherwise is left to the parser.
///
/// Fails for a text for which `isXmlText` is false, that nests elements deeper than
/// `deepestNesting`, that has more markup than `maxMarkup`, that has declarations of its own in a
/// document type (an entity declared there could hold elements that nest anew at each mention),
/// that mentions entities which are not XML's own (they would vanish, and a number end there), or
/// in which a tag has an attribute twice. References to characters beyond U+FFFF, of which the
/// parser would keep sixteen bits, become the characters, and so do references to the two halves of
/// one.
DocumentFailure makeSafeToParse(QString &text);

/// What becomes of carriage returns.
enum class LineEnds
{
    AsTheyAre,
    WithoutReturns ///< dropped wherever they stand, as a file in text mode drops them
};

/// Whether a document may have bytes that are no text in its encoding. They are read as U+FFFD.
enum class Damage
{
    None,
    Some
};

/// Reads the whole file into `document`, which is as far as the parser came in one that is not
/// well-formed. The kinds of failures are those of the file and of the XML.
DocumentFailure readDocument(const QString &fileName, Source source, QDomDocument &document,
                             LineEnds lineEnds = LineEnds::AsTheyAre);

/// As above, and tells of `damage` in a document that was read.
DocumentFailure readDocument(const QString &fileName, Source source, QDomDocument &document,
                             Damage &damage);

/// Puts into `error` (when given) what the contract's reading functions say of a failure, which
/// have a text only for a file that cannot be opened and for a missing element. Returns true for no
/// failure.
bool reportedAsContract(const DocumentFailure &failure, QString *error);

/// A document that holds nothing but the processing instruction with which every file begins.
QDomDocument documentFrame();

/// Replaces the file by what `makeDocument` returns, whole or not at all: an exception of
/// `makeDocument`, too, leaves the old file. Fails unless every byte reached the file, and for a
/// document that could not be read back: one larger than `largestDocument`, or with U+FFFE, U+FFFF
/// or half a surrogate pair in a text.
DocumentFailure writeDocument(const QString &fileName,
                              const std::function<QDomDocument()> &makeDocument);

/// As above; returns whether it was written, with the failure's text in `error` (when given)
/// otherwise.
bool writeDocument(const QString &fileName, const std::function<QDomDocument()> &makeDocument,
                   QString *error);

/// What `writeDocument` would write, without a file. Fails for a document that could not be read
/// back, and leaves `bytes`.
DocumentFailure documentBytes(const QDomDocument &document, QByteArray &bytes);

/// Makes `parsed` what `readDocument` would make of what `writeDocument` would write, without a
/// file. Fails as they do.
DocumentFailure reparse(const QDomDocument &document, QDomDocument &parsed);

} // namespace KelStd::io
