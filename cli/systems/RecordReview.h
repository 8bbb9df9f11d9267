#pragma once

#include <KelStd/io/DocumentReview.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd::cli {

class CommandLine;
class Console;

/// Findings on the documents of a record.
struct RecordReview
{
    QString file; ///< the document
    QList<io::DocumentFinding> findings;
};

/// Adds the option --lenient.
void addLenientOption(CommandLine &line);

/// What the help of a command says about what it refuses.
QString reviewHelp();

/// Reports the findings, one a line: as the reasons for refusing the document, or, with --lenient,
/// as warnings. True when the record may be used.
bool mayBeUsed(const RecordReview &review, const CommandLine &line, Console &console);

/// Reports findings on a document that is to be written into a library, and which nothing makes
/// acceptable there. True when there are none.
bool mayBeWritten(const RecordReview &review, Console &console);

} // namespace KelStd::cli
