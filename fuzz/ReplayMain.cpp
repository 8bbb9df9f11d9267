// Runs every file of the directories and files given through a fuzz target.

#include "FuzzTarget.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

namespace fs = std::filesystem;

void collect(const fs::path &path, std::vector<fs::path> &files)
{
    if (!fs::is_directory(path)) {
        files.push_back(path);
        return;
    }
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
}

void replay(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + file.string());
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    std::printf("%s\n", file.c_str());
    std::fflush(stdout); // the last name before a crash is the file's
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char **argv)
try {
    std::vector<fs::path> files;
    for (int i = 1; i < argc; ++i)
        collect(argv[i], files);
    if (files.empty()) {
        std::fprintf(stderr, "nothing to replay\n");
        return 1;
    }
    for (const fs::path &file : files)
        replay(file);
    return 0;
} catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
