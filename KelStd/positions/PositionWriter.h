#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Location.h>
#include <KelStd/location/GridFactors.h>
#include <KelStd/positions/ReadPosition.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string_view>
#include <vector>

namespace KelStd::positions {

/// A column of what a program knows of positions besides: the time of each, its quality.
struct ExtraColumn
{
    /// What the values are.
    enum class Kind
    {
        Text,    ///< any text
        Number,  ///< plain decimals or whole numbers
        Integer, ///< whole numbers
        Boolean, ///< "true" or "false"
        Date     ///< "2024-05-01"
    };

    QString name;           ///< for other programs, with its unit: "undulation_m"
    Kind kind = Kind::Text; ///< what the values are
    int width = 0;          ///< characters that hold its values in a table; 0 for those of its name
};

/// What the lines of an input have besides their positions.
struct InputColumns
{
    bool hasNames = false;           ///< whether lines have names of points
    QStringList carried;             ///< headings of the fields that are carried through
    std::vector<ExtraColumn> extras; ///< printed behind the frames, before what is carried
};

/// The coordinates of a position at the site of a system.
struct SiteCoordinates
{
    Location location;     ///< whose projected frame has them
    bool hasHeight = true; ///< false where the height that the site's was fitted to is not known
};

/// What is printed of a line. Texts are UTF-8.
struct PrintedPosition
{
    std::string_view name;    ///< empty for none
    const Location &location; ///< in all four frames
    /// The model above whose geoid the projected height is; empty when that height is ellipsoidal,
    /// as all others are.
    const QString &geoidModel;
    const std::vector<std::string_view> &carried; ///< one for each heading
    /// One for each extra column; empty where the value is not known. Of a column of texts only a
    /// view of nothing, whose data is null, is no value: another empty one is an empty text.
    const std::vector<std::string_view> &extras = noFields;
    /// Null where no factors are printed.
    const GridFactors::Values *factors = nullptr;
    /// Null where the system has no site.
    const SiteCoordinates *site = nullptr;
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

    /// Why locations cannot be printed as they are asked for beside such columns of the input;
    /// empty where they can. May be called before `begin`.
    virtual QString mistakeIn(const InputColumns & /*columns*/) const { return {}; }

    /// Before anything is printed. Returns what stands above the first position, or instead of one.
    virtual QByteArray begin(const InputColumns &columns) = 0;

    /// What stands between two positions, and below the last one.
    virtual QByteArray separator() const { return {}; }
    /// What stands below the last position.
    virtual QByteArray ending() const { return {}; }

    /// Appends a position. It must have as many carried fields as `begin` was given headings for.
    virtual void write(QByteArray &bytes, const PrintedPosition &position) const = 0;
};

} // namespace KelStd::positions
