#include "support/LogCapture.h"

namespace KelStd::test {

LogCapture::LogCapture()
{
    LogLibrary::setSink(
        [this](const QString &module, const QString &text, ELogType type, bool flag) {
            m_entries.append({module, text, type, flag});
        });
}

LogCapture::~LogCapture()
{
    LogLibrary::setSink({});
}

QList<LogCapture::Entry> LogCapture::entriesOf(const QString &module) const
{
    QList<Entry> of;
    for (const Entry &entry : m_entries) {
        if (entry.module == module)
            of << entry;
    }
    return of;
}

} // namespace KelStd::test
