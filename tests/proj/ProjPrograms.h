#pragma once

#include "support/Components.h"

#include <KelStd/coord/Pos.h>

#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd::test {

/// What PROJ's own program cs2cs makes of positions between two definitions.
QList<Pos> runCs2cs(const QString &from, const QString &to, const QList<Pos> &positions);

/// What cs2cs makes of WGS 84 longitudes and latitudes [deg] with a system's code, its WKT, its
/// PROJJSON or its PROJ string, in the order of the system's axes.
QList<Pos> runCs2csTo(const QString &system, const QList<Pos> &positions);

/// What PROJ's own program cct makes of positions with one projection's definition.
QList<Pos> runCct(const QString &definition, const QList<Pos> &positions);

/// Every component of every position agrees to `tolerance`.
void expectNear(const QList<Pos> &ours, const QList<Pos> &theirs, double tolerance);

} // namespace KelStd::test
