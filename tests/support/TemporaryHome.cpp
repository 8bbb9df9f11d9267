#include "support/TemporaryHome.h"

#include <KelStd/platform/AppConfig.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QtEndian>

#include <gtest/gtest.h>

namespace KelStd::test {

TemporaryHome::TemporaryHome(Content content)
{
    EXPECT_TRUE(m_dir.isValid()) << m_dir.errorString().toStdString();
    if (content == PreparedProj) {
        const QDir staged(QStringLiteral(KELSTD_TEST_STAGED_PROJ));
        QDir(m_dir.path()).mkdir(QStringLiteral("proj"));
        for (const QFileInfo &entry : staged.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot))
            EXPECT_TRUE(QFile::link(entry.absoluteFilePath(),
                                    path(QStringLiteral("proj/") + entry.fileName())));
        writeFile(path(QStringLiteral("proj/proj_enviroment")), markerBytes(3));
    }
    use();
}

void TemporaryHome::use() const
{
    AppConfig::setHomeDir(QDir(m_dir.path()));
    AppConfig::setBinDir(QDir(QStringLiteral(KELSTD_TEST_BIN_DIR)));
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size()) << path.toStdString();
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

QByteArray markerBytes(qint32 version)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(version, bytes.data());
    return bytes;
}

} // namespace KelStd::test
