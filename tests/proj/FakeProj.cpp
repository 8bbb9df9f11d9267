#include "FakeProj.h"

#include <climits>
#include <cstdio>
#include <deque>
#include <map>
#include <stdexcept>

#include <unistd.h>

namespace {

using KelStd::test::FakeProj;

FakeProj &fake()
{
    static FakeProj record;
    return record;
}

void recordCall(const char *function, const PJ_CONTEXT *context = nullptr)
{
    char directory[PATH_MAX] = {};
    const char *const known = getcwd(directory, sizeof directory);
    fake().calls.push_back({function, known != nullptr ? known : "", context});
}

/// What a context was given to say something with.
std::map<const PJ_CONTEXT *, PJ_LOG_FUNCTION> &logs()
{
    static std::map<const PJ_CONTEXT *, PJ_LOG_FUNCTION> functions;
    return functions;
}

/// As PROJ does, to standard error where nobody listens.
void say(const PJ_CONTEXT *context, const char *message)
{
    if (message == nullptr)
        return;
    const auto log = logs().find(context);
    if (log != logs().end())
        log->second(nullptr, fake().messageLevel, message);
    else
        std::fprintf(stderr, "%s\n", message);
}

/// Something to point to: nobody looks inside a PROJ object.
char object;
char area;

/// The context that the last object was created in.
const PJ_CONTEXT *lastContext = nullptr;

PJ *newObject(const PJ_CONTEXT *context)
{
    lastContext = context;
    say(context, fake().messageOfCreation);
    if (fake().refusesDefinitions)
        return nullptr;
    ++fake().livingObjects;
    return reinterpret_cast<PJ *>(&object);
}

} // namespace

FakeProj *kelstdFakeProj()
{
    return &fake();
}

#ifdef KELSTD_FAKE_PROJ_IS_WHOLE

namespace {

/// Contexts that can be told apart.
PJ_CONTEXT *newContext()
{
    static std::deque<char> contexts;
    return reinterpret_cast<PJ_CONTEXT *>(&contexts.emplace_back());
}

} // namespace

PJ_CONTEXT *proj_context_create()
{
    recordCall("proj_context_create");
    return newContext();
}

PJ_CONTEXT *proj_context_clone(PJ_CONTEXT *context)
{
    recordCall("proj_context_clone", context);
    return newContext();
}

int proj_context_set_database_path(PJ_CONTEXT *context, const char *path, const char *const *,
                                   const char *const *)
{
    recordCall("proj_context_set_database_path", context);
    fake().databases.emplace_back(path);
    return 1;
}

int proj_context_set_fileapi(PJ_CONTEXT *context, const PROJ_FILE_API *functions, void *data)
{
    recordCall("proj_context_set_fileapi", context);
    fake().files[context] = {*functions, data};
    return 1;
}

void proj_log_func(PJ_CONTEXT *context, void *, PJ_LOG_FUNCTION log)
{
    recordCall("proj_log_func", context);
    logs()[context] = log;
}

#else

PJ_CONTEXT *proj_context_create()
{
    recordCall("proj_context_create");
    return nullptr;
}

#endif

PJ_CONTEXT *proj_context_destroy(PJ_CONTEXT *context)
{
    recordCall("proj_context_destroy", context);
    return nullptr;
}

void proj_context_set_search_paths(PJ_CONTEXT *context, int count, const char *const *paths)
{
    recordCall("proj_context_set_search_paths", context);
    fake().searchPaths.emplace_back(paths, paths + count);
}

PJ_AREA *proj_area_create()
{
    recordCall("proj_area_create");
    return reinterpret_cast<PJ_AREA *>(&area);
}

void proj_area_set_bbox(PJ_AREA *, double west, double south, double east, double north)
{
    recordCall("proj_area_set_bbox");
    fake().box = {west, south, east, north};
}

void proj_area_destroy(PJ_AREA *)
{
    recordCall("proj_area_destroy");
}

PJ *proj_create(PJ_CONTEXT *context, const char *definition)
{
    recordCall("proj_create", context);
    fake().definitions.emplace_back(definition);
    return newObject(context);
}

PJ *proj_create_crs_to_crs(PJ_CONTEXT *context, const char *source, const char *target,
                           PJ_AREA *where)
{
    recordCall("proj_create_crs_to_crs", context);
    fake().definitions.emplace_back(source);
    fake().definitions.emplace_back(target);
    fake().areas.push_back(where);
    return newObject(context);
}

PJ *proj_destroy(PJ *)
{
    recordCall("proj_destroy");
    --fake().livingObjects;
    return nullptr;
}

PJ_COORD proj_trans(PJ *, PJ_DIRECTION direction, PJ_COORD position)
{
    recordCall("proj_trans");
    fake().positions.push_back(position);
    fake().directions.push_back(direction);
    say(lastContext, fake().messageOfPosition);
    if (fake().duringTransformation)
        fake().duringTransformation();
    if (fake().raises)
        throw std::runtime_error("raised inside PROJ");
    std::vector<PJ_COORD> &results = fake().results;
    if (results.empty())
        return PJ_COORD{{position.v[0] + 1.0, position.v[1] + 2.0, position.v[2] + 3.0, 0.0}};
    const PJ_COORD result = results.front();
    if (results.size() > 1)
        results.erase(results.begin());
    return result;
}

int proj_errno(const PJ *)
{
    recordCall("proj_errno");
    return fake().errorNumber;
}

const char *proj_errno_string(int number)
{
    recordCall("proj_errno_string");
    fake().explainedNumbers.push_back(number);
    return fake().errorText;
}

double proj_torad(double degrees)
{
    recordCall("proj_torad");
    return degrees;
}

void proj_cleanup()
{
    recordCall("proj_cleanup");
}
