#include <KelStd/proj/ProjMessages.h>

#include <KelStd/platform/AppConfig.h>

#include <proj.h>

namespace KelStd::proj {

namespace {

/// Where what is said on this thread is kept; null throws it away.
thread_local ProjMessages *listening = nullptr;

} // namespace

ProjMessages::Listener::Listener(ProjMessages &messages) : m_previous(listening)
{
    listening = &messages;
}

ProjMessages::Listener::~Listener()
{
    listening = m_previous;
}

void ProjMessages::take(void * /*data*/, int level, const char *text)
{
    if (listening == nullptr || text == nullptr)
        return;
    // What an error leads to is logged by the operation, as severely as it takes it.
    listening->m_messages.append({level <= PJ_LOG_ERROR ? LogType_Warning : LogType_Message,
                                  QString::fromUtf8(text).trimmed()});
}

void ProjMessages::log() const
{
    if (m_messages.isEmpty())
        return;
    LogLibrary *const log = AppConfig::getInstance().module_logLib();
    for (const Message &message : m_messages)
        log->addLog(QStringLiteral("proj"), message.text, message.type, false);
}

} // namespace KelStd::proj
