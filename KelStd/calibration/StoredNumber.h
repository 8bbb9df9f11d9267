#pragma once

#include <QtCore/QByteArray>

namespace KelStd::calibration {

/// The number as a document keeps it, with 15 digits. Parameters are rounded so before others are
/// computed by them, so that a stored site is the one that was fitted.
inline double asStored(double value)
{
    constexpr int documentDigits = 15;
    return QByteArray::number(value, 'g', documentDigits).toDouble();
}

} // namespace KelStd::calibration
