#include <KelStd/positions/TextLine.h>

#include <KelStd/positions/DecodedLine.h>

namespace KelStd::positions {

bool isRemark(const QString &text)
{
    return text.trimmed().startsWith(QLatin1Char('#'));
}

TextLine textLineOf(std::string_view bytes, const ListShape &shape)
{
    const DecodedLine decodedLine =
        decoded(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
    const QString content = decodedLine.text.trimmed();

    TextLine line;
    line.bytes = bytes;
    line.isUtf8 = decodedLine.isUtf8;
    line.isRemark = isRemark(content);
    line.text = line.isRemark ? remarkOf(content) : decodedLine.text;
    line.split = line.isRemark ? splitLine(line.text) : splitLine(line.text, shape, &line.other);
    line.isSplit = line.split.mistake.isEmpty();
    if (line.isRemark)
        line.flaw = decodedLine.isText ? QString() : decodedLine.flaw;
    else
        line.flaw = decodedLine.flaw.isEmpty() ? line.split.mistake : decodedLine.flaw;
    if (!line.isSplit)
        line.split = splitAnywhere(line.text);
    line.isEmpty = decodedLine.flaw.isEmpty() && !line.isRemark
                   && (content.isEmpty() || (line.isSplit && isEmptyRow(line.split)));
    return line;
}

} // namespace KelStd::positions
