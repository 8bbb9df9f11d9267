#include <cli/catalogue/SourceArgument.h>

#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>

#include <KelStd/catalogue/Catalogue.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// What is longer is refused by the catalogue, which then has to see that it is longer.
constexpr qint64 maxBytes = catalogue::Catalogue::maxSourceBytes + 1;

std::optional<QByteArray> readStandardInput(QString &reason)
{
    QByteArray bytes;
    QByteArray piece(1 << 16, '\0');
    while (bytes.size() < maxBytes) {
        const qint64 wanted = std::min<qint64>(piece.size(), maxBytes - bytes.size());
        const qint64 count =
            streams::readSome(streams::standardInput, piece.data(), wanted, nullptr);
        if (count < 0) {
            reason = QStringLiteral("cannot read standard input: %1").arg(streams::lastErrorText());
            return std::nullopt;
        }
        if (count == 0)
            break;
        bytes.append(piece.constData(), static_cast<int>(count));
    }
    return bytes;
}

std::optional<QByteArray> readFile(const QString &given, QString &reason)
{
    QFile file(onDisk(given));
    if (!file.open(QIODevice::ReadOnly)) {
        reason = QStringLiteral("cannot read %1: %2").arg(given, file.errorString());
        return std::nullopt;
    }
    const QByteArray bytes = file.read(maxBytes);
    if (file.error() == QFileDevice::NoError)
        return bytes;
    reason = QStringLiteral("cannot read %1: %2").arg(given, file.errorString());
    return std::nullopt;
}

} // namespace

QString sourceHelp()
{
    return QStringLiteral(
        "SOURCE is a code (EPSG:28992, ESRI:102100; a number alone is one of EPSG), two\n"
        "codes of a projected and a vertical system (EPSG:28992+5773), a URN, the name\n"
        "of a system, or a definition: WKT 1, WKT 2, an ESRI .prj, PROJJSON or a PROJ\n"
        "string. A file that exists is read, and - is standard input.");
}

std::optional<QByteArray> readSource(const QString &given, QString &reason)
{
    if (given == QLatin1String("-"))
        return readStandardInput(reason);
    const QFileInfo file(onDisk(given));
    if (file.exists() && !file.isDir())
        return readFile(given, reason);
    return given.toUtf8();
}

std::optional<QByteArray> readSource(const QString &given, Console &console)
{
    QString reason;
    auto source = readSource(given, reason);
    if (!source)
        console.report(reason);
    return source;
}

bool seemsToNameAFile(const QString &given)
{
    static const char *const endings[] = {".prj", ".wkt", ".json", ".txt", ".xml", ".qpj"};
    if (QFileInfo::exists(onDisk(given)))
        return false;
    return QDir::isAbsolutePath(given) || given.startsWith(QLatin1String("./"))
           || given.startsWith(QLatin1String("../"))
           || std::any_of(std::begin(endings), std::end(endings), [&given](const char *ending) {
                  return given.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
              });
}

} // namespace KelStd::cli
