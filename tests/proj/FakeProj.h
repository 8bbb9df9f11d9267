#pragma once

#include <proj.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace KelStd::test {

/// What a stand-in for PROJ is told to do, and what it was asked to do since it was loaded.
struct FakeProj
{
    // --- What it does -----------------------------------------------------------------------

    /// Results of the transformations in their order; the last one stays. Without any, a position
    /// comes back with 1, 2 and 3 added to its components.
    std::vector<PJ_COORD> results;
    /// What `proj_errno` and `proj_errno_string` answer.
    int errorNumber = 0;
    const char *errorText = nullptr;
    /// `proj_create` and `proj_create_crs_to_crs` make nothing.
    bool refusesDefinitions = false;
    /// `proj_trans` raises a `std::runtime_error`.
    bool raises = false;
    /// Called by `proj_trans`, when there is one.
    std::function<void()> duringTransformation;
    /// What it says when it creates something, and of each position; null for nothing.
    const char *messageOfCreation = nullptr;
    const char *messageOfPosition = nullptr;
    int messageLevel = PJ_LOG_ERROR;

    // --- What it was asked ------------------------------------------------------------------

    struct Call
    {
        std::string function;
        std::string directory; ///< the current directory during the call
        const PJ_CONTEXT *context;
    };
    std::vector<Call> calls;

    std::vector<std::string> definitions; ///< handed to the creating functions, source then target
    std::vector<const PJ_AREA *> areas;   ///< handed to `proj_create_crs_to_crs`
    std::vector<std::vector<std::string>> searchPaths; ///< one list for each call
    std::vector<std::string> databases;                ///< handed to each call
    std::vector<PJ_COORD> positions;                   ///< handed to `proj_trans`
    std::vector<PJ_DIRECTION> directions;
    /// What a context was given to open files with, and what goes with each of its calls.
    struct Files
    {
        PROJ_FILE_API functions;
        void *data;
    };
    std::map<const PJ_CONTEXT *, Files> files;
    std::vector<int> explainedNumbers; ///< handed to `proj_errno_string`
    std::vector<double> box;           ///< of the last area: west, south, east, north
    int livingObjects = 0;             ///< created and not yet destroyed

    int count(const std::string &function) const
    {
        int number = 0;
        for (const Call &call : calls)
            number += call.function == function ? 1 : 0;
        return number;
    }
};

} // namespace KelStd::test

/// The record of the library that this is resolved from.
extern "C" PROJ_DLL KelStd::test::FakeProj *kelstdFakeProj();
