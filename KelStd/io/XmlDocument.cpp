#include <KelStd/io/XmlDocument.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSaveFile>
#include <QtCore/QTextCodec>
#include <QtCore/QTextStream>

namespace KelStd::io {

namespace {

constexpr const char *encoding = "UTF-8";
constexpr int indentation = 4;

bool failWith(const QFileDevice &file, QString *error)
{
    if (error != nullptr)
        *error = file.errorString();
    return false;
}

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

bool readDocument(const QString &fileName, QDomDocument &document, QString *error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return failWith(file, error);
    const QString text = decoded(file.readAll());
    return isSafeToParse(text) && document.setContent(text);
}

bool writeDocument(const QString &fileName, const std::function<QDomDocument()> &makeDocument,
                   QString *error)
{
    if (fileName.isEmpty()) {
        // A QSaveFile would open it.
        QFile nameless;
        nameless.open(QIODevice::WriteOnly);
        return failWith(nameless, error);
    }
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return failWith(file, error);

    const QDomDocument document = makeDocument();
    QTextStream stream(&file);
    stream.setCodec(encoding);
    document.save(stream, indentation, QDomNode::EncodingFromTextStream);
    stream.flush();
    if (!file.flush() || stream.status() != QTextStream::Ok)
        return failWith(file, error); // what was not committed is removed
    return file.commit() || failWith(file, error);
}

} // namespace KelStd::io
