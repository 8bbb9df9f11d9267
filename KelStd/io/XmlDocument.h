#pragma once

#include <KelStd/io/FileAccess.h>

#include <QtCore/QString>
#include <QtXml/QDomDocument>

#include <functional>

/// XML files read and written whole.
namespace KelStd::io {

/// Elements nested deeper than this are refused. A coordinate system nests four deep; a document
/// tree of some fifty thousand levels would exhaust the stack when it is destroyed.
inline constexpr int deepestNesting = 256;

/// True when `text` nests elements no deeper than `deepestNesting` and has no declarations of its
/// own in a document type: an entity declared there could hold elements that nest anew at each
/// mention. Whether the text is well-formed is left to the parser.
bool isSafeToParse(const QString &text);

/// What becomes of carriage returns.
enum class LineEnds
{
    AsTheyAre,
    WithoutReturns ///< dropped wherever they stand, as a file in text mode drops them
};

/// Reads the whole file. Returns false when it cannot be opened, with the file's own text in
/// `error` (when given), and, without a text, when it is no XML that is safe to parse.
bool readDocument(const QString &fileName, Source source, QDomDocument &document, QString *error,
                  LineEnds lineEnds = LineEnds::AsTheyAre);

/// A document that holds nothing but the processing instruction with which every file begins.
QDomDocument documentFrame();

/// Replaces the file by what `makeDocument` returns, whole or not at all: an exception of
/// `makeDocument`, too, leaves the old file. Returns false with the file's own text in `error`
/// (when given) unless every byte reached the file.
bool writeDocument(const QString &fileName, const std::function<QDomDocument()> &makeDocument,
                   QString *error);

} // namespace KelStd::io
