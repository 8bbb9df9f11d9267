#include <KelStd/io/DomParser.h>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#    include <QXmlDefaultHandler>
#    include <QXmlInputSource>
#    include <QXmlLocator>
#    include <QXmlSimpleReader>
#endif

namespace KelStd::io {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

bool parseXml(const QString &text, QDomDocument &document, QString &reason, int &line)
{
    return document.setContent(text, &reason, &line);
}

int lineOf(const QDomElement &element)
{
    return element.lineNumber();
}

#else

namespace {

/// Makes the tree as `QDomDocument::setContent` does in Qt 5. Document types are not in it: one that
/// declares something does not come here, and nobody asks for another.
class TreeMaker : public QXmlDefaultHandler
{
public:
    explicit TreeMaker(QDomDocument &document) : m_document(document), m_at(document) {}

    const QString &reason() const { return m_reason; }
    int line() const { return m_line; }

    void setDocumentLocator(QXmlLocator *locator) override { m_locator = locator; }

    bool startElement(const QString &, const QString &, const QString &name,
                      const QXmlAttributes &attributes) override
    {
        QDomElement element = m_document.createElement(name);
        for (int i = 0; i < attributes.count(); ++i)
            element.setAttribute(attributes.qName(i), attributes.value(i));
        // Only Qt's own parser can give a node its line. Elements have no value that anybody uses.
        element.setNodeValue(QString::number(m_locator->lineNumber()));
        m_at = m_at.appendChild(element);
        return !m_at.isNull();
    }

    bool endElement(const QString &, const QString &, const QString &) override
    {
        m_at = m_at.parentNode();
        return !m_at.isNull();
    }

    bool characters(const QString &text) override
    {
        if (m_at.isDocument())
            return false;
        if (m_isInData)
            m_at.appendChild(m_document.createCDATASection(text));
        else
            m_at.appendChild(m_document.createTextNode(text));
        return true;
    }

    bool startCDATA() override
    {
        m_isInData = true;
        return true;
    }

    bool endCDATA() override
    {
        m_isInData = false;
        return true;
    }

    bool processingInstruction(const QString &target, const QString &data) override
    {
        m_at.appendChild(m_document.createProcessingInstruction(target, data));
        return true;
    }

    bool comment(const QString &text) override
    {
        m_at.appendChild(m_document.createComment(text));
        return true;
    }

    bool fatalError(const QXmlParseException &exception) override
    {
        m_reason = exception.message();
        m_line = exception.lineNumber();
        return false;
    }

private:
    QDomDocument &m_document;
    QDomNode m_at; ///< what is open
    QXmlLocator *m_locator = nullptr;
    bool m_isInData = false;
    QString m_reason;
    int m_line = 0;
};

} // namespace

bool parseXml(const QString &text, QDomDocument &document, QString &reason, int &line)
{
    document = QDomDocument();
    document.createDocumentFragment(); // nothing can be put into a document before its first node
    TreeMaker maker(document);
    QXmlSimpleReader reader;
    // As `QDomDocument` sets them in Qt 5: prefixes are parts of names, blanks alone are no text.
    reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespaces"), false);
    reader.setFeature(QStringLiteral("http://xml.org/sax/features/namespace-prefixes"), true);
    reader.setFeature(
        QStringLiteral("http://qt-project.org/xml/features/report-whitespace-only-CharData"),
        false);
    reader.setContentHandler(&maker);
    reader.setErrorHandler(&maker);
    reader.setLexicalHandler(&maker);
    QXmlInputSource source;
    source.setData(text);
    const bool isParsed = reader.parse(&source, false);
    reason = maker.reason();
    line = maker.line();
    return isParsed;
}

int lineOf(const QDomElement &element)
{
    const QString line = element.nodeValue();
    return line.isEmpty() ? element.lineNumber() : line.toInt();
}

#endif

} // namespace KelStd::io
