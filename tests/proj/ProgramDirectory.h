#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

namespace KelStd::test {

/// A program directory of its own, which the platform's AppConfig is set to: without archive and
/// without geoid models until they are written. Create it after the home, which sets AppConfig to
/// the build's program directory.
class ProgramDirectory
{
public:
    /// `name` is the last piece of its path.
    explicit ProgramDirectory(const QString &name = QStringLiteral("bin"));
    ProgramDirectory(const ProgramDirectory &) = delete;
    ProgramDirectory &operator=(const ProgramDirectory &) = delete;

    QString path(const QString &relative) const;
    QString archiveFile() const { return path(QStringLiteral("proj/proj.zip")); }

    void writeArchive(const QByteArray &bytes) const;
    void writeGeoidModel(const QString &name, const QByteArray &bytes) const;

private:
    QTemporaryDir m_dir;
    QString m_name;
};

/// A small archive of the delivered layout: a PROJ library (the complete stand-in) and a resource
/// file, below the top folder "proj".
QByteArray smallArchive();

/// Puts a program in front of the unpacker on the search path while it lives.
class FakeUnpacker
{
public:
    /// `body`: what it does in the shell's language after it has noted its arguments; the exit
    /// status of its last command is the program's.
    explicit FakeUnpacker(const QByteArray &body);
    ~FakeUnpacker();
    FakeUnpacker(const FakeUnpacker &) = delete;
    FakeUnpacker &operator=(const FakeUnpacker &) = delete;

    /// The arguments of every run, one list for each.
    QList<QStringList> runs() const;

private:
    QTemporaryDir m_dir;
    QByteArray m_path;
};

/// Sets the search path for programs while it lives.
class ScopedSearchPath
{
public:
    explicit ScopedSearchPath(const QByteArray &path) : m_previous(qgetenv("PATH"))
    {
        qputenv("PATH", path);
    }
    ~ScopedSearchPath() { qputenv("PATH", m_previous); }
    ScopedSearchPath(const ScopedSearchPath &) = delete;
    ScopedSearchPath &operator=(const ScopedSearchPath &) = delete;

private:
    QByteArray m_previous;
};

} // namespace KelStd::test
