#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/// What `kelstd doctor` says of the geoid models.
namespace KelStd::cli {

/// A model's file that heights cannot be taken from, and what to do about it; or, without advice,
/// all models that are in order.
struct GeoidModelFinding
{
    QString text;
    QString advice;

    bool isProblem() const { return !advice.isEmpty(); }
};

/// Holds every model's files against their headers, lets GGF grids be converted, and lets the
/// loaded PROJ open what it would be given, where there is one. The line of those in order comes
/// first.
QList<GeoidModelFinding> examineGeoidModels(bool isProjReady);

} // namespace KelStd::cli
