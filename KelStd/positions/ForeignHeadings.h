#pragma once

#include <QtCore/QString>

/// Headings in German and Turkish, as surveyors' programs there write them.
namespace KelStd::positions {

/// The word of a heading, as `normalisedHeading` writes it, in English: "Rechtswert" is "easting".
/// Another word as it is. A word that leaves open which height or which axis it means, such as
/// "kot", has no translation.
QString englishHeading(const QString &word);

/// Whether the word speaks of some height, known or not: "NHN-Höhe", "alt", "H_NN".
bool speaksOfHeight(const QString &word);

} // namespace KelStd::positions
