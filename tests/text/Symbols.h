#pragma once

#include <QtCore/QString>

namespace KelStd::test {

/// A text of a test as a QString. The signs of angles stand in it as they are printed: ° (U+00B0),
/// ′ (U+2032) and ″ (U+2033).
inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace KelStd::test
