#include "cli/Kitchen.h"

#include "cli/ShownCommands.h"
#include "house/SourceFiles.h"
#include "support/Printers.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace KelStd::test {

namespace {

/// What gpsd's program says first, and then the log with a pause before each epoch.
const QByteArray receiver = "#!/bin/sh\n"
                            "echo '{\"class\":\"VERSION\",\"release\":\"3.22\"}'\n"
                            "echo '{\"class\":\"WATCH\",\"enable\":true,\"nmea\":true}'\n"
                            "while read -r line; do\n"
                            "    case $line in *GGA*) sleep 0.02;; esac\n"
                            "    printf '%s\\r\\n' \"$line\"\n"
                            "done < receiver.nmea\n";

QString page()
{
    return sourceText(QStringLiteral("docs/cookbook.md"));
}

} // namespace

Kitchen::Kitchen()
{
    const QDir home(m_program.home().path());
    home.mkdir(QStringLiteral("examples"));
    home.mkdir(QStringLiteral("tools"));
    const QDir examples(QStringLiteral(KELSTD_TEST_SOURCE_DIR "/examples"));
    for (const QString &name : examples.entryList(QDir::Files))
        EXPECT_TRUE(QFile::copy(examples.filePath(name), path(name))) << name;
    const QString tool = m_program.file(QStringLiteral("tools/gpspipe"), receiver);
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_program.setVariable(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    m_program.setVariable(QStringLiteral("PATH"),
                          QFileInfo(QStringLiteral(KELSTD_TEST_PROGRAM)).path() + QLatin1Char(':')
                              + home.filePath(QStringLiteral("tools")) + QLatin1Char(':')
                              + qEnvironmentVariable("PATH"));
    m_program.run({QStringLiteral("library"), QStringLiteral("list")}); // which lays it out
}

QString Kitchen::path(const QString &name) const
{
    return m_program.home().path(QStringLiteral("examples/") + name);
}

QStringList Kitchen::cook(const QString &heading) const
{
    QStringList printed;
    for (const ShownCommand &shown : commandsOf(cookbookPart(heading))) {
        SCOPED_TRACE(shown.command.toStdString());
        const auto process = m_program.process({QStringLiteral("-c"), shown.command});
        process->setProgram(QStringLiteral("/bin/sh"));
        process->setWorkingDirectory(path(QString()));
        process->setProcessChannelMode(QProcess::MergedChannels);
        process->start();
        process->closeWriteChannel();
        EXPECT_TRUE(process->waitForFinished(250000));
        QString text = QString::fromUtf8(process->readAll());
        text.remove(QLatin1Char('\r'));
        text.remove(QChar(0xFEFF));
        expectShown(shown.lines, text);
        printed += text;
    }
    EXPECT_FALSE(printed.isEmpty()) << heading;
    return printed;
}

QStringList cookbookHeadings()
{
    QStringList headings;
    for (const QString &line : page().split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("## ")))
            headings += line.mid(3);
    }
    return headings;
}

QString cookbookPart(const QString &heading)
{
    return page()
        .section(QLatin1String("\n## ") + heading + QLatin1Char('\n'), 1)
        .section(QLatin1String("\n## "), 0, 0);
}

QList<QMap<QString, QString>> printedRows(const QString &printed)
{
    QStringList lines = printed.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (int i = lines.size() - 1; i >= 0; --i) {
        if (lines.at(i).startsWith(QLatin1String("kelstd: ")))
            lines.removeAt(i);
    }
    return csvRows(lines.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

} // namespace KelStd::test
