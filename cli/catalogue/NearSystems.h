#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

namespace KelStd {

namespace catalogue {
class Catalogue;
} // namespace catalogue

namespace cli {

/// A system of PROJ's database that somebody may have meant.
struct NearSystem
{
    QString code;
    QString name;

    /// "EPSG:28992 (Amersfoort / RD New)"
    QString text() const;
};

/// The projected systems, with heights or without, whose names are near to a mistyped one, best
/// first. None for a code, a definition and the name of a file.
QList<NearSystem> nearSystems(catalogue::Catalogue &catalogue, const QString &given);

/// "; did you mean EPSG:28992 (Amersfoort / RD New)?", for a source of which no word is in the
/// database; empty for none, and where the refusal of an import lists what has the words.
QString nearSystemHint(catalogue::Catalogue &catalogue, const QString &given);

} // namespace cli

} // namespace KelStd
