#include <cli/Command.h>
#include <cli/StandardStreams.h>

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

    // PROJ writes notes of its own on standard error, among the program's messages about the same
    // positions. It reads this when it is loaded; who sets the variable wants to see them.
    constexpr const char *projDebug = "PROJ_DEBUG";
    if (!qEnvironmentVariableIsSet(projDebug))
        qputenv(projDebug, "0");

    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelstd"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELSTD_VERSION));

    // Every failure that the library logs is also returned, and reported with its line.
    LogLibrary::setSink([](const QString &, const QString &, ELogType, bool) {});

    return static_cast<int>(cli::runProgram(QCoreApplication::arguments()));
}
