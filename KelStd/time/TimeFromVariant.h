#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>

QT_BEGIN_NAMESPACE
class QVariant;
QT_END_NAMESPACE

namespace KelStd {

/// Which time a variant holds. May be called on any thread.
class KELSTD_EXPORT TimeFromVariant
{
public:
    TimeFromVariant() = delete;

    /// The scale that the variant's list names, and so the class whose `fromVariant` reads it:
    /// `Format_UTC`, `Format_Local`, `Format_GPST` or `Format_GPSW`. `Format_None` for a null
    /// variant and for one without elements; any other number as it stands there, unchecked.
    static EFormat ParseFormat(const QVariant &variant);
};

} // namespace KelStd
