#include <KelStd/positions/XmlText.h>

#include <QtCore/QVector>

#include <algorithm>

namespace KelStd::positions {

namespace {

bool isPlain(char c)
{
    return c >= ' ' && c <= '~' && c != '<' && c != '>' && c != '&' && c != '"' && c != '\'';
}

bool isAllowed(uint code)
{
    const bool isControl = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return !isControl && !isSurrogate && code != 0xFFFE && code != 0xFFFF;
}

} // namespace

void appendXml(QByteArray &bytes, std::string_view text)
{
    const int size = static_cast<int>(text.size());
    if (std::all_of(text.begin(), text.end(), isPlain))
        bytes.append(text.data(), size);
    else
        appendXml(bytes, QString::fromUtf8(text.data(), size));
}

void appendXml(QByteArray &bytes, const QString &text)
{
    QString allowed;
    for (const char32_t code : text.toUcs4()) {
        if (isAllowed(code))
            allowed += QString::fromUcs4(&code, 1);
        else
            allowed += QChar(QChar::ReplacementCharacter);
    }
    // A reader makes a line feed of a carriage return that stands as it is.
    bytes += allowed.toHtmlEscaped()
                 .replace(QLatin1Char('\''), QLatin1String("&#39;"))
                 .replace(QLatin1Char('\r'), QLatin1String("&#13;"))
                 .toUtf8();
}

} // namespace KelStd::positions
