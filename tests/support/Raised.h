#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>

namespace KelStd::test {

/// The message of the `std::exception *` that `action` raises, or nothing when it raises none. The
/// caught object is deleted, as its catcher must.
template <typename Action>
std::optional<std::string> messageRaisedByPointer(Action action)
{
    try {
        action();
    } catch (std::exception *raised) {
        const std::unique_ptr<std::exception> owned(raised);
        return std::string(owned->what());
    }
    return std::nullopt;
}

/// The message of the `std::exception` that `action` raises by value, or nothing.
template <typename Action>
std::optional<std::string> messageRaisedByValue(Action action)
{
    try {
        action();
    } catch (const std::exception &raised) {
        return std::string(raised.what());
    }
    return std::nullopt;
}

} // namespace KelStd::test
