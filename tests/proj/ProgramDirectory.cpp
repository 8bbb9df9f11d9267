#include "proj/ProgramDirectory.h"

#include "proj/FakeProjHome.h"
#include "proj/StoredZip.h"

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>

namespace KelStd::test {

ProgramDirectory::ProgramDirectory(const QString &name) : m_name(name)
{
    EXPECT_TRUE(QDir(m_dir.path()).mkdir(name)) << name.toStdString();
    AppConfig::setBinDir(QDir(m_dir.filePath(name)));
}

QString ProgramDirectory::path(const QString &relative) const
{
    return m_dir.filePath(m_name) + QLatin1Char('/') + relative;
}

void ProgramDirectory::writeArchive(const QByteArray &bytes) const
{
    writeFile(archiveFile(), bytes);
}

void ProgramDirectory::writeGeoidModel(const QString &name, const QByteArray &bytes) const
{
    writeFile(path(QStringLiteral("geoid_model_list/")) + name, bytes);
}

QByteArray smallArchive()
{
    return storedZip({{"proj/", ""},
                      {"proj/" KELSTD_PROJ_LIBRARY_NAME, fakeProjBytes()},
                      {"proj/share/", ""},
                      {"proj/share/proj.ini", "[general]\n"}});
}

namespace {

QByteArray quoted(const QString &path)
{
    return '\'' + QFile::encodeName(path) + '\'';
}

} // namespace

FakeUnpacker::FakeUnpacker(const QByteArray &body) : m_path(qgetenv("PATH"))
{
    const QString program = m_dir.filePath(QStringLiteral(KELSTD_UNPACKER_NAME));
    writeFile(program, "#!/bin/sh\nprintf '%s\\0' \"$@\" >> " + quoted(m_dir.filePath("arguments"))
                           + "\nprintf '\\n\\0' >> " + quoted(m_dir.filePath("arguments")) + '\n'
                           + body + '\n');
    EXPECT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(m_dir.path()) + ':' + m_path);
}

FakeUnpacker::~FakeUnpacker()
{
    qputenv("PATH", m_path);
}

QList<QStringList> FakeUnpacker::runs() const
{
    QFile file(m_dir.filePath(QStringLiteral("arguments")));
    QList<QStringList> runs;
    if (!file.open(QIODevice::ReadOnly))
        return runs;
    QStringList run;
    for (const QByteArray &argument : file.readAll().split('\0')) {
        if (argument == "\n") {
            runs << run;
            run.clear();
        } else {
            run << QFile::decodeName(argument);
        }
    }
    return runs;
}

} // namespace KelStd::test
