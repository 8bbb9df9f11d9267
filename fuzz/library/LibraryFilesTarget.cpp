// The files of the registry, as `StandardLibrary::loadLibrary` finds them: lists of ellipsoids and
// of projections, the offered systems, the display configuration. The first byte says which.

#include "FuzzTarget.h"

#include <KelStd/library/StandardLibrary.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <exception>
#include <memory>

namespace {

using namespace KelStd;
using fuzz::require;

void write(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    require(file.open(QIODevice::WriteOnly), "the temporary file can be written");
    file.write(bytes);
}

/// The registry in a directory of its own, with one system to offer.
class Library
{
public:
    Library() : m_library(StandardLibrary::getInstance())
    {
        QDir root(m_directory.path());
        for (const char *name : {"ellipsoids", "projections", "systems", "none"})
            require(root.mkdir(QString::fromLatin1(name)), "a directory can be made");
        m_library.setCustomCoordPath(path("systems"));
        m_library.setStandardCoordPath(path("none"));
        Coord coord;
        coord.coord_name = QStringLiteral("Harbour");
        require(m_library.addCoordToCustomLibrary(coord.coord_name, &coord),
                "the system can be added");
        m_library.setEllipsoidListPath(path("ellipsoids"));
        m_library.setProjectionListPath(path("projections"));
        m_library.setShowInCreateProjectCoordsFilePath(path("offered.xml"));
        m_library.setShowConfigFilePath(path("display.bin"));
    }

    /// Loads the registry with `bytes` in a file, and without the files of the rounds before.
    StandardLibrary &load(const char *file, const QByteArray &bytes)
    {
        for (const char *old :
             {"ellipsoids/list.xml", "projections/list.xml", "offered.xml", "display.bin"})
            QFile::remove(path(old));
        write(path(file), bytes);
        m_library.loadLibrary();
        return m_library;
    }

private:
    QString path(const char *name) const { return m_directory.filePath(QString::fromLatin1(name)); }

    const QTemporaryDir m_directory;
    StandardLibrary &m_library;
};

/// Replaces a record by itself. A parameter that has no form in a document is raised.
template <typename Replace>
bool replaced(Replace replace)
{
    try {
        return replace();
    } catch (std::exception *raised) {
        const std::unique_ptr<std::exception> owned(raised);
        return false;
    }
}

void loadEllipsoids(Library &files, const QByteArray &bytes)
{
    StandardLibrary &library = files.load("ellipsoids/list.xml", bytes);
    QMap<QString, const Ellipsoid *> all;
    library.getEllipsoidLibrary(all);
    for (auto entry = all.constBegin(); entry != all.constEnd(); ++entry) {
        require(entry.value()->ellipsoid_name == entry.key(), "a record is known by its name");
        require(library.getEllipsoidFromLibrary(entry.key()) == entry.value(), "it is found");
    }
    library.loadLibrary();
    QMap<QString, const Ellipsoid *> again;
    library.getEllipsoidLibrary(again);
    require(again.keys() == all.keys(), "loading twice gives the same names");
}

void loadProjections(Library &files, const QByteArray &bytes)
{
    StandardLibrary &library = files.load("projections/list.xml", bytes);
    QMap<QString, const Projection *> all;
    library.getProjectionLibrary(all);
    if (all.isEmpty())
        return;
    // The last one read is in the file that is written, and comes back from it.
    const QString name = all.firstKey();
    Projection projection = *all.first();
    require(projection.projection_name == name, "a record is known by its name");
    projection.projection_name = QStringLiteral("list");
    if (!replaced(
            [&] { return library.addProjectionToLibrary(QStringLiteral("list"), &projection); }))
        return; // a record of that name in some case, or a parameter without a form
    library.loadLibrary();
    const Projection *again = library.getProjectionFromLibrary(QStringLiteral("list"));
    require(again != nullptr, "what was added is found after loading");
    require(again->proj4Projection == projection.proj4Projection, "with its PROJ name");
    require(again->param.size() <= projection.param.size(), "and its parameters");
}

void loadOffered(Library &files, const QByteArray &bytes)
{
    StandardLibrary &library = files.load("offered.xml", bytes);
    QList<QPair<QString, QString>> offered;
    library.getShowInCreateProjectCoords(offered);
    for (const auto &pair : offered) {
        require(pair.first == QLatin1String("Harbour"), "only known systems are offered");
        require(!pair.second.isEmpty(), "each has a name to show");
    }
    library.setShowInCreateProjectCoords(offered);
    library.loadLibrary();
    QList<QPair<QString, QString>> again;
    library.getShowInCreateProjectCoords(again);
    require(again.size() == offered.size(), "what is offered is offered again");
}

void loadShowConfig(Library &files, const QByteArray &bytes)
{
    StandardLibrary &library = files.load("display.bin", bytes);
    QByteArray saved;
    QDataStream out(&saved, QIODevice::WriteOnly);
    library.getShowConfig()->save(out);
    require(saved.size() == 68, "a configuration has 68 bytes");
    stShowConfig again;
    QDataStream in(saved);
    require(again.load(in) && again == *library.getShowConfig(), "they come back");
    library.getShowConfig()->getParamValueString(Param(ValueType_Longitude, Unit_Degree, 7.25));
    library.getShowConfig()->getParamValueString(Param(ValueType_Distance, Unit_Foot, -1e9));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool silent = (fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    if (size == 0)
        return 0;
    static Library files;
    const QByteArray bytes(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size) - 1);
    using Load = void (*)(Library &, const QByteArray &);
    constexpr Load loads[] = {loadEllipsoids, loadProjections, loadOffered, loadShowConfig};
    loads[data[0] % std::size(loads)](files, bytes);
    return 0;
}
