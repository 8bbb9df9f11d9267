#pragma once

#include <KelStd/io/DocumentReview.h>

#include <QtXml/QDomElement>

namespace KelStd::io {

/// Findings on the elements of one document.
class ReviewFindings
{
public:
    explicit ReviewFindings(QList<DocumentFinding> &findings) : m_findings(findings) {}

    /// On an element itself or its text.
    void add(FindingKind kind, const QDomElement &element, const QString &written,
             const QString &understood = {});

    /// On an attribute, whether or not the element has it.
    void addAttribute(FindingKind kind, const QDomElement &element, const QString &name,
                      const QString &understood = {});

    /// Whether the text of an element (or an attribute of it) is doubted already. What follows from
    /// a misread number says nothing more.
    bool isDoubted(const QDomElement &element, const QString &attribute = {}) const;

private:
    struct Doubt
    {
        QDomElement element;
        QString attribute;
    };

    QList<DocumentFinding> &m_findings;
    QList<Doubt> m_doubts;
};

/// An attribute as it stands in a document: fuction="seven".
QString asAttribute(const QString &name, const QString &value);

/// A number as it would be written, with as many digits as it takes.
QString asNumber(double value);

} // namespace KelStd::io
