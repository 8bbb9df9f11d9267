// The display configuration of a library shown, changed and put back.

#include <cli/commands/Command.h>

#include <cli/library/DirectoryOption.h>
#include <cli/library/LibraryChange.h>
#include <cli/systems/ConfiguredDisplay.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/UnknownWord.h>
#include <cli/values/DisplaySettings.h>

#include <KelStd/library/LibraryDirectory.h>
#include <KelStd/positions/PrintOptions.h>
#include <KelStd/text/UnitWords.h>

#include <QtCore/QDataStream>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <optional>

namespace KelStd::cli {

namespace {

QString exitStatusHelp()
{
    return QStringLiteral("Exit status: 0 done, 2 usage, 3 there is no library, or its file cannot "
                          "be read\nor written, 4 done, but standard output cannot be written.");
}

ExitStatus fail(const QString &reason, Console &console)
{
    console.report(reason);
    return ExitStatus::Environment;
}

QString unusable(const QString &fileName, const QString &fault)
{
    return QStringLiteral("the display configuration %1 is not used: %2; 'kelstd display reset' "
                          "removes it")
        .arg(fileName, fault);
}

/// The configuration that is to be changed or shown; nothing after a report. One that has a value
/// without a word can be mended by a setting.
std::optional<stShowConfig> currentConfig(const QString &fileName, Console &console)
{
    if (!QFileInfo::exists(fileName) && !QFileInfo(fileName).isSymLink())
        return stShowConfig();
    const DisplayFile file = readDisplayFile(fileName);
    if (file.config && file.isWhole)
        return file.config;
    console.report(unusable(fileName, file.fault));
    return std::nullopt;
}

/// Whole or not at all.
bool write(const QString &fileName, const stShowConfig &config, QString &reason)
{
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly)) {
        QDataStream stream(&file);
        config.save(stream);
        if (stream.status() == QDataStream::Ok && file.flush() && file.commit())
            return true;
    }
    reason = file.errorString();
    return false;
}

/// What a host has to know: docs/display-configuration.md.
void noteOnDefinitions(const stShowConfig &config, Console &console)
{
    constexpr int fewestDecimals = 3;
    if (config.distanceUnit == Unit_Meter && config.distancePrecision >= fewestDecimals)
        return;
    console.report(QStringLiteral(
        "note: an application that takes this configuration over for its conversions writes the "
        "axes of ellipsoids by distance-unit and distance-decimals, and computes wrong positions "
        "unless they are m and at least 3; kelstd itself does not"));
}

QStringList settingNames()
{
    QStringList names;
    for (const DisplaySetting &setting : displaySettings())
        names += QString::fromLatin1(setting.name);
    return names;
}

/// A style whose decimals are part of a setting of their own.
struct StyleRow
{
    EFormat stShowConfig::*style;
    unsigned char stShowConfig::*decimals;
    const char *decimalsName;
};

constexpr StyleRow styleRows[] = {
    {&stShowConfig::latLongFormat, &stShowConfig::latLongPrecision, "latlong-decimals"},
    {&stShowConfig::angleFormat, &stShowConfig::anglePrecision, "angle-decimals"},
};

/// With another style of angles the decimals become those that show as much as before: 6 of a
/// second are micrometres on the ground, 6 of a radian six metres. Says so; empty for no change.
QString followStyle(const DisplaySetting &setting, const stShowConfig &before, stShowConfig &config)
{
    constexpr double metresPerDegree = 111195.08;
    for (const StyleRow &row : styleRows) {
        const AngleStyle *old = findAngleStyle(before.*row.style);
        const AngleStyle *style = findAngleStyle(config.*row.style);
        if (setting.format != row.style || old == nullptr || style == nullptr || old == style)
            continue;
        const int decimals = positions::angleDecimalsFor(*style, before.*row.decimals,
                                                         old->degrees * metresPerDegree);
        config.*row.decimals = static_cast<unsigned char>(decimals);
        return QStringLiteral(", and %1 to %2").arg(QLatin1String(row.decimalsName)).arg(decimals);
    }
    return {};
}

QList<Proposal> settingProposals(const TypedLine &)
{
    QList<Proposal> settings;
    for (const DisplaySetting &setting : displaySettings())
        settings.append({QString::fromLatin1(setting.name), QString::fromLatin1(setting.meaning)});
    return settings;
}

/// The words of the setting that is named before.
QList<Proposal> settingValues(const TypedLine &line)
{
    const DisplaySetting *setting = findDisplaySetting(line.positionals.value(0));
    if (setting == nullptr || setting->kind == SettingKind::Decimals)
        return {};
    QList<Proposal> words;
    for (const QString &word : settingWords(*setting))
        words.append({word, QString()});
    return words;
}

} // namespace

