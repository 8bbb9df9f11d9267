#include <KelStd/io/ReviewFindings.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DomParser.h>
#include <KelStd/io/ShortenedText.h>
#include <KelStd/text/Translation.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <iterator>

namespace KelStd::io {

namespace {

struct KindRow
{
    FindingKind kind;
    const char *sentence; ///< %1 is what is written
};

constexpr KindRow kindRows[] = {
    {FindingKind::UnknownElement,
     QT_TRANSLATE_NOOP("QObject", "%1 is no element that is read here")},
    {FindingKind::UnknownAttribute,
     QT_TRANSLATE_NOOP("QObject", "%1 is no attribute that is read here")},
    {FindingKind::StrayText, QT_TRANSLATE_NOOP("QObject", "the text %1 is not read here")},
    {FindingKind::Repeated, QT_TRANSLATE_NOOP("QObject", "%1 is there more than once")},
    {FindingKind::WrongVersion,
     QT_TRANSLATE_NOOP("QObject", "%1 where ver=\"1\" is needed, so that it is passed over")},
    {FindingKind::MissingAttribute, QT_TRANSLATE_NOOP("QObject", "the attribute %1 is missing")},
    {FindingKind::MissingValue, QT_TRANSLATE_NOOP("QObject", "%1 has no value")},
    {FindingKind::UnknownWord, QT_TRANSLATE_NOOP("QObject", "%1 is none of the format's words")},
    {FindingKind::NotANumber, QT_TRANSLATE_NOOP("QObject", "%1 is no number that can be read")},
    {FindingKind::SplitText, QT_TRANSLATE_NOOP("QObject", "something stands within the text %1")},
    {FindingKind::DamagedText,
     QT_TRANSLATE_NOOP("QObject", "%1 has bytes that are no text in the document's encoding")},
    {FindingKind::NotUsed, QT_TRANSLATE_NOOP("QObject", "%1 is not used as it stands")},
    {FindingKind::UnitNotUsed, QT_TRANSLATE_NOOP("QObject", "%1 is not converted")},
    {FindingKind::Contradiction,
     QT_TRANSLATE_NOOP("QObject", "%1 is not that of the ellipsoid whose PROJ name is given")},
    {FindingKind::UnusedProjName,
     QT_TRANSLATE_NOOP("QObject", "%1 is no parameter that PROJ uses for this projection")},
    {FindingKind::NotOneProjName, QT_TRANSLATE_NOOP("QObject", "%1 is not one name of PROJ")},
    {FindingKind::Overruling,
     QT_TRANSLATE_NOOP("QObject", "%1 is not for a projection to say, it overrules the rest")},
    {FindingKind::Implausible, QT_TRANSLATE_NOOP("QObject", "%1 cannot be meant")},
    {FindingKind::WrongUnitSize,
     QT_TRANSLATE_NOOP("QObject", "%1 is not the size of the unit whose name is given")},
};

/// "param[FalseEast]", "x_translate"
QString step(const QDomElement &element)
{
    const QString key = element.attribute(Coord_IO::xml_attrName_name,
                                          element.attribute(Coord_IO::xml_attrName_keyName));
    return key.isEmpty() ? element.tagName() : QStringLiteral("%1[%2]").arg(element.tagName(), key);
}

QString pathOf(const QDomElement &element)
{
    QString path = step(element);
    for (QDomNode parent = element.parentNode(); parent.isElement(); parent = parent.parentNode())
        path.prepend(step(parent.toElement()) + QLatin1Char('/'));
    return path;
}

} // namespace

void ReviewFindings::add(FindingKind kind, const QDomElement &element, const QString &written,
                         const QString &understood)
{
    if (m_findings.size() >= maxFindings)
        return;
    m_findings.append({kind, pathOf(element), lineOf(element), written, understood});
    m_doubts.append({element, {}});
}

void ReviewFindings::addAttribute(FindingKind kind, const QDomElement &element, const QString &name,
                                  const QString &understood)
{
    add(kind, element,
        kind == FindingKind::MissingAttribute ? name : asAttribute(name, element.attribute(name)),
        understood);
    if (!m_doubts.isEmpty())
        m_doubts.last().attribute = name;
}

bool ReviewFindings::isDoubted(const QDomElement &element, const QString &attribute) const
{
    return std::any_of(m_doubts.cbegin(), m_doubts.cend(), [&](const Doubt &doubt) {
        return doubt.element == element && doubt.attribute == attribute;
    });
}

QString asAttribute(const QString &name, const QString &value)
{
    return QStringLiteral("%1=\"%2\"").arg(name, value);
}

QString asNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString describedFinding(const DocumentFinding &finding)
{
    const auto row = std::find_if(std::begin(kindRows), std::end(kindRows),
                                  [&finding](const KindRow &r) { return r.kind == finding.kind; });
    const bool isQuoted =
        finding.written.contains(QLatin1Char('"')) || finding.written.startsWith(QLatin1Char('<'));
    const QString written = isQuoted ? shortened(finding.written)
                                     : QStringLiteral("\"%1\"").arg(shortened(finding.written));
    QString text = QObject::tr("line %1, %2: %3")
                       .arg(QString::number(finding.line), shortened(finding.element),
                            translated(row->sentence).arg(written));
    if (!finding.understood.isEmpty())
        text += QObject::tr("; understood: %1").arg(shortened(finding.understood));
    return text;
}

} // namespace KelStd::io
