#pragma once

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli {

/// What is wrong with the home directory where there is none, and what to do about it; the same
/// for every command that needs one. Only the user's application-data directory is made unasked: a
/// directory that somebody has named may be mistyped.
struct HomeProblem
{
    QString text;
    QString advice;
};

/// Nothing for a home directory that is there.
std::optional<HomeProblem> homeProblem();

/// The two in one line, for a report; empty for none.
QString homeFailure();

} // namespace KelStd::cli
