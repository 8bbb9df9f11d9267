#pragma once

#include <KelStd/Export.h>

#include <QtCore/QString>

#include <memory>

namespace KelStd {

/// Keeps other processes, and other locks of this one, from doing at the same time what this one
/// does: one at a time holds the lock of a file.
///
/// The operating system holds it for the process and lets go when the process ends, however it
/// ends. A lock file that is found was therefore either left behind, and is taken over at once, or
/// somebody lives who holds it. What is in the file, its age and the number of a process say
/// nothing.
class KELSTD_EXPORT FileLock
{
public:
    /// Nothing is locked yet. The file is made when the lock is taken, and removed with it.
    explicit FileLock(const QString &fileName);
    /// Releases what is held.
    ~FileLock();
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

    /// What became of an attempt to take the lock.
    enum class Outcome
    {
        Taken,         ///< by this object
        HeldByAnother, ///< still, after all of the patience
        Unavailable    ///< no lock file can be made there, or what has its name is something else
    };

    /// The patience of who waits as long as it takes.
    static constexpr int forEver = -1;

    /// Takes the lock, waiting for another holder for `patience` [ms] or `forEver`.
    Outcome take(int patience);

    /// Whether this object holds the lock.
    bool isTaken() const { return m_holder != nullptr; }

    /// Lets go, and removes the file.
    void release();

    /// To be called in a child process, between its birth and the program that it starts: the lock
    /// stays held until that program has ended as well.
    void keepInChild() const;

    /// The descriptor of the locked file, which must not be closed; -1 while nothing is locked, and
    /// on platforms without one. A program that is started with it keeps the lock until it ends.
    int descriptor() const;

private:
    struct Holder;

    QString m_fileName;
    std::unique_ptr<Holder> m_holder;
};

} // namespace KelStd
