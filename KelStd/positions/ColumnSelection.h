#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/Columns.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace KelStd::positions {

struct FactorColumn;

/// Which of the columns are to be printed. A fresh one means what is printed when nobody asks: the
/// name, all frames, what the projected height is above, extra columns, carried ones.
struct KELSTD_EXPORT ColumnSelection
{
    /// Only these frames, in this order; all when there are none. What the projected height is
    /// above stands behind them where the projected frame is among them.
    std::vector<Frame> frames;

    /// The factors, behind the frames.
    bool hasFactors = false;

    /// Only these columns, in this order, whatever else is asked for: names as they are printed,
    /// or without the unit.
    QStringList fields;

    /// The factors that it may mean; where fields are named, a carried one may be called so.
    std::vector<const FactorColumn *> factors() const;
};

/// "local-neh,wgs84-llh" as frames. False, with the `mistake`, for a list with a word that is no
/// frame's name or stands there twice; `frames` is untouched then. May be called on any thread.
KELSTD_EXPORT bool readFrames(const QString &list, std::vector<Frame> &frames, QString &mistake);

/// "point,local_northing_m" as names between commas, blanks around them passed over. False, with
/// the `mistake`, where one is missing or stands there twice; `fields` is untouched then. Which
/// columns there are is known only with an input. May be called on any thread.
KELSTD_EXPORT bool readFields(const QString &list, QStringList &fields, QString &mistake);

} // namespace KelStd::positions
