#include <cli/commands/Command.h>
#include <cli/terminal/StandardStreams.h>

#include <KelStd/platform/LogLibrary.h>

#include <QtCore/QCoreApplication>

#if defined(Q_OS_UNIX)
#    include <sys/stat.h>
#endif

int main(int argc, char **argv)
{
    namespace cli = KelStd::cli;
    cli::streams::prepare();

#if defined(Q_OS_UNIX)
    // What the program creates, and the programs that it starts, is never for all others to write.
    ::umask(::umask(0) | S_IWOTH);
#endif

    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelstd"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELSTD_VERSION));

    // Every failure that the library logs is also returned, and reported with its line. What PROJ
    // adds of its own is shown to those who set PROJ's variable.
    const bool showsProj = qEnvironmentVariableIsSet("PROJ_DEBUG");
    LogLibrary::setSink([showsProj](const QString &module, const QString &text, ELogType, bool) {
        if (showsProj && module == QLatin1String("proj"))
            cli::streams::writeAll(cli::streams::standardError, text.toLocal8Bit() + '\n');
    });

    return static_cast<int>(cli::runProgram(QCoreApplication::arguments()));
}
