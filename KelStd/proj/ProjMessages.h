#pragma once

#include <KelStd/platform/LogLibrary.h>

#include <QtCore/QString>
#include <QtCore/QVector>

namespace KelStd::proj {

/// What PROJ says of its own accord while it creates a transformation: why it refuses a definition,
/// which file it cannot read. It is kept until the host's log may be called.
///
/// PROJ also says something of every position that it cannot transform. That is thrown away: the
/// position's failure has the reason, and a million of them would fill the log.
class ProjMessages
{
public:
    /// Keeps what PROJ says on this thread while it lives.
    class Listener
    {
    public:
        explicit Listener(ProjMessages &messages);
        ~Listener();
        Listener(const Listener &) = delete;
        Listener &operator=(const Listener &) = delete;

    private:
        ProjMessages *const m_previous;
    };

    /// Hands them to the host's log; not to be called within a `WorkingDirectoryScope`.
    void log() const;

    /// What PROJ calls, on every context: it would write to standard error otherwise.
    static void take(void *data, int level, const char *text);

private:
    struct Message
    {
        ELogType type;
        QString text;
    };
    QVector<Message> m_messages;
};

} // namespace KelStd::proj
