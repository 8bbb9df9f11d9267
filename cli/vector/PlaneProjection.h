#pragma once

#include <QtCore/QString>

#include <map>
#include <string>

namespace KelStd::cli::vector {

/// A projection's name and parameters, without what belongs to the datum and the unit, so that two
/// can be compared however they were written.
struct PlaneProjection
{
    QString name; ///< "tmerc", also for a zone of UTM
    std::map<QString, double> numbers;
    std::map<QString, QString> words;

    /// That of a PROJ string.
    static PlaneProjection from(const std::string &projString);

    /// What is different, in words for messages: "lon_0 is 15 there and 9 here"; empty where
    /// positions agree to a tenth of a millimetre.
    QString differenceTo(const PlaneProjection &own) const;
};

} // namespace KelStd::cli::vector
