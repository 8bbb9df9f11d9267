#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Location.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string_view>
#include <vector>

namespace KelStd::positions {

/// What the lines of an input have besides their positions.
struct InputColumns
{
    bool hasNames = false;
    QStringList carried; ///< headings of the fields that are carried through
};

/// What is printed of a line. Texts are UTF-8.
struct PrintedPosition
{
    std::string_view name; ///< empty for none
    const Location &location;
    /// The model above whose geoid the projected height is; empty when that height is ellipsoidal,
    /// as all others are.
    const QString &geoidModel;
    const std::vector<std::string_view> &carried; ///< one for each heading
};

/// Prints locations in one form or another, as bytes of whole lines. `begin` is called
/// once, before anything else; then positions are printed on several threads at the same time.
class KELSTD_EXPORT PositionWriter
{
public:
    PositionWriter() = default;
    virtual ~PositionWriter() = default;
    PositionWriter(const PositionWriter &) = delete;
    PositionWriter &operator=(const PositionWriter &) = delete;

    /// Before anything is printed. Returns what stands above the first position, or instead of one.
    virtual QByteArray begin(const InputColumns &columns) = 0;

    /// What stands between two positions, and below the last one.
    virtual QByteArray separator() const { return {}; }
    virtual QByteArray ending() const { return {}; }

    /// Appends a position. It must have as many carried fields as `begin` was given headings for.
    virtual void write(QByteArray &bytes, const PrintedPosition &position) const = 0;
};

} // namespace KelStd::positions
