#include <cli/doctor/Findings.h>

#include <cli/terminal/Console.h>

namespace KelStd::cli {

namespace {

struct MarkRow
{
    Finding::State state;
    const char *mark;
};

constexpr MarkRow marks[] = {
    {Finding::Ok, "ok"},       {Finding::Made, "made"}, {Finding::Problem, "problem"},
    {Finding::Doubt, "doubt"}, {Finding::Waiting, "-"},
};

QString markOf(Finding::State state)
{
    for (const MarkRow &row : marks) {
        if (row.state == state)
            return QString::fromLatin1(row.mark);
    }
    return {};
}

} // namespace

void Findings::waiting(const char *label)
{
    add(label, Finding::Waiting, QStringLiteral("waits for the above"), {});
}

void Findings::print(Console &console) const
{
    for (const Finding &finding : m_findings) {
        console.print(QStringLiteral("%1  %2  %3")
                          .arg(markOf(finding.state), -7)
                          .arg(finding.label, -22)
                          .arg(finding.text));
        if (!finding.advice.isEmpty())
            console.print(QStringLiteral("         -> %1").arg(finding.advice));
    }
}

void Findings::add(const char *label, Finding::State state, const QString &text,
                   const QString &advice)
{
    m_findings += {QString::fromLatin1(label), state, text, advice};
}

int Findings::count(Finding::State state) const
{
    int found = 0;
    for (const Finding &finding : m_findings)
        found += finding.state == state ? 1 : 0;
    return found;
}

} // namespace KelStd::cli
