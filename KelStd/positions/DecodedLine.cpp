#include <KelStd/positions/DecodedLine.h>

#include <KelStd/text/TextDecoder.h>

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// The characters of the bytes 0x80 to 0x9F; those of the others are their numbers. The bytes
/// without a character stay control characters.
constexpr char16_t windows1252[] = {
    u'\u20AC', u'\u0081', u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', u'\u008D', u'\u017D', u'\u008F',
    u'\u0090', u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', u'\u009D', u'\u017E', u'\u0178'};
constexpr ushort firstOfPage = 0x80;
constexpr ushort lastOfPage = 0x9F;

QString fromWindows1252(const QByteArray &bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c.unicode() >= firstOfPage && c.unicode() <= lastOfPage)
            c = QChar(windows1252[c.unicode() - firstOfPage]);
    }
    return text;
}

/// A control character other than the tabulator and the line break of quoted fields.
bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control && c != QLatin1Char('\t') && c != QLatin1Char('\n');
}

/// The same, but for the carriage returns of line breaks.
bool holdsControls(const QString &text)
{
    if (std::none_of(text.cbegin(), text.cend(), isControl))
        return false;
    for (int i = 0; i < text.size(); ++i) {
        const bool isOfBreak =
            text.at(i) == QLatin1Char('\r') && text.mid(i + 1, 1) == QLatin1String("\n");
        if (isControl(text.at(i)) && !isOfBreak)
            return true;
    }
    return false;
}

} // namespace

DecodedLine decoded(const QByteArray &bytes)
{
    TextDecoder decoder("UTF-8");
    DecodedLine line;
    line.text = decoder.decode(bytes);
    line.isUtf8 = !decoder.hasFoundDamage() && !decoder.isInsideCharacter();
    if (!line.isUtf8)
        line.text = fromWindows1252(bytes);
    if (holdsControls(line.text)) {
        line.flaw = QStringLiteral("the line holds control characters: it is not text");
        line.isText = false;
        line.text.remove(QChar(QChar::Null));
        std::replace_if(line.text.begin(), line.text.end(), isControl, QLatin1Char(' '));
    }
    return line;
}

bool isUtf16(std::string_view bytes, bool isBeginning)
{
    constexpr std::size_t minBytes = 4; // fewer bytes do not tell
    const std::string_view mark = bytes.substr(0, 2);
    if (isBeginning && (mark == "\xFF\xFE" || mark == "\xFE\xFF"))
        return true;
    if (bytes.size() < minBytes)
        return false;
    for (const std::size_t first : {0U, 1U}) {
        bool hasOnlyZeros = true;
        for (std::size_t i = first; i < bytes.size() && hasOnlyZeros; i += 2)
            hasOnlyZeros = bytes[i] == '\0';
        if (hasOnlyZeros && bytes[1 - first] != '\0')
            return true;
    }
    return false;
}

SplitLine splitAnywhere(const QString &text)
{
    static const QRegularExpression anySeparator(QStringLiteral("[\\s,;\"]+"));
    SplitLine line;
    line.separator = QLatin1Char(',');
    line.fields = text.split(anySeparator, Qt::SkipEmptyParts);
    return line;
}

QString remarkOf(const QString &comment)
{
    int start = 0;
    while (start < comment.size()
           && (comment.at(start) == QLatin1Char('#') || comment.at(start).isSpace()))
        ++start;
    return comment.mid(start);
}

} // namespace KelStd::positions
