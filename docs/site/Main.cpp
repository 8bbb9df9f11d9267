// Prepares the sources of the site: its generator runs "filter FILE" on each page and header and
// reads what that prints; "commands PROGRAM DIRECTORY" writes a page for each command of the
// program.

#include "docs/site/CommandPages.h"
#include "docs/site/SitePage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>

#include <cstdio>

namespace {

int failed(const QString &reason)
{
    std::fprintf(stderr, "kelstd_site: %s\n", qPrintable(reason));
    return 1;
}

int filter(const QString &name)
{
    const QString path = QFileInfo(name).absoluteFilePath();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failed(path + QStringLiteral(": ") + file.errorString());
    const QString text = QString::fromUtf8(file.readAll());
    const QDir root(QStringLiteral(KELSTD_SITE_ROOT));
    const QString inDocs = QDir(root.filePath(QStringLiteral("docs"))).relativeFilePath(path);
    QString out;
    if (path.endsWith(QLatin1String(".h")))
        out = KelStd::site::siteHeader(text, root.relativeFilePath(path));
    else if (inDocs.startsWith(QLatin1String("..")))
        out = KelStd::site::sitePage(text, QFileInfo(path).fileName());
    else
        out = KelStd::site::sitePage(text, inDocs);
    const QByteArray bytes = out.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    return 0;
}

/// What the program prints, or nothing where it fails.
QByteArray printed(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool isDone = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit
                        && process.exitCode() == 0;
    return isDone ? process.readAllStandardOutput() : QByteArray();
}

bool writePage(const QString &directory, const QString &command, const QByteArray &help)
{
    QFile page(
        QDir(directory).filePath(KelStd::site::commandPageName(command) + QStringLiteral(".md")));
    const QByteArray text = KelStd::site::commandPage(command, QString::fromUtf8(help)).toUtf8();
    return page.open(QIODevice::WriteOnly) && page.write(text) == text.size();
}

int commands(const QString &program, const QString &directory, const QString &layoutFile)
{
    QFile layout(layoutFile);
    if (!layout.open(QIODevice::ReadOnly))
        return failed(layoutFile + QStringLiteral(": ") + layout.errorString());
    const QString layoutText = QString::fromUtf8(layout.readAll());
    const QString help = QStringLiteral("help");
    const QString full = QStringLiteral("full");
    QStringList names = QString::fromUtf8(printed(program, {help, QStringLiteral("names")}))
                            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (names.isEmpty())
        return failed(program + QStringLiteral(" tells no names of commands"));
    QFile filled(QDir(directory).filePath(QStringLiteral("Layout.xml")));
    const QByteArray tabs =
        QString(layoutText)
            .replace(QStringLiteral("<!-- commands -->"), KelStd::site::commandTabs(names))
            .toUtf8();
    if (!filled.open(QIODevice::WriteOnly) || filled.write(tabs) != tabs.size())
        return failed(directory + QStringLiteral(" cannot be written to"));
    names.prepend(QString());
    for (const QString &name : qAsConst(names)) {
        const QByteArray text =
            printed(program, QStringList(help) + name.split(QLatin1Char(' '), Qt::SkipEmptyParts)
                                 + QStringList(full));
        if (text.isEmpty())
            return failed(QStringLiteral("no help of \"%1\"").arg(name));
        if (!writePage(directory, name, text))
            return failed(directory + QStringLiteral(" cannot be written to"));
    }
    return 0;
}

/// The tree has what a header declares below it, and leads to places of the header's page that are
/// not there: declarations are on the pages of their groups. The headers stay, as leaves. Nor is
/// there a list of all pages.
bool mendTree(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QString script = QString::fromUtf8(file.readAll());
    file.close();
    static const QRegularExpression below(QStringLiteral("\"\\w+_8h\" \\]"));
    static const QRegularExpression place(
        QStringLiteral("\"(?:\\w+_8h\\.html#|pages\\.html\")[^\n]*\n"));
    script.replace(below, QStringLiteral("null ]"));
    script.remove(place);
    const QByteArray bytes = script.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

int tree(const QString &path)
{
    const QDir directory(path);
    for (const QString &name : directory.entryList({QStringLiteral("*.js")}, QDir::Files)) {
        const QString script = directory.filePath(name);
        const bool isHeaders = name.endsWith(QLatin1String("_8h.js"));
        if (isHeaders ? !QFile::remove(script) : !mendTree(script))
            return failed(script + QStringLiteral(" cannot be changed"));
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList words = application.arguments();
    if (words.size() == 3 && words.at(1) == QLatin1String("filter"))
        return filter(words.at(2));
    if (words.size() == 5 && words.at(1) == QLatin1String("commands"))
        return commands(words.at(2), words.at(3), words.at(4));
    if (words.size() == 3 && words.at(1) == QLatin1String("tree"))
        return tree(words.at(2));
    return failed(
        QStringLiteral("filter FILE, commands PROGRAM DIRECTORY LAYOUT, or tree DIRECTORY"));
}
