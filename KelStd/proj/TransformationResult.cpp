#include <KelStd/proj/TransformationResult.h>

#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/LoadedProj.h>

#include <QtCore/QObject>

namespace KelStd::proj {

QString failureText(const PJ *transformation)
{
    const ProjFunctions &functions = LoadedProj::instance().functions();
    const int number = functions.proj_errno(transformation);
    // PROJ's text for "no error" is a null pointer.
    const char *text = number != 0 ? functions.proj_errno_string(number) : nullptr;
    return text != nullptr && *text != '\0' ? QString::fromUtf8(text)
                                            : QObject::tr("The position cannot be transformed.");
}

void logFailure(const QString &text, ELogType type)
{
    AppConfig::getInstance().module_logLib()->addLog(QStringLiteral("app_log"), text, type, false);
}

} // namespace KelStd::proj
