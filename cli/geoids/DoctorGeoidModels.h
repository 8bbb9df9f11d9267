#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What `kelstd doctor` says of the geoid models.
namespace KelStd::cli {

/// Something that was found out about models.
struct GeoidModelFinding
{
    enum Kind
    {
        InOrder, ///< all models that are in order
        Doubt,   ///< a file that heights are taken from, and which may be another one than is meant
        Problem  ///< a file that heights cannot be taken from
    };

    Kind kind = InOrder;
    QString text;
    QString advice; ///< of a doubt or a problem: what to do about it
};

/// Holds every model's files against their headers and against the delivered ones of their names,
/// lets GGF grids be converted, and lets the loaded PROJ open what it would be given, where there
/// is one. The line of those in order comes first; it says which of them are delivered, the user's,
/// and copied or converted since the home directory had the files `before`.
QList<GeoidModelFinding> examineGeoidModels(bool isProjReady, const QStringList &before);

} // namespace KelStd::cli
