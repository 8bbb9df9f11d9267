#pragma once

#include <KelStd/coord/Coord.h>
#include <KelStd/io/DocumentReview.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <exception>
#include <memory>
#include <optional>

namespace KelStd::cli {

/// Runs what may raise, by value or by pointer, as some text operations of the library do for units
/// and kinds of value that have no place in a coordinate system. True when nothing was raised.
template <typename Action>
bool withoutRaising(Action action, QString &reason)
{
    try {
        action();
        return true;
    } catch (const std::exception *raised) {
        const std::unique_ptr<const std::exception> owned(raised);
        reason = QString::fromUtf8(owned->what());
    } catch (const std::exception &raised) {
        reason = QString::fromUtf8(raised.what());
    }
    // What is raised by value for a length has no text.
    if (reason.isEmpty())
        reason = QStringLiteral("a length has a unit that is no unit of length");
    return false;
}

/// Reads a coordinate system from its document, and lists what is not understood as it is written;
/// false with the reason.
bool readSystem(const QString &fileName, Coord &coord, QList<io::DocumentFinding> &findings,
                QString &reason);

/// The four PROJ definitions of a system.
struct SystemDefinitions
{
    QString wgs84Geographic;
    QString wgs84Cartesian;
    QString localGeographic;
    QString localProjected;
};

/// The definitions, or nothing and the reason: a value that cannot be written, or a definition that
/// is longer than PROJ is given.
std::optional<SystemDefinitions> definitionsOf(const Coord &coord, QString &reason);

/// Whether the loaded PROJ makes transformations of the definitions. It may still refuse every
/// position, which is known only by trying one.
bool acceptedByProj(const SystemDefinitions &definitions, QString &reason);

} // namespace KelStd::cli
