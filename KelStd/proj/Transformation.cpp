#include <KelStd/proj/Transformation.h>

#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/GridFileCheck.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace KelStd::proj {

namespace {

/// What PROJ 9.1 does not take for a part of a path, in quotation marks either: they end with the
/// first, the second begins another grid of a list, the third a comment, and the last is a blank.
constexpr const char *notOfPaths = "\",#;";

bool hasAny(const QByteArray &path, const char *signs)
{
    return std::strpbrk(path.constData(), signs) != nullptr;
}

/// The way to the file from the private directory, which is the current one to PROJ; empty where
/// that leads elsewhere, as ".." of a link does, or where there is no such file.
QByteArray toldFromPrivateDirectory(const QString &gridFile)
{
    const QDir start(QFile::decodeName(LoadedProj::instance().privateDirectory()));
    QString told = start.relativeFilePath(gridFile);
    if (!told.startsWith(QLatin1String("../")))
        told.prepend(QLatin1String("./"));
    const QString found = QFileInfo(start.path() + QLatin1Char('/') + told).canonicalFilePath();
    return !found.isEmpty() && found == QFileInfo(gridFile).canonicalFilePath() ? told.toUtf8()
                                                                                : QByteArray();
}

/// A grid file's path, or a list of them, as a definition can have it; empty for none. Where the
/// way to a file has one of the signs, as that of a home directory may, it is told from the private
/// directory.
QByteArray pathForProj(const QString &gridFile)
{
    QByteArray path = gridFile.toUtf8();
    if (path.contains('\0'))
        return {};
    if (!hasAny(path, notOfPaths))
        return path;
    QByteArray told = toldFromPrivateDirectory(gridFile);
    if (!told.isEmpty() && !hasAny(told, notOfPaths))
        return told;
    // A quotation mark would end the path, and what follows it would be PROJ parameters.
    return hasAny(path, "\"") ? QByteArray() : path;
}

} // namespace

ProjObject createConversion(PJ_CONTEXT *context, const QString &from, const QString &to,
                            ProjMessages &messages)
{
    char source[definitionSize] = {};
    char target[definitionSize] = {};
    if (!copyToBuffer(from, source, sizeof source) || !copyToBuffer(to, target, sizeof target))
        return nullptr;
    if (!areGridsOfDefinitionWhole(source) || !areGridsOfDefinitionWhole(target))
        return nullptr;
    const ProjMessages::Listener listener(messages);
    return ProjObject(LoadedProj::instance().functions().proj_create_crs_to_crs(context, source,
                                                                                target, nullptr));
}

ProjObject createShift(PJ_CONTEXT *context, const QString &gridFile, ShiftDirection direction,
                       ProjMessages &messages)
{
    constexpr std::string_view head = "+proj=vgridshift +grids=\"";
    const std::string_view tail = direction == ShiftDirection::ToGeoid ? "\"" : "\" +inv";
    const QByteArray path = pathForProj(gridFile);
    const auto length = static_cast<std::size_t>(path.size());
    if (path.isEmpty() || head.size() + length + tail.size() >= geoidDefinitionSize)
        return nullptr;
    if (!areGridsWhole({path.constData(), length}))
        return nullptr;

    // Put together without a detour by texts: creating the shift is cheap enough to notice them.
    char definition[geoidDefinitionSize] = {};
    char *end = std::copy(head.cbegin(), head.cend(), definition);
    end = std::copy(path.cbegin(), path.cend(), end);
    std::copy(tail.cbegin(), tail.cend(), end);
    const ProjMessages::Listener listener(messages);
    return ProjObject(LoadedProj::instance().functions().proj_create(context, definition));
}

ProjObject createOperation(PJ_CONTEXT *context, const QString &definition, ProjMessages &messages)
{
    const ProjMessages::Listener listener(messages);
    return ProjObject(
        LoadedProj::instance().functions().proj_create(context, definition.toUtf8().constData()));
}

} // namespace KelStd::proj
