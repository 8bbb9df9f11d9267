#pragma once

#include <QtCore/QString>

namespace KelStd {

/// Why an operation failed. `Kind` is an enumeration of the operation's room: callers decide by the
/// kind, and show the text, which may become better from one release to the next.
template <typename Kind>
struct Failure
{
    Kind kind{};  ///< the enumerator 0 is always "no failure"
    QString text; ///< for people, without a full stop; may be empty where the contract has no text
    int line = 0; ///< of the document or list that is at fault, from 1; 0 where there is none

    /// Whether there is a failure.
    explicit operator bool() const { return kind != Kind{}; }
};

} // namespace KelStd
