#pragma once

#include <KelStd/platform/LogLibrary.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd::test {

/// Collects every log entry while it lives; the default sink is back afterwards.
class LogCapture
{
public:
    struct Entry
    {
        QString module;
        QString text;
        ELogType type;
        bool flag;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    const QList<Entry> &entries() const { return m_entries; }
    /// Those under a module name alone.
    QList<Entry> entriesOf(const QString &module) const;

private:
    QList<Entry> m_entries;
};

} // namespace KelStd::test
