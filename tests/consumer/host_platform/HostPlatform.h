#pragma once

#include <QtCore/QDir>
#include <QtCore/QStringList>

/// What the host's implementation of the platform interfaces is told, and was asked.
struct HostPlatform
{
    QDir home;
    QDir program;
    QStringList log;
    int numberTexts = 0;

    static HostPlatform &instance();
};
