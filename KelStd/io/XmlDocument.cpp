#include <KelStd/io/XmlDocument.h>

#include <KelStd/io/DocumentLimits.h>
#include <KelStd/io/DomParser.h>
#include <KelStd/text/TextDecoder.h>

#include <QtCore/QObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QTextStream>

#include <utility>

namespace KelStd::io {

namespace {

constexpr const char *encoding = "UTF-8";
constexpr int indentation = 4;

/// The encoding that an XML declaration names, by its bytes; empty where it names none.
QByteArray declaredEncoding(const QByteArray &bytes)
{
    constexpr int longestDeclaration = 256;
    static const QRegularExpression pattern(
        QStringLiteral("\\A\\s*<\\?xml\\s[^>]*?encoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)[\"']"));
    const QRegularExpressionMatch match =
        pattern.match(QString::fromLatin1(bytes.left(longestDeclaration)));
    return match.captured(1).toLatin1();
}

/// A byte order mark decides, then the declaration, then UTF-8.
TextDecoder decoderOf(const QByteArray &bytes)
{
    const QByteArray mark = encodingOfMark(bytes);
    TextDecoder decoder(mark.isEmpty() ? declaredEncoding(bytes) : mark);
    return decoder.isKnown() ? std::move(decoder) : TextDecoder(encoding);
}

/// The bytes as text, in which what is no text is U+FFFD. A text may well have U+FFFD itself.
QString decoded(const QByteArray &bytes, Damage *damage)
{
    TextDecoder decoder = decoderOf(bytes);
    QString text = decoder.decode(bytes);
    if (decoder.isInsideCharacter())
        text += QChar(QChar::ReplacementCharacter);
    if (damage != nullptr)
        *damage =
            decoder.hasFoundDamage() || decoder.isInsideCharacter() ? Damage::Some : Damage::None;
    return text;
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

DocumentFailure tooLarge()
{
    return {DocumentFault::TooLarge,
            QStringLiteral("the file is larger than %1 MiB").arg(largestDocument / (1024 * 1024)),
            0};
}

/// The text of a file. Its bytes, as large as half of the text, are not kept.
DocumentFailure readText(const QString &fileName, Source source, QString &text, Damage *damage)
{
    QFile file;
    QString error;
    if (!openForReading(file, fileName, source, &error))
        return {DocumentFault::CannotBeOpened, error, 0};
    QByteArray bytes;
    if (!readBytes(file, bytes))
        return tooLarge();
    if (bytes.isEmpty())
        return {DocumentFault::Empty, QStringLiteral("the file is empty"), 0};
    text = decoded(bytes, damage);
    return {};
}

DocumentFailure parse(QString &text, LineEnds lineEnds, QDomDocument &document)
{
    if (lineEnds == LineEnds::WithoutReturns)
        text.remove(QLatin1Char('\r'));
    DocumentFailure failure = makeSafeToParse(text);
    QString reason;
    int line = 0;
    if (!failure && !parseXml(text, document, reason, line)) {
        failure = {DocumentFault::NotWellFormed,
                   QStringLiteral("no well-formed XML: %1").arg(reason), line};
    }
    return failure;
}

/// What the file holds, before it is encoded.
QString textOf(const QDomDocument &document)
{
    QString text;
    QTextStream stream(&text);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    stream.setCodec(encoding); // which the processing instruction names, and Qt 6 takes by itself
#endif
    document.save(stream, indentation, QDomNode::EncodingFromTextStream);
    return text;
}

/// Why a document of this text could not be read back, if it could not.
DocumentFailure faultOf(const QString &text, qint64 size)
{
    if (!isXmlText(text)) {
        return {DocumentFault::ForeignText,
                QObject::tr("A text has a character that no XML document can hold"), 0};
    }
    if (size > largestDocument) {
        return {DocumentFault::TooLarge, QObject::tr("The document would be too large to be read"),
                0};
    }
    return {};
}

} // namespace

DocumentFailure readDocument(const QString &fileName, Source source, QDomDocument &document,
                             LineEnds lineEnds)
{
    QString text;
    const DocumentFailure failure = readText(fileName, source, text, nullptr);
    return failure ? failure : parse(text, lineEnds, document);
}

DocumentFailure readDocument(const QString &fileName, Source source, QDomDocument &document,
                             Damage &damage)
{
    QString text;
    const DocumentFailure failure = readText(fileName, source, text, &damage);
    return failure ? failure : parse(text, LineEnds::AsTheyAre, document);
}

bool reportedAsContract(const DocumentFailure &failure, QString *error)
{
    if (error != nullptr
        && (failure.kind == DocumentFault::CannotBeOpened
            || failure.kind == DocumentFault::MissingElement))
        *error = failure.text;
    return !failure;
}

QDomDocument documentFrame()
{
    QDomDocument document;
    document.appendChild(document.createProcessingInstruction(
        QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")));
    return document;
}

DocumentFailure writeDocument(const QString &fileName,
                              const std::function<QDomDocument()> &makeDocument)
{
    DocumentFailure failure; // of a document that could be written, but not read back
    const auto write = [&makeDocument, &failure](QIODevice &file) {
        const QString text = textOf(makeDocument());
        const QByteArray bytes = text.toUtf8();
        failure = faultOf(text, bytes.size());
        return !failure && writeAll(file, bytes);
    };
    QString error;
    if (!replaceFile(fileName, QIODevice::Text, write, &error) && !failure)
        failure = {DocumentFault::CannotBeWritten, error, 0};
    return failure;
}

bool writeDocument(const QString &fileName, const std::function<QDomDocument()> &makeDocument,
                   QString *error)
{
    const DocumentFailure failure = writeDocument(fileName, makeDocument);
    if (failure && error != nullptr)
        *error = failure.text;
    return !failure;
}

DocumentFailure documentBytes(const QDomDocument &document, QByteArray &bytes)
{
    const QString text = textOf(document);
    const QByteArray encoded = text.toUtf8();
    const DocumentFailure fault = faultOf(text, encoded.size());
    if (!fault)
        bytes = encoded;
    return fault;
}

DocumentFailure reparse(const QDomDocument &document, QDomDocument &parsed)
{
    QString text = textOf(document);
    const DocumentFailure fault = faultOf(text, text.toUtf8().size());
    return fault ? fault : parse(text, LineEnds::AsTheyAre, parsed);
}

} // namespace KelStd::io
