#include "HostPlatform.h"

#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/platform/Toolkits.h>

#include <cmath>

HostPlatform &HostPlatform::instance()
{
    static HostPlatform platform;
    return platform;
}

AppConfig &AppConfig::getInstance()
{
    static AppConfig config;
    return config;
}

QDir AppConfig::homeDir() const
{
    return HostPlatform::instance().home;
}

QDir AppConfig::binDir() const
{
    return HostPlatform::instance().program;
}

LogLibrary *AppConfig::module_logLib() const
{
    static LogLibrary log;
    return &log;
}

ResourceQuery *AppConfig::module_resourceQuery() const
{
    static ResourceQuery query;
    return &query;
}

void LogLibrary::addLog(const QString &module, const QString &text, ELogType, bool)
{
    HostPlatform::instance().log << module + QLatin1String(": ") + text;
}

QString ResourceQuery::makeAndQuery_gnss_geoid_model_relativeFilepath(const QString &)
{
    return {};
}

namespace tk {

void Toolkits::GetDegreeMinuteSecond(double value, double *degree, double *minute, double *second,
                                     unsigned char)
{
    *degree = std::trunc(value);
    *minute = std::trunc((value - *degree) * 60.0);
    *second = ((value - *degree) * 60.0 - *minute) * 60.0;
}

void Toolkits::EraseTailZero(QString &text)
{
    ++HostPlatform::instance().numberTexts;
    if (!text.contains(QLatin1Char('.')))
        return;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
}

QString Toolkits::DoubleToString(double value, int decimals)
{
    QString text = QString::number(value, 'f', decimals);
    EraseTailZero(text);
    return text;
}

bool Toolkits::CopyDirectory(const QString &, const QString &, bool)
{
    return true;
}

bool Toolkits::ClearDirectory(const QString &)
{
    return true;
}

} // namespace tk
