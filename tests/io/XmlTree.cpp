#include "io/XmlTree.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

namespace KelStd::test {

namespace {

XmlElement readElement(QXmlStreamReader &reader)
{
    XmlElement element;
    element.name = reader.name().toString();
    for (const QXmlStreamAttribute &attribute : reader.attributes())
        element.attributes[attribute.name().toString()] = attribute.value().toString();
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::EndElement)
            break;
        if (token == QXmlStreamReader::StartElement)
            element.children << readElement(reader);
        else if (token == QXmlStreamReader::Characters)
            element.text += reader.text();
    }
    return element;
}

/// `name="value"` with a number that is an attribute in one form.
QString inOneForm(const QRegularExpressionMatch &attribute)
{
    const QString name = attribute.captured(1);
    QString value = attribute.captured(2);
    if (name == QLatin1String("biggerHalfAxle") || name == QLatin1String("reciprocal")) {
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        EXPECT_TRUE(isNumber) << name.toStdString() << ": " << value.toStdString();
        value = QString::number(number, 'g', 17);
    }
    return QStringLiteral(" %1=\"%2\"").arg(name, value);
}

QString withSortedAttributesOfTag(const QString &tag)
{
    static const QRegularExpression attribute(QStringLiteral("\\s(\\w+)=\"([^\"]*)\""));
    QStringList attributes;
    int first = -1;
    int end = -1;
    for (auto matches = attribute.globalMatch(tag); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (first < 0)
            first = match.capturedStart();
        end = match.capturedEnd();
        attributes << inOneForm(match);
    }
    if (first < 0)
        return tag;
    attributes.sort();
    return tag.left(first) + attributes.join(QString()) + tag.mid(end);
}

} // namespace

QStringList XmlElement::childNames() const
{
    QStringList names;
    for (const XmlElement &one : children)
        names << one.name;
    return names;
}

QList<XmlElement> XmlElement::all(const char *childName) const
{
    QList<XmlElement> found;
    for (const XmlElement &one : children) {
        if (one.name == QLatin1String(childName))
            found << one;
    }
    return found;
}

XmlElement XmlElement::child(const char *childName) const
{
    const QList<XmlElement> found = all(childName);
    EXPECT_FALSE(found.isEmpty()) << "no element " << childName;
    return found.isEmpty() ? XmlElement() : found.first();
}

QString XmlElement::attribute(const char *attributeName) const
{
    const QString key = QString::fromLatin1(attributeName);
    EXPECT_TRUE(attributes.contains(key)) << "no attribute " << attributeName;
    return attributes.value(key);
}

XmlElement parsed(const QByteArray &document)
{
    QXmlStreamReader reader(document);
    XmlElement root;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            root = readElement(reader);
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return root;
}

QByteArray withSortedAttributes(const QByteArray &document)
{
    static const QRegularExpression startTag(QStringLiteral("<\\w(?:\"[^\"]*\"|[^\">])*>"));
    const QString text = QString::fromUtf8(document);
    QString result;
    int done = 0;
    for (auto matches = startTag.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        result += text.mid(done, match.capturedStart() - done);
        result += withSortedAttributesOfTag(match.captured());
        done = match.capturedEnd();
    }
    return (result + text.mid(done)).toUtf8();
}

} // namespace KelStd::test
