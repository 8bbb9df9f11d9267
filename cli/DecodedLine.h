#pragma once

#include <cli/LineSplitter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace KelStd::cli {

/// The bytes of a line as text.
struct DecodedLine
{
    QString text; ///< what can be made out, with blanks in place of control characters
    QString flaw; ///< why the line cannot be read; empty when it can
    bool isText =
        true; ///< no control characters, which only data of another kind and mischief have
};

/// Reads UTF-8, and what is none as Latin-1, with a flaw.
DecodedLine decoded(const QByteArray &bytes);

/// The fields of a line whose quotation marks are broken, which hide the separators behind them.
SplitLine splitAnywhere(const QString &text);

/// The remark behind the # of a comment.
QString remarkOf(const QString &comment);

} // namespace KelStd::cli
