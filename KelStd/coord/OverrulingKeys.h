#pragma once

#include <QtCore/QString>

/// Parameters of PROJ that, among those of a projection, change what other records of a system say.
///
/// Of two equal parameters PROJ takes the first, and the projection's come first: the number that
/// comes out is another one, without an error.
namespace KelStd {

/// A parameter of PROJ and what it overrules. One row each in OverrulingKeys.cpp.
struct OverrulingKey
{
    const char *name;      ///< of PROJ's parameter
    const char *overruled; ///< English, in the context "QObject"
    /// Whether a value overrules nothing. Null where a projection may have any value.
    bool (*isHarmless)(const QString &value);
    bool isLeftOutBesideNumbers = false; ///< PROJ takes it beside an ellipsoid's name only
};

/// The row of a parameter; null for one that overrules nothing. The row of a static table. May be
/// called on any thread.
const OverrulingKey *findOverrulingKey(const QString &name);

} // namespace KelStd
