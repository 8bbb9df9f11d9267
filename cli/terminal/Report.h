#pragma once

#include <QtCore/QString>

namespace KelStd::cli {

class Console;

/// A report of labelled values: sections with a heading, and below each its values in one column.
class Report
{
public:
    explicit Report(Console &console) : m_console(console) {}

    /// Starts a section. After the first, with a blank line before it.
    void section(const QString &heading, const QString &value = {});

    void value(const QString &label, const QString &text);

    /// A line of the section without a label.
    void line(const QString &text);

private:
    void labelled(const QString &label, const QString &text);

    Console &m_console;
    bool m_isFirst = true;
};

} // namespace KelStd::cli
