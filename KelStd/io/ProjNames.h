#pragma once

#include <KelStd/io/ProjFlags.h>

#include <QtCore/QString>

/// The names of PROJ's parameters. PROJ passes over one that it does not know, or that the
/// projection does not take, without a word.
namespace KelStd::io {

/// Whether PROJ's projection takes a parameter of this name. Of a projection that is not known
/// here: whether any projection does.
bool isProjParameterOf(const QString &projection, const QString &name);

/// Whether any projection of PROJ takes a parameter of this name.
bool isProjParameter(const QString &name);

/// False for a text that puts more into a definition than one name: one with a blank, with a
/// character that separates parameters from each other or from their values, or with a
/// control character: PROJ reads a definition as far as its first NUL.
bool isOneProjName(const QString &text);

/// The parts of an ellipsoid's PROJ name behind which grids of a datum shift stand, as in
/// "bessel +nadgrids=BETA2007.gsb": PROJ is given them as they stand.
struct NameWithGrids
{
    QString name;  ///< "bessel"; the whole text where no grids stand behind it
    QString grids; ///< "BETA2007.gsb", several with commas; empty for none
};
NameWithGrids splitEllipsoidName(const QString &text);

/// The same of an ellipsoid's name, which may have one thing behind it: the grid files of a datum
/// shift, "bessel +nadgrids=BETA2007.gsb", or a sphere's radius, "sphere +R=6371228". A grid that
/// may miss ("@") is none of them: without it PROJ shifts nothing, and says nothing.
bool isOneProjEllipsoid(const QString &text);

} // namespace KelStd::io
