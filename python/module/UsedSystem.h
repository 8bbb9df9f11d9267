#pragma once

#include "Raised.h"

#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <exception>

namespace KelStd::python {

/// A coordinate system as Python has it; it never changes.
struct UsedSystem
{
    Coord coord;
    SystemOrigin origin;
    QString source;       ///< what it was asked for by
    QStringList warnings; ///< what has to be known of how it was found
    QByteArray report;    ///< of an import, as JSON; empty otherwise
};

/// Reads a document. Raises `NotFound` or `Refused`, the latter also for one with findings unless
/// it `isLenient`; then they are warnings.
UsedSystem readSystemFile(const QString &path, const QString &source, bool isLenient);

/// The same of a document in memory.
UsedSystem readSystemText(const QByteArray &document, bool isLenient);

/// The document of a system; raises `Refused` for one that no document can hold.
QByteArray documentOf(const UsedSystem &system);

/// Writes it, whole or not at all. Raises `Value` with the file's own reason.
void writeSystemFile(const UsedSystem &system, const QString &path);

/// Raises `Refused` where the loaded PROJ does not convert by the system's definitions, or the
/// records of its site cannot be applied. With the interpreter's lock.
void requireUsable(const UsedSystem &system);

/// Runs what may raise, as some text operations of the library do for units that have no place in a
/// system; what they raise becomes `Refused`.
template <typename Action>
void raisingRefused(const QString &source, Action action);

/// Throws the `Refused` of a system that `source` meant.
[[noreturn]] void refuse(const QString &source, const QString &reason, QStringList details = {});

template <typename Action>
void raisingRefused(const QString &source, Action action)
{
    QString reason;
    try {
        action();
        return;
    } catch (const std::exception *raised) {
        reason = QString::fromUtf8(raised->what());
        delete raised;
    } catch (const std::exception &raised) {
        // Its text is empty where it is about a length.
        if (dynamic_cast<const Raised *>(&raised) != nullptr)
            throw;
        reason = QString::fromUtf8(raised.what());
    }
    refuse(source, reason.isEmpty() || reason == QLatin1String("std::exception")
                       ? QStringLiteral("a length has a unit that is no unit of length")
                       : reason);
}

} // namespace KelStd::python
