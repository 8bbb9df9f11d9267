#include <KelStd/io/XmlDocument.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTextCodec>
#include <QtCore/QTextStream>

namespace KelStd::io {

namespace {

constexpr const char *encoding = "UTF-8";
constexpr int indentation = 4;

/// The codec that an XML declaration names, by its bytes.
QTextCodec *declaredCodec(const QByteArray &bytes)
{
    constexpr int longestDeclaration = 256;
    static const QRegularExpression pattern(
        QStringLiteral("\\A\\s*<\\?xml\\s[^>]*?encoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)[\"']"));
    const QRegularExpressionMatch match =
        pattern.match(QString::fromLatin1(bytes.left(longestDeclaration)));
    return match.hasMatch() ? QTextCodec::codecForName(match.captured(1).toLatin1()) : nullptr;
}

/// A byte order mark decides, then the declaration, then UTF-8.
QString decoded(const QByteArray &bytes)
{
    QTextCodec *codec = QTextCodec::codecForUtfText(bytes, declaredCodec(bytes));
    if (codec == nullptr)
        codec = QTextCodec::codecForName(encoding);
    return codec->toUnicode(bytes);
}

} // namespace

bool readDocument(const QString &fileName, Source source, QDomDocument &document, QString *error,
                  LineEnds lineEnds)
{
    QFile file;
    if (!openForReading(file, fileName, source, error))
        return false;
    QString text = decoded(file.readAll());
    if (lineEnds == LineEnds::WithoutReturns)
        text.remove(QLatin1Char('\r'));
    return isSafeToParse(text) && document.setContent(text);
}

QDomDocument documentFrame()
{
    QDomDocument document;
    document.appendChild(document.createProcessingInstruction(
        QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")));
    return document;
}

bool writeDocument(const QString &fileName, const std::function<QDomDocument()> &makeDocument,
                   QString *error)
{
    const auto write = [&makeDocument](QIODevice &file) {
        const QDomDocument document = makeDocument();
        QTextStream stream(&file);
        stream.setCodec(encoding);
        document.save(stream, indentation, QDomNode::EncodingFromTextStream);
        stream.flush();
        return stream.status() == QTextStream::Ok;
    };
    return replaceFile(fileName, QIODevice::Text, write, error);
}

} // namespace KelStd::io
