#pragma once

#include <KelStd/io/DocumentLimits.h>
#include <KelStd/io/FileAccess.h>

#include <QtCore/QString>
#include <QtXml/QDomDocument>

#include <functional>

/// XML files read and written whole.
namespace KelStd::io {

/// False for a text with U+FFFE or U+FFFF, which XML leaves out (XML 1.0, section 2.2), or with
/// half a surrogate pair, which no encoding has.
bool isXmlText(const QString &text);

/// What there is too much of in a text.
enum class Bound
{
    None,
    Nesting,
    Markup ///< tags and attributes
};

/// Readies a text for Qt's parser, which takes more than XML is and reads some of it as something
/// else. Whether the text is well-formed otherwise is left to the parser.
///
/// False for a text that is none for `isXmlText`, that nests elements deeper than `deepestNesting`,
/// that has more markup than `maxMarkup` or a tag with more than `maxAttributes`, that has
/// declarations of its own in a document type (an entity declared there could hold elements that
/// nest anew at each mention), that mentions entities which are not XML's own (they would vanish,
/// and a number end there), or in which a tag has an attribute twice. References to characters
/// beyond U+FFFF, of which the parser would keep sixteen bits, become the characters, and so do
/// references to the two halves of one.
///
/// `exceeded` (when given) is the bound that the text exceeds.
bool makeSafeToParse(QString &text, int maxAttributes = maxMarkup, Bound *exceeded = nullptr);

/// What becomes of carriage returns.
enum class LineEnds
{
    AsTheyAre,
    WithoutReturns ///< dropped wherever they stand, as a file in text mode drops them
};

/// Reads the whole file. Returns false when it cannot be opened, with the file's own text in
/// `error` (when given), and, without a text, when it is larger than `largestDocument` or no XML
/// that is safe to parse.
bool readDocument(const QString &fileName, Source source, QDomDocument &document, QString *error,
                  LineEnds lineEnds = LineEnds::AsTheyAre);

/// Whether a document may have bytes that are no text in its encoding. They are read as U+FFFD.
enum class Damage
{
    None,
    Some
};

/// As above, and tells of `damage` in a document that was read.
bool readDocument(const QString &fileName, Source source, QDomDocument &document, Damage &damage,
                  QString *error);

/// A document that holds nothing but the processing instruction with which every file begins.
QDomDocument documentFrame();

/// Replaces the file by what `makeDocument` returns, whole or not at all: an exception of
/// `makeDocument`, too, leaves the old file. Returns false with the file's own text in `error`
/// (when given) unless every byte reached the file, and with one of its own for a document that
/// could not be read back: one larger than `largestDocument`, or with U+FFFE, U+FFFF or half a
/// surrogate pair in a text.
bool writeDocument(const QString &fileName, const std::function<QDomDocument()> &makeDocument,
                   QString *error);

/// Makes `parsed` what `readDocument` would make of what `writeDocument` would write, without a
/// file. False as they are.
bool reparse(const QDomDocument &document, QDomDocument &parsed, QString *error);

} // namespace KelStd::io
