#include "ResultMemory.h"

#include <cstdlib>
#include <new>
#include <vector>

namespace KelStd::python {

namespace py = pybind11;

namespace {

constexpr std::size_t leastKept = std::size_t{1} << 20;
constexpr std::size_t mostKept = std::size_t{128} << 20;

struct Block
{
    void *memory = nullptr;
    std::size_t size = 0;
};

/// Guarded by the interpreter's lock; never destroyed, as arrays may outlive static objects.
Block &kept()
{
    static Block &instance = *new Block;
    return instance;
}

Block takeBlock(std::size_t size)
{
    Block &block = kept();
    if (block.memory != nullptr && block.size >= size && block.size - size <= size / 8) {
        const Block taken = block;
        block = {};
        return taken;
    }
    void *memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return {memory, size};
}

void giveBack(void *given)
{
    auto *block = static_cast<Block *>(given);
    if (block->size <= mostKept) {
        std::free(kept().memory);
        kept() = *block;
    } else {
        std::free(block->memory);
    }
    delete block;
}

} // namespace

py::array_t<double> newResult(std::size_t rows, std::size_t columns)
{
    const std::vector<py::ssize_t> shape{static_cast<py::ssize_t>(rows),
                                         static_cast<py::ssize_t>(columns)};
    const std::size_t size = rows * columns * sizeof(double);
    if (size < leastKept)
        return py::array_t<double>(shape);
    auto *block = new Block(takeBlock(size));
    const py::capsule owner(block, &giveBack);
    return py::array_t<double>(shape, static_cast<double *>(block->memory), owner);
}

} // namespace KelStd::python
