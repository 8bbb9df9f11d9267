#pragma once

#include "time/LeapSecondRows.h"
#include "time/WalkedCalendar.h"

#include <QtCore/QByteArray>

#include <iterator>

namespace KelStd::test {

/// A list of the tz database's form with the true rows, the last of them as given.
inline QByteArray listEndingWith(const QByteArray &last)
{
    QByteArray list;
    for (auto row = std::begin(leapSecondRows); row + 1 != std::end(leapSecondRows); ++row) {
        const long long from1900 = midnight(row->year, row->month, 1) / 1000 + 2208988800;
        list += QByteArray::number(from1900) + '\t' + QByteArray::number(row->gpsMinusUtc + 19)
                + "\t# a note\n";
    }
    return list + last;
}

} // namespace KelStd::test
