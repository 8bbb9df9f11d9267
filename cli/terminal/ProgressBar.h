#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace KelStd::cli {

class Console;

/// How far a run has come, in the last line of the terminal of standard error. Shows nothing where
/// standard error is no terminal, or where it would stand among the output.
class ProgressBar
{
public:
    /// `size`: of the input, in bytes.
    ProgressBar(Console &console, qint64 size);

    /// Removes it.
    ~ProgressBar();

    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    /// So many bytes of the input are done. It is not drawn more often than an eye can follow.
    void show(qint64 done);

private:
    Console &m_console;
    qint64 m_size;
    bool m_isShown;
    QElapsedTimer m_clock;
    qint64 m_lastDrawn = -1; ///< [ms]
};

/// "[#####-----]  50 %  0:12 left", in so many columns at most. `elapsed` [ms].
QString progressText(qint64 done, qint64 size, qint64 elapsed, int columns);

} // namespace KelStd::cli
