#pragma once

#include <QtCore/QString>

namespace KelStd::io {

/// So many characters of a document's text are shown in a line of a report.
inline constexpr int maxShown = 120;

inline QString shortened(const QString &text)
{
    return text.size() <= maxShown ? text : text.left(maxShown) + QStringLiteral("...");
}

} // namespace KelStd::io
