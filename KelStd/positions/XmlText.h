#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string_view>

namespace KelStd::positions {

/// Appends a UTF-8 text as XML 1.0 has it between tags and in attributes. A character that XML has
/// no form for, such as a control character, becomes U+FFFD.
void appendXml(QByteArray &bytes, std::string_view text);
void appendXml(QByteArray &bytes, const QString &text);

} // namespace KelStd::positions
