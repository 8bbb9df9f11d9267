#pragma once

#include <KelStd/platform/PlatformExport.h>

#include <QtCore/QString>

namespace tk {

/// The host's toolkit: number texts and directory work.
class KELSTD_PLATFORM_EXPORT Toolkits
{
public:
    /// Splits an angle [decimal degrees] into whole degrees, whole minutes and seconds, each with
    /// the sign of the input; minutes and seconds stay below 60.
    ///
    /// The seconds keep all their digits: they are the shortest decimal number that, together with
    /// the degrees and minutes, still denotes the given double (116.1 is 116, 6, 0 although its
    /// double lies beside it). `decimals`, what the caller means to show, is a hint that never
    /// costs a digit. A value that is not finite comes back as the degrees, with zeros.
    static void GetDegreeMinuteSecond(double value, double *degree, double *minute, double *second,
                                      unsigned char decimals);

    /// Removes the trailing zeros of a number text's fractional part, and the point when nothing
    /// remains after it. A text without a decimal point stays as it is.
    static void EraseTailZero(QString &text);

    /// The shortest plain decimal text that reads back as `value`, at most `decimals` digits after
    /// the point, without trailing zeros and without an exponent.
    static QString DoubleToString(double value, int decimals);

    /// Copies everything below `source` into `target`, which is created when missing. Files that
    /// only `target` has stay. An existing file is replaced whole, or left when `overwrite` is
    /// false. Links to files are copied as files, links to directories are not followed. Returns
    /// false when `source` is no directory, when `target` lies in it, or when anything could not be
    /// copied; what could be copied is there. What is new is never for all others to write.
    static bool CopyDirectory(const QString &source, const QString &target, bool overwrite);

    /// Removes everything below `directory`; the directory itself stays. Symbolic links are
    /// removed, not followed; nothing is removed through a `directory` that is one itself. Returns
    /// false when anything remains.
    static bool ClearDirectory(const QString &directory);
};

} // namespace tk
