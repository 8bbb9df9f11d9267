// Coordinate-system documents, as `Coord_IO::xml_read` finds them in a file.

#include "FuzzTarget.h"

#include <KelStd/io/Coord_IO.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <exception>
#include <memory>

namespace {

using KelStd::Coord;
using KelStd::Coord_IO;
using KelStd::fuzz::require;

/// False when `coord` holds a parameter that has no form in a document.
bool written(const Coord &coord, const QString &fileName)
{
    try {
        QString error;
        require(Coord_IO::xml_write(coord, fileName, &error), "a system can be written");
        return true;
    } catch (std::exception *raised) {
        const std::unique_ptr<std::exception> owned(raised);
        return false;
    }
}

QByteArray content(const QString &fileName)
{
    QFile file(fileName);
    require(file.open(QIODevice::ReadOnly), "what was written can be read");
    return file.readAll();
}

/// What was read can be written, and reads as the document of itself. The first writing may round a
/// number, and the second, too, by a last digit; so the third is the same as the second.
void readAndWrite(const QString &fileName, const QString &copyName)
{
    Coord coord;
    QString error;
    if (!Coord_IO::xml_read(fileName, coord, &error) || !written(coord, copyName))
        return;
    Coord copy;
    require(Coord_IO::xml_read(copyName, copy, &error), "what was written can be read");
    require(copy.coord_name == coord.coord_name, "the name comes back");
    require(written(copy, copyName), "what was read again can be written");
    const QByteArray second = content(copyName);
    Coord third;
    require(Coord_IO::xml_read(copyName, third, &error), "what was written twice can be read");
    require(written(third, copyName) && content(copyName) == second, "documents settle");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool silent = (KelStd::fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    static const QTemporaryDir directory;
    const QString fileName = directory.filePath(QStringLiteral("system.xml"));
    {
        QFile file(fileName);
        require(file.open(QIODevice::WriteOnly), "the temporary file can be written");
        file.write(reinterpret_cast<const char *>(data), qint64(size));
    }
    readAndWrite(fileName, directory.filePath(QStringLiteral("copy.xml")));
    return 0;
}
