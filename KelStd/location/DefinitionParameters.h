#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

/// A PROJ definition taken apart.
namespace KelStd::definition {

/// One "+key=value" of a definition; a flag has no value.
struct Parameter
{
    QString key;
    QString value;

    /// " +key=value"
    QString text() const
    {
        return value.isEmpty() ? QLatin1String(" +") + key
                               : QLatin1String(" +") + key + QLatin1Char('=') + value;
    }
};

using Parameters = QVector<Parameter>;

/// In the order of the definition, in which of two equal keys PROJ takes the first.
Parameters parametersOf(const QString &definition);

int countOf(const Parameters &parameters, const char *key);

/// Of the first parameter of that key; empty for none.
QString valueOf(const Parameters &parameters, const char *key);

/// Whether PROJ's name is that of a projection, neither of longitude and latitude, nor of cartesian
/// coordinates, nor of a chain of operations.
bool isProjection(const QString &name);

} // namespace KelStd::definition
