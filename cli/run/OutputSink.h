#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::cli {

/// Where a run's output goes in place of standard output: a file that appears whole or not at all.
class OutputSink
{
public:
    OutputSink() = default;
    virtual ~OutputSink() = default;
    OutputSink(const OutputSink &) = delete;
    OutputSink &operator=(const OutputSink &) = delete;

    /// What messages call it.
    virtual QString displayName() const = 0;

    /// The next bytes; those of a position and its separator are never divided.
    virtual void write(const QByteArray &bytes) = 0;

    /// False once something cannot be written.
    virtual bool canWrite() const = 0;

    /// Once, at the end of a run that came to its end. False when the file cannot be there; then
    /// nothing of it is.
    virtual bool finish() = 0;

    /// Why something cannot be written.
    virtual QString errorText() const = 0;

    /// What is to be said of the file that was written.
    virtual QStringList notes() const { return {}; }
};

} // namespace KelStd::cli
