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

} // namespace KelStd::test
