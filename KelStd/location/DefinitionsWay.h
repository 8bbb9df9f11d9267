#pragma once

#include <KelStd/location/ChainDefinitions.h>
#include <KelStd/location/FrameConversion.h>
#include <KelStd/proj/PreparedTransformations.h>

#include <array>

namespace KelStd {

/// The way between the frames by PROJ's transformations from one of a system's definitions to the
/// other: what `Coord::MakeLocation_by...` do, to the last bit.
class DefinitionsWay
{
public:
    /// `prepared` outlives this.
    DefinitionsWay(proj::PreparedTransformations &prepared, const ChainDefinitions &chain)
        : m_prepared(prepared),
          m_conversions{prepared.addConversion(chain.geographic, chain.cartesian),
                        prepared.addConversion(chain.cartesian, chain.geographic),
                        prepared.addConversion(chain.cartesian, chain.localGeographic),
                        prepared.addConversion(chain.localGeographic, chain.cartesian),
                        prepared.addConversion(chain.localGeographic, chain.localProjected),
                        prepared.addConversion(chain.localProjected, chain.localGeographic)}
    {}

    /// `to`, which may be `from`, is untouched by a failure, of which `failure` (which may be null)
    /// tells.
    template <FrameConversion conversion>
    bool convert(const Pos &from, Pos &to, ConversionFailure *failure)
    {
        return m_prepared.convert(m_conversions[static_cast<std::size_t>(conversion)], from, to,
                                  failure);
    }

    /// It leads everywhere, or says why not.
    static bool leadsThrough(const stLongLatH & /*wgs84*/) { return true; }

private:
    proj::PreparedTransformations &m_prepared;
    std::array<proj::PreparedTransformations::Index, frameConversions> m_conversions;
};

} // namespace KelStd
