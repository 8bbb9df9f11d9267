#pragma once

#include <cli/terminal/ExitStatus.h>

#include <QtCore/QStringList>

namespace KelStd::cli {

class Console;

/// One capability of the program. A new one is a row in the table of Command.cpp and a function.
struct Command
{
    const char *name; ///< one or two words
    const char *summary;
    /// `arguments` begin with the program's and the command's name as one word.
    ExitStatus (*run)(const QStringList &arguments, Console &console);
};

/// The program: `arguments` as the process was given them.
ExitStatus runProgram(const QStringList &arguments);

ExitStatus runConvert(const QStringList &arguments, Console &console);
ExitStatus runDatumFit(const QStringList &arguments, Console &console);
ExitStatus runDisplayReset(const QStringList &arguments, Console &console);
ExitStatus runDisplaySet(const QStringList &arguments, Console &console);
ExitStatus runDisplayShow(const QStringList &arguments, Console &console);
ExitStatus runDoctor(const QStringList &arguments, Console &console);
ExitStatus runFormat(const QStringList &arguments, Console &console);
ExitStatus runFormats(const QStringList &arguments, Console &console);
ExitStatus runGeoidConvert(const QStringList &arguments, Console &console);
ExitStatus runGeoidHeight(const QStringList &arguments, Console &console);
ExitStatus runGeoidInfo(const QStringList &arguments, Console &console);
ExitStatus runGeoidList(const QStringList &arguments, Console &console);
ExitStatus runGridAdd(const QStringList &arguments, Console &console);
ExitStatus runGridList(const QStringList &arguments, Console &console);
ExitStatus runLeapSeconds(const QStringList &arguments, Console &console);
ExitStatus runLibraryAdd(const QStringList &arguments, Console &console);
ExitStatus runLibraryCheck(const QStringList &arguments, Console &console);
ExitStatus runLibraryList(const QStringList &arguments, Console &console);
ExitStatus runLibraryRemove(const QStringList &arguments, Console &console);
ExitStatus runLibraryReplace(const QStringList &arguments, Console &console);
ExitStatus runLibraryRestore(const QStringList &arguments, Console &console);
ExitStatus runLibraryShow(const QStringList &arguments, Console &console);
ExitStatus runParse(const QStringList &arguments, Console &console);
ExitStatus runSiteCheck(const QStringList &arguments, Console &console);
ExitStatus runSiteFit(const QStringList &arguments, Console &console);
ExitStatus runSystemCompose(const QStringList &arguments, Console &console);
ExitStatus runSystemDefault(const QStringList &arguments, Console &console);
ExitStatus runSystemExport(const QStringList &arguments, Console &console);
ExitStatus runSystemImport(const QStringList &arguments, Console &console);
ExitStatus runSystemSearch(const QStringList &arguments, Console &console);
ExitStatus runSystemShifts(const QStringList &arguments, Console &console);
ExitStatus runSystemShow(const QStringList &arguments, Console &console);
ExitStatus runTime(const QStringList &arguments, Console &console);

} // namespace KelStd::cli
