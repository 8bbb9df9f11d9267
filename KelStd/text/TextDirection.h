#pragma once

#include <QtCore/QChar>

namespace KelStd {

/// Whether the character is one of those that set the direction in which the text behind it is
/// shown: embeddings, overrides and isolates (Unicode Standard Annex 9, section 2). A name with one
/// that it does not close would have the numbers behind it read backwards.
inline bool turnsDirection(QChar c)
{
    return (c >= QChar(0x202A) && c <= QChar(0x202E)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
}

} // namespace KelStd
