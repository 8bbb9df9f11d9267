#include "support/ResidentMemory.h"

#include <QtCore/QFile>
#include <QtCore/QList>

namespace KelStd::bench {

long residentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("no /proc/self/status on this system");
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).simplified().split(' ').first().toLong();
    }
    qFatal("no VmRSS in /proc/self/status");
}

} // namespace KelStd::bench
