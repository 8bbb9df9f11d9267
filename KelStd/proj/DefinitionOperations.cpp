#include <KelStd/proj/ProjLib.h>

#include <KelStd/proj/Definition.h>
#include <KelStd/proj/FixedBuffer.h>
#include <KelStd/proj/LoadedProj.h>
#include <KelStd/proj/Messages.h>
#include <KelStd/proj/ProjMessages.h>
#include <KelStd/proj/WorkingDirectoryScope.h>

namespace KelStd {

namespace {

QString projectionDefinition(const Projection &projection, const Ellipsoid *ellipsoid)
{
    return proj::projectionFragment(projection.proj4Projection)
           + (ellipsoid != nullptr ? proj::ellipsoidFragment(*ellipsoid) : QString())
           + proj::parameterFragment(projection) + proj::unitFragment(projection);
}

QString coordDefinition(const Coord &coord, const QString &projectionName)
{
    const Projection &projection = coord.projection;
    QString definition = proj::projectionFragment(
                             projectionName.isEmpty() ? projection.proj4Projection : projectionName)
                         + proj::ellipsoidFragment(coord.ellipsoid);
    if (projectionName.compare(QLatin1String("longlat"), Qt::CaseInsensitive) != 0)
        definition += proj::parameterFragment(projection) + proj::unitFragment(projection);
    // Signs of its own, which look at no switch.
    return definition + proj::datumFragment(coord.ellipsoidTransform, {1.0, -1.0})
           + QLatin1String(" +no_defs");
}

bool isAcceptedByProj(const char *definition, proj::ProjMessages &messages)
{
    const proj::WorkingDirectoryScope scope;
    const proj::ProjMessages::Listener listener(messages);
    const proj::ProjObject object(
        proj::LoadedProj::instance().functions().proj_create(proj::defaultContext, definition));
    return object != nullptr;
}

} // namespace

void ProjLib::__ProjectionToProjString(const Projection *projection, const Ellipsoid *ellipsoid,
                                       char *buffer)
{
    proj::copyToBuffer(projectionDefinition(*projection, ellipsoid), buffer, proj::definitionSize);
}

bool ProjLib::GetProjectionString_proj4(const Projection *projection, const Ellipsoid *ellipsoid,
                                        QString &out, QString *error)
{
    if (!proj::LoadedProj::instance().isLoaded())
        return proj::fail(error, proj::noLibraryText());
    if (projection == nullptr)
        return false;

    // The whole text, also when it does not fit the buffer that PROJ is given. The host's log may
    // be told of it: outside of the scope.
    out = projectionDefinition(*projection, ellipsoid);
    char buffer[proj::definitionSize] = {};
    proj::copyToBuffer(out, buffer, proj::definitionSize);

    proj::ProjMessages messages;
    const bool isAccepted = buffer[0] != '\0' && isAcceptedByProj(buffer, messages);
    messages.log();
    return isAccepted || proj::fail(error, proj::errorFormatText());
}

void ProjLib::CoordToProjString(const Coord *coord, char *buffer, const QString &projectionName)
{
    buffer[0] = '\0';
    if (coord != nullptr)
        proj::copyToBuffer(coordDefinition(*coord, projectionName), buffer, proj::definitionSize);
}

} // namespace KelStd
