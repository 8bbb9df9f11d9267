#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/Columns.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace KelStd::positions {

struct FactorColumn;

/// What a system has of a site, whose coordinates stand beside the frames.
enum class SiteKind
{
    None,   ///< nothing of it
    Plane,  ///< whose heights are those of the projected frame
    Heights ///< heights of its own
};

/// A frame, or the coordinates at the site: nothing.
using FrameOrSite = std::optional<Frame>;

/// Which of the columns are to be printed. A fresh one means what is printed when nobody asks: the
/// name, all frames, what the projected height is above, extra columns, carried ones.
struct KELSTD_EXPORT ColumnSelection
{
    /// Only these frames, in this order; all when there are none, with the coordinates at the site
    /// behind them. What the projected height is above stands behind them where it is among them.
    std::vector<FrameOrSite> frames;

    /// That of the system that is printed. Without one there are no columns of it.
    SiteKind site = SiteKind::None;

    /// Whether the coordinates at the site are asked for as one of the frames.
    bool namesSite() const;

    /// The factors, behind the frames.
    bool hasFactors = false;

    /// Only these columns, in this order, whatever else is asked for: names as they are printed,
    /// or without the unit.
    QStringList fields;

    /// The factors that it may mean; where fields are named, a carried one may be called so.
    std::vector<const FactorColumn *> factors() const;
};

/// "local-neh,site-neh" as frames. False, with the `mistake`, for a list with a word that is no
/// frame's name or stands there twice; `frames` is untouched then. May be called on any thread.
KELSTD_EXPORT bool readFrames(const QString &list, std::vector<FrameOrSite> &frames,
                              QString &mistake);

/// "point,local_northing_m" as names between commas, blanks around them passed over. False, with
/// the `mistake`, where one is missing or stands there twice; `fields` is untouched then. Which
/// columns there are is known only with an input. May be called on any thread.
KELSTD_EXPORT bool readFields(const QString &list, QStringList &fields, QString &mistake);

} // namespace KelStd::positions