ExitStatus runDisplayShow(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS]"),
                     QStringLiteral("Shows how tables and --format configured print: each setting, "
                                    "its value, and\nwhat it is for."),
                     QStringLiteral("Without a file \"display.bin\" in the library these are the "
                                    "defaults.\n\n")
                         + exitStatusHelp());
    line.setExamples(QStringLiteral("kelstd display show"),
                     QStringLiteral("kelstd display show --dir team"));
    addDirectoryOption(line);
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    const auto library = openLibrary(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    const QString fileName = library->path(LibraryPlace::Display);
    const auto config = currentConfig(fileName, console);
    if (!config)
        return ExitStatus::Environment;
    QString warning;
    if (!configuredDisplay(*library, warning) && !warning.isEmpty())
        console.report(warning);
    for (const DisplaySetting &setting : displaySettings()) {
        console.print(QStringLiteral("%1  %2  %3")
                          .arg(QLatin1String(setting.name), -27)
                          .arg(settingText(setting, *config), -10)
                          .arg(QLatin1String(setting.meaning)));
    }
    return ExitStatus::Success;
}

ExitStatus runDisplaySet(const QStringList &arguments, Console &console)
{
    CommandLine line(QStringLiteral("[OPTIONS] NAME VALUE"),
                     QStringLiteral("Changes one setting of how tables and --format configured "
                                    "print."),
                     QStringLiteral("NAME is one that 'kelstd display show' prints. Plain numbers "
                                    "for other programs\n(CSV, JSON) follow no setting.\n\n")
                         + exitStatusHelp());
    line.setPositionals({Values::ofSource(&settingProposals), Values::ofSource(&settingValues)});
    line.setExamples(QStringLiteral("kelstd display set latlong-style degree"),
                     QStringLiteral("kelstd display set --dir team plane-decimals 3"));
    addDirectoryOption(line);
    if (const auto status = line.parse(arguments, console, 2))
        return *status;
    if (line.positionals().size() < 2)
        return line.refuse(QStringLiteral("NAME and VALUE are needed"), console);
    const QString name = line.positionals().at(0);
    const QString word = line.positionals().at(1);
    const DisplaySetting *setting = findDisplaySetting(name);
    if (setting == nullptr) {
        return line.refuse(
            QStringLiteral("there is no setting '%1'%2").arg(name, nearHint(name, settingNames())),
            console);
    }
    stShowConfig tried;
    if (!takeSetting(*setting, word, tried)) {
        const QStringList words = settingWords(*setting);
        const bool hasFactor =
            setting->kind == SettingKind::Length || setting->kind == SettingKind::Pressure;
        const QString hint = hasFactor ? nearUnitHint(word, words) : nearHint(word, words);
        return line.refuse(QStringLiteral("'%1' is no value of %2%3")
                               .arg(word, name,
                                    (hint.isEmpty() ? QStringLiteral("; there are ")
                                                    : hint + QStringLiteral(" There are "))
                                        + words.join(QLatin1String(", "))),
                           console);
    }

    const auto library = lockLibrary(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    const QString fileName = library->directory.path(LibraryPlace::Display);
    auto config = currentConfig(fileName, console);
    if (!config)
        return ExitStatus::Environment;
    const stShowConfig before = *config;
    takeSetting(*setting, word, *config);
    const QString followed = followStyle(*setting, before, *config);
    QString reason;
    if (!write(fileName, *config, reason))
        return fail(QStringLiteral("cannot write %1: %2").arg(fileName, reason), console);
    if (setting->unit == &stShowConfig::distanceUnit
        || setting->decimals == &stShowConfig::distancePrecision)
        noteOnDefinitions(*config, console);
    console.printChange(QStringLiteral("set %1 to %2%3: %4").arg(name, word, followed, fileName));
    return ExitStatus::Success;
}

ExitStatus runDisplayReset(const QStringList &arguments, Console &console)
{
    CommandLine line(
        QStringLiteral("[OPTIONS]"), QStringLiteral("Brings the defaults of all settings back."),
        QStringLiteral("The library's file \"display.bin\" is removed.\n\n") + exitStatusHelp());
    line.setExamples(QStringLiteral("kelstd display reset"),
                     QStringLiteral("kelstd display reset --dir team"));
    addDirectoryOption(line);
    if (const auto status = line.parse(arguments, console, 0))
        return *status;
    const auto library = lockLibrary(line, Missing::IsAnError, console);
    if (!library)
        return ExitStatus::Environment;
    const QString fileName = library->directory.path(LibraryPlace::Display);
    QFile file(fileName);
    const QFileInfo info(fileName);
    if (!info.exists() && !info.isSymLink()) {
        console.print(QStringLiteral("all settings have their defaults"));
        return ExitStatus::Success;
    }
    if (!file.remove()) {
        return fail(QStringLiteral("cannot remove %1: %2").arg(fileName, file.errorString()),
                    console);
    }
    console.printChange(
        QStringLiteral("all settings have their defaults; removed %1").arg(fileName));
    return ExitStatus::Success;
}

} // namespace KelStd::cli
