#include <cli/SystemChoice.h>

#include <cli/Console.h>
#include <cli/LibraryEntry.h>
#include <cli/SystemFile.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

/// Slashes say nothing: the names of systems are full of them ("WGS 84 / UTM zone 31N").
bool meansFile(const QString &given)
{
    const QFileInfo info(given);
    return (info.exists() && !info.isDir())
           || given.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive)
           || QDir::isAbsolutePath(given) || given.startsWith(QLatin1String("./"))
           || given.startsWith(QLatin1String("../"));
}

bool cannotRead(const QString &given, const QString &reason, Console &console)
{
    console.report(QStringLiteral("cannot read the coordinate system %1: %2").arg(given, reason));
    return false;
}

} // namespace

QString systemChoiceHelp()
{
    return QStringLiteral("FILE.xml is a coordinate system's document. NAME is a system of the "
                          "library in\nthe home directory, by its exact name, custom before "
                          "standard; 'kelstd library\nlist' lists them.");
}

bool readChosenSystem(const QString &given, Coord &coord, Console &console)
{
    QString reason;
    if (meansFile(given))
        return readSystem(given, coord, reason) || cannotRead(given, reason, console);

    const auto library = openHomeLibrary(console);
    if (!library)
        return cannotRead(given,
                          QStringLiteral("there is no such file, and no library to look it up in"),
                          console);
    // The custom systems hide standard ones of their name, and are few.
    for (const RecordKind kind : {RecordKind::Custom, RecordKind::Standard}) {
        loadPlaces(*library, {placeOf(kind)});
        if (const auto record = find(kind, given)) {
            coord = std::get<Coord>(*record);
            return true;
        }
    }
    if (QFileInfo(given).isDir())
        return cannotRead(given, QStringLiteral("it is a directory"), console);
    loadPlaces(*library, {LibraryPlace::Custom, LibraryPlace::Standard}); // for names like it
    console.report(QStringLiteral("there is no file %1, and ").arg(given)
                   + unknownName(given, {RecordKind::Custom, RecordKind::Standard}));
    return false;
}

} // namespace KelStd::cli
