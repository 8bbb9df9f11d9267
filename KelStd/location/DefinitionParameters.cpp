#include <KelStd/location/DefinitionParameters.h>

#include <KelStd/coord/GeographicProjections.h>

#include <algorithm>
#include <iterator>

namespace KelStd::definition {

Parameters parametersOf(const QString &definition)
{
    Parameters parameters;
    for (const QString &word : definition.simplified().split(QLatin1Char(' '))) {
        const int start = word.startsWith(QLatin1Char('+')) ? 1 : 0;
        const auto equals = word.indexOf(QLatin1Char('='));
        if (equals < 0)
            parameters += {word.mid(start), {}};
        else
            parameters += {word.mid(start, equals - start), word.mid(equals + 1)};
    }
    return parameters;
}

int countOf(const Parameters &parameters, const char *key)
{
    return static_cast<int>(
        std::count_if(parameters.cbegin(), parameters.cend(),
                      [key](const Parameter &p) { return p.key == QLatin1String(key); }));
}

QString valueOf(const Parameters &parameters, const char *key)
{
    const auto found = std::find_if(parameters.cbegin(), parameters.cend(),
                                    [key](const auto &p) { return p.key == QLatin1String(key); });
    return found == parameters.cend() ? QString() : found->value;
}

bool isProjection(const QString &name)
{
    constexpr const char *others[] = {"pipeline", "cart", "geocent"};
    return !name.isEmpty() && !isGeographicProjection(name)
           && std::none_of(std::begin(others), std::end(others),
                           [&](const char *other) { return name == QLatin1String(other); });
}

} // namespace KelStd::definition
