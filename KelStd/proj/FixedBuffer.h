#pragma once

#include <QtCore/QString>

#include <cstddef>

/// PROJ definitions travel in character buffers of fixed size. A definition that does not fit is
/// never shortened: a definition cut in the middle can still be a valid one, of another system.
namespace KelStd::proj {

/// Of each of the four definitions of a conversion chain, terminating zero included.
inline constexpr std::size_t chainDefinitionSize = 512;

/// Of a geoid model's definition, which is little more than the path of its grid.
inline constexpr std::size_t geoidDefinitionSize = 520;

/// Of every other definition.
inline constexpr std::size_t definitionSize = 1000;

/// Writes `text` as zero-terminated UTF-8. When it does not fit, or holds a zero character (which
/// would cut it short), leaves the empty text and returns false.
bool copyToBuffer(const QString &text, char *buffer, std::size_t size);

} // namespace KelStd::proj
