#include <KelStd/io/ReviewedShape.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/ReviewedValue.h>
#include <KelStd/io/ValueText.h>

#include <QtCore/QObject>
#include <QtCore/QSet>

#include <algorithm>

namespace KelStd::io {

namespace {

using Names = Coord_IO;

bool isOfXmlItself(const QString &attribute)
{
    return attribute == QLatin1String("xmlns") || attribute.startsWith(QLatin1String("xmlns:"))
           || attribute.startsWith(QLatin1String("xml:"))
           || attribute.startsWith(QLatin1String("xsi:"));
}

QString asElement(const QDomElement &element)
{
    return QStringLiteral("<%1>").arg(element.tagName());
}

} // namespace

QStringList attributeNames(const QDomElement &element)
{
    constexpr int maxNames = 64; // more than any element of the format has
    const QDomNamedNodeMap attributes = element.attributes();
    QStringList names;
    for (int i = 0; i < std::min(attributes.size(), maxNames); ++i)
        names += attributes.item(i).nodeName();
    names.sort();
    return names;
}

void reviewShape(const QDomElement &element, const Shape &shape, ReviewFindings &findings)
{
    for (const QString &name : attributeNames(element)) {
        if (!shape.attributes.contains(name) && !isOfXmlItself(name))
            findings.addAttribute(FindingKind::UnknownAttribute, element, name);
    }
    QSet<QString> seen;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString name = child.tagName();
        if (shape.repeated.contains(name))
            continue;
        if (!shape.single.contains(name)) {
            findings.add(FindingKind::UnknownElement, child, asElement(child));
            continue;
        }
        if (seen.contains(name)) {
            findings.add(FindingKind::Repeated, child, asElement(child),
                         QObject::tr("the first one"));
        }
        seen += name;
    }
    if (!shape.hasText) {
        const QString text = wholeText(element).trimmed();
        if (!text.isEmpty())
            findings.add(FindingKind::StrayText, element, text);
    }
}

bool reviewVersion(const QDomElement &element, ReviewFindings &findings)
{
    if (hasReadableVersion(element))
        return true;
    const QString version = element.attribute(Names::xml_attrName_ver);
    findings.add(FindingKind::WrongVersion, element,
                 version.isEmpty() ? asElement(element)
                                   : asAttribute(Names::xml_attrName_ver, version),
                 QObject::tr("nothing"));
    return false;
}

void reviewPresence(const QDomElement &element, const QString &attribute, const QString &understood,
                    ReviewFindings &findings)
{
    if (element.attribute(attribute).isEmpty())
        findings.addAttribute(FindingKind::MissingAttribute, element, attribute, understood);
}

void reviewNumber(const QDomElement &element, const QString &attribute, ReviewFindings &findings)
{
    const QString text = element.attribute(attribute);
    if (!text.isEmpty() && !isReadAsNumber(text)) {
        findings.addAttribute(FindingKind::NotANumber, element, attribute,
                              asNumber(text.toDouble()));
    }
}

} // namespace KelStd::io
