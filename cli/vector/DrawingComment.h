#pragma once

#include <QtCore/QString>

#include <optional>

namespace KelStd::cli::vector {

/// What the program says in the first lines of its drawings, which have no other place for a
/// reference system: "EPSG:28992 Amersfoort / RD New: easting, northing, ellipsoidal height in m".
struct DrawingComment
{
    QString system;          ///< code and name, as far as it has them; both may be missing
    QString unit;            ///< "m"
    QString heightReference; ///< in the words of `positions::heightReference`
    QString definition = {}; ///< of a system without a code, as a PROJ string; or empty

    /// As it is written, in one line. The definition is one of its own.
    QString text() const;

    /// The code with which the system begins; empty for none.
    QString code() const;
};

/// The system as a comment says it.
QString systemInComment(const QString &code, const QString &name);

/// The comment of a drawing; nothing where another program drew. Of drawings that name no model
/// for their heights above a geoid the reference is "geoid" alone.
std::optional<DrawingComment> drawingComment(const QString &path);

} // namespace KelStd::cli::vector
