#pragma once

#include <cli/run/Notices.h>

#include <KelStd/positions/PositionWriter.h>
#include <KelStd/positions/ReadPosition.h>

#include <QtCore/QStringList>

#include <memory>

namespace KelStd::cli {

/// Does something with positions, one after the other.
class PositionTaker
{
public:
    PositionTaker() = default;
    virtual ~PositionTaker() = default;
    PositionTaker(const PositionTaker &) = delete;
    PositionTaker &operator=(const PositionTaker &) = delete;

    /// Takes the position that was read and appends to `bytes` what is printed of it: whole lines.
    /// False when it fails, with the reason. A reason of one that was taken is a warning.
    virtual bool take(const positions::ReadPosition &read, QByteArray &bytes, QString &reason) = 0;

    /// What was noticed about the position that was taken last, or failed.
    virtual NoticeBits notices() const { return 0; }
};

/// What a command does with the positions of an input.
class PositionJob
{
public:
    PositionJob() = default;
    virtual ~PositionJob() = default;
    PositionJob(const PositionJob &) = delete;
    PositionJob &operator=(const PositionJob &) = delete;

    /// Before any position is taken. Returns what is printed above the first one.
    virtual QByteArray begin(const positions::InputColumns &columns) = 0;

    /// What is printed between two positions, and below the last one.
    virtual QByteArray separator() const { return {}; }
    virtual QByteArray ending() const { return {}; }

    /// What is said at the end of a run of what was noticed, a line each. `taken`: how many
    /// positions did not fail. `inputName`: what messages call the input.
    virtual QStringList remarks(const Notices &, qint64 /*taken*/,
                                const QString & /*inputName*/) const
    {
        return {};
    }

    /// A taker for one thread; called on that thread.
    virtual std::unique_ptr<PositionTaker> makeTaker() const = 0;
};

} // namespace KelStd::cli
