#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/// What `kelstd doctor` looks at, and what it says.
namespace KelStd::cli {

class Console;

/// One thing that was looked at.
struct Finding
{
    enum State
    {
        Ok,
        Made, ///< the doctor's own work of this run
        Problem,
        Doubt,  ///< it works, and may be another thing than is meant
        Waiting ///< cannot be right before another problem is solved
    };

    QString label;
    State state;
    QString text;
    QString advice; ///< of a problem or doubt: what to do about it
};

/// Everything that was found, in its order.
class Findings
{
public:
    void ok(const char *label, const QString &text) { add(label, Finding::Ok, text, {}); }
    /// What is in order, and was made now where `isMade`.
    void ok(const char *label, const QString &text, bool isMade)
    {
        add(label, isMade ? Finding::Made : Finding::Ok, text, {});
    }
    void problem(const char *label, const QString &text, const QString &advice)
    {
        add(label, Finding::Problem, text, advice);
    }
    void doubt(const char *label, const QString &text, const QString &advice)
    {
        add(label, Finding::Doubt, text, advice);
    }
    void waiting(const char *label);

    int problems() const { return count(Finding::Problem); }
    int doubts() const { return count(Finding::Doubt); }

    void print(Console &console) const;

private:
    void add(const char *label, Finding::State state, const QString &text, const QString &advice);
    int count(Finding::State state) const;

    QList<Finding> m_findings;
};

} // namespace KelStd::cli
