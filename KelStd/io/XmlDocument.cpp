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
QTextCodec *codecOf(const QByteArray &bytes)
{
    QTextCodec *const codec = QTextCodec::codecForUtfText(bytes, declaredCodec(bytes));
    return codec != nullptr ? codec : QTextCodec::codecForName(encoding);
}

/// A text may well have U+FFFD itself.
Damage damageOf(const QByteArray &bytes, const QString &text)
{
    if (!text.contains(QChar(QChar::ReplacementCharacter)))
        return Damage::None;
    QTextCodec::ConverterState state;
    codecOf(bytes)->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars > 0 || state.remainingChars > 0 ? Damage::Some : Damage::None;
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

/// The text of a file. Its bytes, as large as half of the text, are not kept.
bool readText(const QString &fileName, Source source, QString &text, Damage *damage, QString *error)
{
    QFile file;
    if (!openForReading(file, fileName, source, error))
        return false;
    QByteArray bytes;
    if (!readBytes(file, bytes))
        return false;
    text = codecOf(bytes)->toUnicode(bytes);
    if (damage != nullptr)
        *damage = damageOf(bytes, text);
    return true;
}

bool parse(QString &text, LineEnds lineEnds, QDomDocument &document)
{
    if (lineEnds == LineEnds::WithoutReturns)
        text.remove(QLatin1Char('\r'));
    return makeSafeToParse(text) && document.setContent(text);
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

/// Why a document of this text could not be read back; empty when it can.
QString faultOf(const QString &text, qint64 size)
{
    if (!isXmlText(text))
        return QObject::tr("A text has a character that no XML document can hold");
    return size > largestDocument ? QObject::tr("The document would be too large to be read")
                                  : QString();
}

} // namespace

bool readDocument(const QString &fileName, Source source, QDomDocument &document, QString *error,
                  LineEnds lineEnds)
{
    QString text;
    return readText(fileName, source, text, nullptr, error) && parse(text, lineEnds, document);
}

bool readDocument(const QString &fileName, Source source, QDomDocument &document, Damage &damage,
                  QString *error)
{
    QString text;
    return readText(fileName, source, text, &damage, error)
           && parse(text, LineEnds::AsTheyAre, document);
}

bool isWithinLimits(const QString &fileName)
{
    constexpr int harmless = 20000; // signs of markup; a coordinate system has some six hundred
    constexpr int maxAttributes = 1000;
    QFile file;
    QByteArray bytes;
    if (!openForReading(file, fileName, Source::RegularFile, nullptr) || !readBytes(file, bytes))
        return false;
    if (bytes.count('<') + bytes.count('=') <= harmless)
        return true;
    QString text = codecOf(bytes)->toUnicode(bytes);
    bytes.clear();
    return makeSafeToParse(text, maxAttributes);
}

QString exceededLimit(const QString &fileName)
{
    QFile file;
    if (!openForReading(file, fileName, Source::RegularFile, nullptr))
        return {};
    QByteArray bytes;
    if (!readBytes(file, bytes)) {
        return QObject::tr("its %1 bytes are more than the %2 that are read")
            .arg(file.size())
            .arg(largestDocument);
    }
    QString text = codecOf(bytes)->toUnicode(bytes);
    bytes.clear();
    Bound exceeded = Bound::None;
    makeSafeToParse(text, maxMarkup, &exceeded);
    switch (exceeded) {
    case Bound::Nesting:
        return QObject::tr("its elements are nested deeper than the %1 levels that are read")
            .arg(deepestNesting);
    case Bound::Markup:
        return QObject::tr("its tags and attributes are more than the %1 that are read")
            .arg(maxMarkup);
    case Bound::None: break;
    }
    return {};
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
        fault = faultOf(text, bytes.size());
        return fault.isEmpty() && writeAll(file, bytes);
    };
    if (replaceFile(fileName, QIODevice::Text, write, error))
        return true;
    if (!fault.isEmpty() && error != nullptr)
        *error = fault;
    return false;
}

bool reparse(const QDomDocument &document, QDomDocument &parsed, QString *error)
{
    QString text = textOf(document);
    const QString fault = faultOf(text, text.toUtf8().size());
    if (!fault.isEmpty() && error != nullptr)
        *error = fault;
    return fault.isEmpty() && parse(text, LineEnds::AsTheyAre, parsed);
}

} // namespace KelStd::io
