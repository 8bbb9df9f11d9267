#include <KelStd/positions/DecodedLine.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTextCodec>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// A control character other than the tabulator; `last` is the highest of those that count.
bool isControl(QChar c, char16_t last)
{
    return c.category() == QChar::Other_Control && c != QLatin1Char('\t') && c <= QChar(last);
}

} // namespace

DecodedLine decoded(const QByteArray &bytes)
{
    // Characters of the Windows code pages have the numbers of the upper control characters.
    constexpr char16_t lastOfLatin1 = u'\u007F';
    constexpr char16_t last = u'\u009F';
    QTextCodec::ConverterState state;
    DecodedLine line;
    line.text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    const bool isUtf8 = state.invalidChars == 0 && state.remainingChars == 0;
    if (!isUtf8) {
        line.text = QString::fromLatin1(bytes);
        line.flaw = QStringLiteral("the line is not UTF-8 text");
    }
    const auto isStranger = [isUtf8](QChar c) {
        return isControl(c, isUtf8 ? last : lastOfLatin1);
    };
    if (std::any_of(line.text.cbegin(), line.text.cend(), isStranger)) {
        line.flaw = QStringLiteral("the line holds control characters: it is not text");
        line.isText = false;
        line.text.remove(QChar(QChar::Null));
        std::replace_if(line.text.begin(), line.text.end(), isStranger, QLatin1Char(' '));
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
