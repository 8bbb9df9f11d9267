#pragma once

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace KelStd::test {

/// A test with a library of its own: every place in a directory of the test, nothing loaded, the
/// display configuration as it starts.
class LibraryTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    static StandardLibrary &library() { return StandardLibrary::getInstance(); }

    /// The absolute path of something in the library's directory.
    QString path(const QString &relative) const { return m_dir.filePath(relative); }
    QString path(const char *relative) const { return path(QString::fromUtf8(relative)); }

    void write(const char *relative, const QByteArray &bytes) const
    {
        writeFile(path(relative), bytes);
    }

    /// The files of a folder, hidden ones included, by name.
    QStringList entries(const char *folder) const;

    /// Makes the library start from an empty directory for `setCustomCoordPath` and the like.
    static void forgetPlaces();

private:
    QTemporaryDir m_dir;
};

/// A process's current directory, changed and changed back.
class ScopedCurrentDirectory
{
public:
    explicit ScopedCurrentDirectory(const QString &path);
    ~ScopedCurrentDirectory();
    ScopedCurrentDirectory(const ScopedCurrentDirectory &) = delete;
    ScopedCurrentDirectory &operator=(const ScopedCurrentDirectory &) = delete;

private:
    QString m_before;
};

/// How often the library has emitted each of its signals.
class SignalCount
{
public:
    SignalCount();
    ~SignalCount();
    SignalCount(const SignalCount &) = delete;
    SignalCount &operator=(const SignalCount &) = delete;

    int showConfigChanged = 0;
    int showInCreateProjectCoordsChanged = 0;

private:
    QObject m_receiver;
};

using NamePairs = QList<QPair<QString, QString>>;

/// The systems that the library offers.
NamePairs offered();

} // namespace KelStd::test
