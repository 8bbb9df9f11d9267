#pragma once

#include <KelStd/display/stShowConfig.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

/// The settings of a display configuration by names and words in plain ASCII. A new one is a row in
/// DisplaySettings.cpp.
namespace KelStd::cli {

/// What values a setting has.
enum class SettingKind
{
    Order,
    Style,
    Scale,
    Length,
    Pressure,
    Temperature,
    Decimals,
    Flag
};

/// One setting. Of the members that is used which holds values of its kind.
struct DisplaySetting
{
    const char *name;
    const char *meaning;
    SettingKind kind;
    EFormat stShowConfig::*format = nullptr;
    EUnit stShowConfig::*unit = nullptr;
    unsigned char stShowConfig::*decimals = nullptr;
    bool stShowConfig::*flag = nullptr;
};

const QVector<DisplaySetting> &displaySettings();

/// The setting of that name; null for none.
const DisplaySetting *findDisplaySetting(const QString &name);

/// The word for the setting's value in a configuration; "? (77)" for a value without one.
QString settingText(const DisplaySetting &setting, const stShowConfig &config);

/// The words that the setting takes; "0 to 17" for a number.
QStringList settingWords(const DisplaySetting &setting);

/// Gives the setting the value of that word; false for a word that it does not take.
bool takeSetting(const DisplaySetting &setting, const QString &word, stShowConfig &config);

} // namespace KelStd::cli
