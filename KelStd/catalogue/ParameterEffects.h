#pragma once

#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/catalogue/WktTree.h>

#include <QtCore/QByteArray>

#include <set>
#include <vector>

/// What the parameters of a WKT's projection do, found by changing them.
namespace KelStd::catalogue {

/// A parameter of the text.
struct GivenParameter
{
    const WktNode *node;
    QByteArray plain; ///< its name
    double value;
    int begin; ///< of its number, in the text of the projected system
    int end;
};

/// What PROJ makes of a text.
struct MadeOfWkt
{
    ProjStep step; ///< without a name where PROJ makes nothing of it
    std::vector<MethodValue> values;
};

MadeOfWkt madeOf(const ProjSession &session, const QByteArray &wkt);

/// What the parameters of a text do to PROJ's.
struct ParameterEffects
{
    std::vector<const GivenParameter *> none;
    std::vector<const GivenParameter *> fixed; ///< another value makes another method, or nothing
    std::set<QByteArray> given;                ///< keys of PROJ's
    ProjStep step;                             ///< what the text, or one with other numbers, makes
};

/// \param wkt the text of a projected system
/// \param given its parameters in their order
ParameterEffects effectsOf(const ProjSession &session, const QByteArray &wkt,
                           const std::vector<GivenParameter> &given, bool isWkt2);

} // namespace KelStd::catalogue
