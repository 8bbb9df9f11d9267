#include <KelStd/calibration/ReportPage.h>

#include <KelStd/text/TextDirection.h>

namespace KelStd::calibration {

namespace {

/// Light and dark, by what the reader's system prefers; paper is white. Below the width of a tablet
/// a row of a table becomes a list with its headings.
constexpr char styleSheet[] = R"css(
:root{color-scheme:light dark;--ink:#1c2228;--paper:#fff;--faint:#5b6670;--line:#ccd3d9;
--accent:#0b5fa5;--alarm:#b3261e;--fill:#0b5fa51f}
@media (prefers-color-scheme:dark){:root{--ink:#e6eaee;--paper:#14181c;--faint:#a0abb5;
--line:#3a444d;--accent:#6cb6f5;--alarm:#ff8a80;--fill:#6cb6f529}}
@media print{:root{color-scheme:light;--ink:#000;--paper:#fff;--faint:#444;--line:#999;
--accent:#0b5fa5;--alarm:#b3261e;--fill:#0b5fa51f}}
@page{size:A4;margin:15mm}
*{box-sizing:border-box}
body{margin:0 auto;padding:1.2rem;max-width:60rem;background:var(--paper);color:var(--ink);
font:1rem/1.45 system-ui,sans-serif;overflow-wrap:anywhere}
h1{font-size:1.5rem;margin:0 0 .4rem}
h2{font-size:1.1rem;margin:1.6rem 0 .4rem;break-after:avoid}
p{margin:.4rem 0}
small,.faint{color:var(--faint)}
table{border-collapse:collapse;width:100%;font-size:.82rem;font-variant-numeric:tabular-nums}
th,td{border-bottom:1px solid var(--line);padding:.2rem .35rem;text-align:right;
vertical-align:top}
th{overflow-wrap:normal}
td{white-space:nowrap}
th:first-child,td:first-child{text-align:left}
td:first-child,.facts td{white-space:normal;min-width:4rem}
tr{break-inside:avoid}
.facts td{text-align:left}
.facts td:first-child{width:13rem;color:var(--faint)}
.suspect td{color:var(--alarm);font-weight:600}
.warnings li{margin:.3rem 0}
pre{white-space:pre-wrap;border:1px solid var(--line);padding:.6rem;font-size:.8rem;margin:.4rem 0}
svg{display:block;width:100%;max-width:40rem;height:auto;break-inside:avoid}
svg text{fill:var(--ink);font:12px system-ui,sans-serif}
.hull{fill:var(--fill);stroke:var(--line)}
.point,.height{fill:var(--accent)}
.unused{fill:none;stroke:var(--faint)}
circle.suspect,rect.suspect{fill:var(--alarm)}
.vector{stroke:var(--alarm);stroke-width:2}
.ellipse{fill:none;stroke:var(--faint)}
.bar{stroke:var(--ink);stroke-width:2;fill:none}
@media screen and (max-width:48rem){
thead{display:none}
tr{display:block;border-bottom:2px solid var(--line);padding:.3rem 0}
td,td:first-child{display:flex;justify-content:space-between;gap:1rem;border:0;width:auto;
text-align:right}
td::before{content:attr(data-label);color:var(--faint);text-align:left}
.facts td{display:block;text-align:left}
}
@media print{body{padding:0}}
)css";

} // namespace

void ReportPage::heading(const QString &text)
{
    m_body += QStringLiteral("<h2>%1</h2>\n").arg(escaped(text));
}

void ReportPage::paragraph(const QString &text)
{
    m_body += QStringLiteral("<p>%1</p>\n").arg(escaped(text));
}

void ReportPage::code(const QString &text)
{
    m_body += QStringLiteral("<pre>%1</pre>\n").arg(escaped(text));
}

void ReportPage::beginFacts()
{
    m_body += QStringLiteral("<table class=\"facts\"><tbody>\n");
}

void ReportPage::fact(const QString &label, const QString &value)
{
    m_body +=
        QStringLiteral("<tr><td>%1</td><td>%2</td></tr>\n").arg(escaped(label), escaped(value));
}

void ReportPage::beginTable(const QStringList &headings)
{
    m_headings = headings;
    m_body += QStringLiteral("<table><thead><tr>");
    for (const QString &text : headings)
        m_body += QStringLiteral("<th scope=\"col\">%1</th>").arg(escaped(text));
    m_body += QStringLiteral("</tr></thead><tbody>\n");
}

void ReportPage::row(const QStringList &cells, bool isSuspect)
{
    m_body += isSuspect ? QStringLiteral("<tr class=\"suspect\">") : QStringLiteral("<tr>");
    for (int i = 0; i < cells.size(); ++i) {
        m_body += QStringLiteral("<td data-label=\"%1\">%2</td>")
                      .arg(escaped(m_headings.value(i)), escaped(cells.at(i)));
    }
    m_body += QStringLiteral("</tr>\n");
}

void ReportPage::endTable()
{
    m_body += QStringLiteral("</tbody></table>\n");
}

void ReportPage::list(const QStringList &items)
{
    m_body += QStringLiteral("<ul class=\"warnings\">\n");
    for (const QString &item : items)
        m_body += QStringLiteral("<li>%1</li>\n").arg(escaped(item));
    m_body += QStringLiteral("</ul>\n");
}

QByteArray ReportPage::finished(const QString &title) const
{
    const QString head = QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n"
                                        "<meta charset=\"utf-8\">\n"
                                        "<meta name=\"viewport\" content=\"width=device-width, "
                                        "initial-scale=1\">\n<title>")
                         + escaped(title) + QStringLiteral("</title>\n<style>")
                         + QLatin1String(styleSheet)
                         + QStringLiteral("</style>\n</head>\n<body>\n<h1>") + escaped(title)
                         + QStringLiteral("</h1>\n");
    return (head + m_body + QStringLiteral("</body>\n</html>\n")).toUtf8();
}

QString escaped(const QString &text)
{
    QString shown = text;
    for (QChar &c : shown) { // control characters are no HTML
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char(' ');
        else if (turnsDirection(c))
            c = QChar::ReplacementCharacter;
    }
    return shown.toHtmlEscaped();
}

QString fixed(double value, int decimals)
{
    const QString text = QString::number(value, 'f', decimals);
    return text.toDouble() == 0.0 ? QString::number(0.0, 'f', decimals) : text;
}

} // namespace KelStd::calibration
