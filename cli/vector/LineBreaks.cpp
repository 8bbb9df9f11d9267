#include <cli/vector/LineBreaks.h>

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

namespace KelStd::cli::vector {

qint64 extensionsWithLineBreaks(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    QXmlStreamReader reader(&file);
    qint64 count = 0;
    int depth = 0; // within extensions, from 1
    QString text;  // since the last tag
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            if (depth > 0 || reader.name() == QLatin1String("extensions"))
                ++depth;
            text.clear();
            break;
        case QXmlStreamReader::Characters:
            if (depth > 0)
                text += reader.text();
            break;
        case QXmlStreamReader::EndElement:
            // Between tags there are the line breaks of the layout.
            if (depth > 0) {
                --depth;
                count += text.contains(QLatin1Char('\n')) && !text.trimmed().isEmpty() ? 1 : 0;
            }
            text.clear();
            break;
        default: break;
        }
    }
    return count;
}

} // namespace KelStd::cli::vector
