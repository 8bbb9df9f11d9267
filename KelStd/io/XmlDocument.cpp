#include <KelStd/io/XmlDocument.h>

#include <QtCore/QObject>
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

/// Reads to the end. False for more than a document may have, of which the rest stays unread.
bool readBytes(QFile &file, QByteArray &bytes)
{
    if (file.size() > largestDocument)
        return false;
    if (!file.isSequential()) {
        bytes = file.readAll();
        return true;
    }
    constexpr qint64 piece = 1 << 16;
    while (bytes.size() <= largestDocument) {
        const QByteArray more = file.read(piece);
        if (more.isEmpty())
            return true;
        bytes += more;
    }
    return false;
}

/// What the file holds, before it is encoded.
QString textOf(const QDomDocument &document)
{
    QString text;
    QTextStream stream(&text);
    stream.setCodec(encoding); // which the processing instruction names
    document.save(stream, indentation, QDomNode::EncodingFromTextStream);
    return text;
}

} // namespace

bool readDocument(const QString &fileName, Source source, QDomDocument &document, QString *error,
                  LineEnds lineEnds)
{
    QFile file;
    if (!openForReading(file, fileName, source, error))
        return false;
    QByteArray bytes;
    if (!readBytes(file, bytes))
        return false;
    QString text = decoded(bytes);
    if (lineEnds == LineEnds::WithoutReturns)
        text.remove(QLatin1Char('\r'));
    return makeSafeToParse(text) && document.setContent(text);
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
    QString fault; // what would make it a file, but none that comes back
    const auto write = [&makeDocument, &fault](QIODevice &file) {
        const QString text = textOf(makeDocument());
        const QByteArray bytes = text.toUtf8();
        if (!isXmlText(text))
            fault = QObject::tr("A text has a character that no XML document can hold");
        else if (bytes.size() > largestDocument)
            fault = QObject::tr("The document would be too large to be read");
        return fault.isEmpty() && writeAll(file, bytes);
    };
    if (replaceFile(fileName, QIODevice::Text, write, error))
        return true;
    if (!fault.isEmpty() && error != nullptr)
        *error = fault;
    return false;
}

} // namespace KelStd::io
