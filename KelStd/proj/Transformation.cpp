#include <KelStd/proj/Transformation.h>

#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/GridFileCheck.h>

#include <QtCore/QByteArray>

#include <algorithm>
#include <string_view>

namespace KelStd::proj {

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
    const QByteArray path = gridFile.toUtf8();
    const auto length = static_cast<std::size_t>(path.size());
    // A quotation mark would end the path, and what follows it would be PROJ parameters.
    if (path.contains('"') || path.contains('\0')
        || head.size() + length + tail.size() >= geoidDefinitionSize)
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

} // namespace KelStd::proj
