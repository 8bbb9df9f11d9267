#include <KelStd/platform/LogLibrary.h>

#include <QtCore/QLoggingCategory>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(kelstdLog, "kelstd")

void toQtMessageHandler(const QString &module, const QString &text, ELogType type, bool /*flag*/)
{
    const QString line = module + QLatin1String(": ") + text;
    switch (type) {
    case LogType_Error: qCCritical(kelstdLog).noquote() << line; return;
    case LogType_Warning: qCWarning(kelstdLog).noquote() << line; return;
    case LogType_Message: break;
    }
    qCInfo(kelstdLog).noquote() << line;
}

LogLibrary::Sink &currentSink()
{
    // Never destroyed: static objects may log in their destructors.
    static LogLibrary::Sink &sink = *new LogLibrary::Sink(toQtMessageHandler);
    return sink;
}

} // namespace

void LogLibrary::addLog(const QString &module, const QString &text, ELogType type, bool flag)
{
    currentSink()(module, text, type, flag);
}

void LogLibrary::setSink(Sink sink)
{
    currentSink() = sink ? std::move(sink) : Sink(toQtMessageHandler);
}
