#pragma once

#include <KelStd/catalogue/CatalogueFailure.h>
#include <KelStd/catalogue/SystemArea.h>
#include <KelStd/proj/LoadedProj.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

/// What the catalogue asks PROJ, wrapped: objects that own themselves, texts as `QString`.
namespace KelStd::catalogue {

struct ObjectListDeleter
{
    void operator()(PJ_OBJ_LIST *list) const
    {
        proj::LoadedProj::instance().functions().proj_list_destroy(list);
    }
};
using ObjectList = std::unique_ptr<PJ_OBJ_LIST, ObjectListDeleter>;

/// A unit, as a text or the database has it.
struct Unit
{
    QString name;
    double size = 1.0; ///< in metres or radians, or of a number without unit
};

/// One parameter of a projection or an operation, as the database or a text has it.
struct MethodValue
{
    int code = 0; ///< of EPSG, by the name where the text has no code; 0 without one
    QString name;
    double value = 0.0; ///< in metres, degrees or without unit; as published where that is its unit
    bool isLength = false;
    bool isAngle = false;
    Unit unit; ///< in which it was written
};

/// One axis of a system's coordinates.
struct Axis
{
    QString name;
    QString direction; ///< "east", "south", ...
    QString unit;
    double factor = 1.0; ///< metres or radians in a unit
};

/// A PROJ context with the database, whose network stays off.
class ProjSession final : private proj::UnloadListener
{
public:
    ProjSession() : m_functions(proj::LoadedProj::instance().functions()) {}
    ~ProjSession() override;

    /// Makes the context ready. False with the reason in `failure` when PROJ is not loaded or has
    /// no database. What was made before is gone when PROJ has been unloaded meanwhile.
    bool open(CatalogueFailure *failure);

    PJ_CONTEXT *context() const { return m_context.get(); }

    /// Of the context, from 1: another one after PROJ has been unloaded.
    int number() const { return m_number; }
    const proj::ProjFunctions &functions() const { return m_functions; }

    proj::ProjObject fromDatabase(const QByteArray &authority, const QByteArray &code) const;
    /// A definition that PROJ computes with, such as a pipeline.
    proj::ProjObject fromText(const QByteArray &text) const;

    PJ_TYPE typeOf(const PJ *object) const { return m_functions.proj_get_type(object); }
    QString nameOf(const PJ *object) const;
    /// "EPSG:28992"; empty without one.
    QString codeOf(const PJ *object) const;
    SystemArea areaOf(const PJ *object) const;
    proj::ProjObject geodeticOf(const PJ *crs) const;
    std::vector<Axis> axesOf(const PJ *crs) const;
    std::vector<MethodValue> valuesOf(const PJ *operation) const;
    QString methodOf(const PJ *operation) const;
    /// PROJ's text of an operation; empty where PROJ cannot write it.
    QByteArray pipelineOf(const PJ *operation) const;
    /// PROJ's text of a system, "+proj=tmerc ..."; empty where PROJ cannot write it.
    QByteArray projTextOf(const PJ *crs) const;
    /// The operations between two systems as PROJ orders them, whether their grids are there or
    /// not.
    ObjectList operations(const PJ *from, const PJ *to, bool throughOthers = true) const;
    int countOf(const ObjectList &list) const;
    proj::ProjObject elementOf(const ObjectList &list, int index) const;

    /// WGS 84, longitude and latitude.
    const PJ *wgs84();

private:
    void beforeUnload() override;

    const proj::ProjFunctions &m_functions; ///< those of whatever library is loaded
    proj::ProjContext m_context;
    proj::ProjObject m_wgs84;
    int m_number = 0;
};

} // namespace KelStd::catalogue
