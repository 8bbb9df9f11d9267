#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::calibration {

/// An HTML page that grows section by section, and needs nothing besides itself. Texts are escaped.
class ReportPage
{
public:
    void heading(const QString &text);
    void paragraph(const QString &text);
    void code(const QString &text);
    void list(const QStringList &items);

    /// An SVG element, as it is.
    void drawing(const QString &svg) { m_body += svg; }

    /// A table of labels and values, which `endTable` ends.
    void beginFacts();
    void fact(const QString &label, const QString &value);

    /// A table with headings, which `endTable` ends.
    void beginTable(const QStringList &headings);
    void row(const QStringList &cells, bool isSuspect);
    void endTable();

    QByteArray finished(const QString &title) const;

private:
    QString m_body;
    QStringList m_headings;
};

/// A text as it stands in HTML.
QString escaped(const QString &text);

/// A number with so many decimals, without the sign of what rounds to nothing.
QString fixed(double value, int decimals);

} // namespace KelStd::calibration
