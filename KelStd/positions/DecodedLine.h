#pragma once

#include <KelStd/positions/LineSplitter.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>

namespace KelStd::positions {

/// What some programs put in front of a text in UTF-8.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The bytes of a line as text.
struct DecodedLine
{
    QString text;       ///< what can be made out, with blanks in place of control characters
    QString flaw;       ///< why the line cannot be read; empty when it can
    bool isText = true; ///< no control characters, which no list of positions has
    bool isUtf8 = true; ///< else the bytes are taken for Windows-1252
};

/// Reads UTF-8. A line that is not UTF-8 is read as Windows-1252, of which Latin-1 is a part: the
/// signs of angles and the digits are the same in all code pages of Windows for Latin letters.
DecodedLine decoded(const QByteArray &bytes);

/// Whether the bytes are text in UTF-16: at the beginning of an input by its byte-order mark,
/// anywhere by zeros in every second byte.
bool isUtf16(std::string_view bytes, bool isBeginning);

/// The fields of a line whose quotation marks are broken, which hide the separators behind them.
SplitLine splitAnywhere(const QString &text);

/// The remark behind the # of a comment.
QString remarkOf(const QString &comment);

} // namespace KelStd::positions
