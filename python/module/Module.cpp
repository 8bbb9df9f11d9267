#include "ArrayConversion.h"
#include "Host.h"
#include "Sites.h"
#include "SystemFinder.h"
#include "Text.h"
#include "Values.h"

#include <KelStd/calibration/SiteTransform.h>
#include <KelStd/location/SystemDefinitions.h>
#include <KelStd/location/SystemNotes.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/proj/GeoidModels.h>

#include <pybind11/stl.h>

#include <initializer_list>

namespace KelStd::python {

namespace py = pybind11;

namespace {

using SharedSystem = std::shared_ptr<const UsedSystem>;

struct RaiseRow
{
    Raise type;
    const char *name;
};

/// Classes of kelstd/_errors.py.
constexpr RaiseRow raiseRows[] = {
    {Raise::NotReady, "NotReadyError"},     {Raise::NotFound, "SystemNotFoundError"},
    {Raise::Refused, "SystemRefusedError"}, {Raise::Fit, "FitRefusedError"},
    {Raise::Value, "ValueRefusedError"},
};

void translate(std::exception_ptr raised)
{
    try {
        if (raised)
            std::rethrow_exception(raised);
    } catch (const Raised &ours) {
        for (const RaiseRow &row : raiseRows) {
            if (row.type != ours.type())
                continue;
            const py::object type = py::module_::import("kelstd._errors").attr(row.name);
            const py::object error = type(toPython(ours.text()), toPython(ours.details()));
            PyErr_SetObject(type.ptr(), error.ptr());
        }
    }
}

SharedSystem shared(UsedSystem system)
{
    return std::make_shared<const UsedSystem>(std::move(system));
}

SharedSystem find(const std::string &text, const std::string &library, bool isLenient,
                  const std::optional<std::pair<double, double>> &at, const std::string &shift,
                  bool takeAsWgs84, bool fit)
{
    FindOptions options;
    options.library = fromPython(library);
    options.isLenient = isLenient;
    if (at || !shift.empty() || takeAsWgs84 || fit) {
        catalogue::ImportOptions import;
        if (at)
            import.at = catalogue::GroundPoint{at->first, at->second};
        import.shift = fromPython(shift);
        import.takeAsWgs84 = takeAsWgs84;
        import.fit = fit;
        options.import = import;
    }
    return shared(findSystem(fromPython(text), options));
}

py::tuple definitions(const UsedSystem &system)
{
    std::optional<location::SystemDefinitions> made;
    ConversionFailure failure;
    raisingRefused(system.source, [&] { made = location::definitionsOf(system.coord, &failure); });
    if (!made)
        refuse(system.source, failure.text);
    return py::make_tuple(toPython(made->wgs84Geographic), toPython(made->wgs84Cartesian),
                          toPython(made->localGeographic), toPython(made->localProjected));
}

py::list notes(const UsedSystem &system)
{
    QStringList notes;
    raisingRefused(system.source, [&] { notes = location::notesOn(system.coord); });
    return toPython(notes);
}

py::dict origin(const UsedSystem &system)
{
    const SystemOrigin &from = system.origin;
    py::dict dict;
    dict["code"] = toPython(from.fullCode());
    dict["database"] = toPython(from.databaseVersion);
    dict["area"] = from.area ? py::object(py::make_tuple(from.area->west, from.area->south,
                                                         from.area->east, from.area->north))
                             : py::object(py::none());
    dict["area_name"] = toPython(from.areaName);
    dict["countries"] = toPython(from.countries);
    dict["datum_shift"] = from.operation
                              ? py::object(py::make_tuple(toPython(from.operation->code),
                                                          toPython(from.operation->name),
                                                          py::cast(from.operation->accuracyM)))
                              : py::object(py::none());
    dict["plane_unit"] =
        from.planeUnit
            ? py::object(py::make_tuple(toPython(from.planeUnit->name), from.planeUnit->metres))
            : py::object(py::none());
    return dict;
}

bool hasSite(const UsedSystem &system)
{
    const auto site = calibration::SiteTransform::of(system.coord);
    return site && site->hasSite();
}

/// A system whose heights above the geoid are those of this model.
SharedSystem systemOfModel(const std::string &name)
{
    requireProj();
    const QString model = fromPython(name);
    GeoidModelFailure failure;
    const auto path = GeoidModels::find(model, &failure);
    if (path && !failure)
        failure = GeoidModels::tryInProj(*path);
    if (!path || failure)
        throw Raised(Raise::NotFound,
                     QStringLiteral("cannot use the geoid model %1: %2").arg(model, failure.text));
    UsedSystem system;
    Coord::CreateDefaultTMercCoordination(system.coord);
    system.coord.geoidModel.modelFileName = model;
    system.source = model;
    return shared(std::move(system));
}

void addSystems(py::module_ &module)
{
    py::class_<UsedSystem, std::shared_ptr<UsedSystem>>(module, "System")
        .def_property_readonly(
            "name", [](const UsedSystem &system) { return toPython(system.coord.coord_name); })
        .def_property_readonly("source",
                               [](const UsedSystem &system) { return toPython(system.source); })
        .def_property_readonly("warnings",
                               [](const UsedSystem &system) { return toPython(system.warnings); })
        .def_property_readonly("report",
                               [](const UsedSystem &system) { return toPython(system.report); })
        .def_property_readonly("geoid_model",
                               [](const UsedSystem &system) {
                                   return toPython(system.coord.geoidModel.modelFileName);
                               })
        .def_property_readonly("definitions", &definitions)
        .def_property_readonly("notes", &notes)
        .def_property_readonly("origin", &origin)
        .def_property_readonly("has_site", &hasSite)
        .def("document", [](const UsedSystem &system) { return toPython(documentOf(system)); })
        .def("save", [](const UsedSystem &system, const std::string &path) {
            writeSystemFile(system, fromPython(path));
        });
    module.def("read_file", [](const std::string &path, const std::string &source, bool isLenient) {
        prepareHost();
        return shared(readSystemFile(fromPython(path), fromPython(source), isLenient));
    });
    module.def("read_text", [](const std::string &document, bool isLenient) {
        prepareHost();
        return shared(readSystemText(QByteArray::fromStdString(document), isLenient));
    });
    module.def("find", &find);
}

void requireColumns(std::initializer_list<const py::array_t<double> *> columns, int threads)
{
    for (const auto *column : columns) {
        if (column->ndim() != 1 || column->shape(0) != (*columns.begin())->shape(0))
            throw Raised(Raise::Value, QStringLiteral("the columns are not of one length"));
    }
    if (threads < 1)
        throw Raised(Raise::Value, QStringLiteral("there is no thread to convert on"));
}

void addConversions(py::module_ &module)
{
    py::class_<ArrayConversion>(module, "ArrayConversion")
        .def(py::init<SharedSystem>())
        .def_property_readonly("has_site", &ArrayConversion::hasSite)
        .def_property_readonly(
            "geoid_model",
            [](const ArrayConversion &conversion) { return toPython(conversion.geoidModel()); })
        .def_property_readonly(
            "warnings",
            [](const ArrayConversion &conversion) { return toPython(conversion.warnings()); })
        .def("convert",
             [](ArrayConversion &conversion, int frame, const py::array_t<double> &first,
                const py::array_t<double> &second, const py::array_t<double> &third, int threads) {
                 if (frame < 0 || frame > static_cast<int>(ArrayFrame::Site)
                     || (frame == static_cast<int>(ArrayFrame::Site) && !conversion.hasSite()))
                     throw Raised(Raise::Value, QStringLiteral("there is no such frame"));
                 requireColumns({&first, &second, &third}, threads);
                 return conversion.convert(static_cast<ArrayFrame>(frame), first, second, third,
                                           threads);
             })
        .def("separations", [](ArrayConversion &conversion, const py::array_t<double> &longitude,
                               const py::array_t<double> &latitude,
                               const py::array_t<double> &height, int threads) {
            requireColumns({&longitude, &latitude, &height}, threads);
            return conversion.separations(longitude, latitude, height, threads);
        });
    module.def("system_of_model", &systemOfModel);
    module.def("geoid_models", [] {
        prepareHost();
        return toPython(GeoidModels::names());
    });
}

void addPlaces(py::module_ &module)
{
    module.def("home_dir", [] {
        prepareHost();
        return toPython(AppConfig::getInstance().homeDir().absolutePath());
    });
    module.def("program_dir", [] {
        prepareHost();
        return toPython(AppConfig::getInstance().binDir().absolutePath());
    });
}

} // namespace

PYBIND11_MODULE(_core, module)
{
    py::register_exception_translator(&translate);
    module.attr("version") = KELSTD_VERSION;
    addSystems(module);
    addConversions(module);
    addPlaces(module);
    addSites(module);
    addValues(module);
}

} // namespace KelStd::python
