#pragma once

#include <KelStd/coord/Location.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// Prints locations in one form or another.
class PositionWriter
{
public:
    PositionWriter() = default;
    virtual ~PositionWriter() = default;
    PositionWriter(const PositionWriter &) = delete;
    PositionWriter &operator=(const PositionWriter &) = delete;

    /// Before the first location, or instead of one. `hasNames`: whether locations will have names.
    virtual void begin(bool hasNames) = 0;

    /// `geoidModel`: the model above whose geoid the projected height is; empty when that height is
    /// ellipsoidal, as all others are.
    virtual void write(const QString &name, const Location &location,
                       const QString &geoidModel) = 0;
};

} // namespace KelStd::cli
