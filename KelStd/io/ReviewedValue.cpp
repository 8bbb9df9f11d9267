#include <KelStd/io/ReviewedValue.h>

#include <KelStd/io/ValueText.h>

#include <QtCore/QObject>

#include <optional>

namespace KelStd::io {

namespace {

/// How a text is misread as a value of a kind.
struct Misreading
{
    FindingKind kind;
    QString understood;
};

/// Nothing when the text is read as it stands.
std::optional<Misreading> misread(EValueType type, const QString &text)
{
    Taken taken = Taken::AsItStands;
    const QVariant value = fromValueText(type, text, &taken);
    switch (taken) {
    case Taken::AsItStands: break;
    case Taken::AsAnotherWord:
        return Misreading{FindingKind::UnknownWord, toValueText(type, value)};
    case Taken::AsAnotherNumber:
        return Misreading{FindingKind::NotANumber, value.userType() == QMetaType::Double
                                                       ? asNumber(value.toDouble())
                                                       : toValueText(type, value)};
    }
    return std::nullopt;
}

} // namespace

QString wholeText(const QDomElement &element)
{
    QString text;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isText())
            text += child.nodeValue(); // a single piece is shared and not copied
    }
    return text;
}

void reviewValue(const QDomElement &element, EValueType type, ReviewFindings &findings)
{
    const QString whole = wholeText(element);
    const QDomNode first = element.firstChild();
    const QString taken = first.isText() ? first.nodeValue() : QString();
    if (whole.size() != taken.size() && whole.trimmed() != taken.trimmed()) {
        findings.add(FindingKind::SplitText, element, whole,
                     taken.isEmpty() ? QObject::tr("nothing")
                                     : toValueText(type, fromValueText(type, taken)));
        return;
    }
    if (!first.isText())
        return;
    if (const auto misreading = misread(type, taken))
        findings.add(misreading->kind, element, taken, misreading->understood);
}

} // namespace KelStd::io
