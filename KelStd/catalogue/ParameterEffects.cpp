#include <KelStd/catalogue/ParameterEffects.h>

#include <algorithm>
#include <cmath>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

/// Far enough for the digits that PROJ writes.
double changed(double value)
{
    return value + std::max(0.25, std::abs(value) * 1e-3);
}

/// The text with each number changed so many times.
QByteArray withChanges(QByteArray wkt, const std::vector<GivenParameter> &given,
                       const std::vector<int> &times)
{
    for (std::size_t index = given.size(); index-- > 0;) {
        const GivenParameter &parameter = given[index];
        double value = parameter.value;
        for (int count = 0; count < times[index]; ++count)
            value = changed(value);
        if (times[index] > 0)
            wkt.replace(parameter.begin, parameter.end - parameter.begin,
                        QByteArray::number(value, 'g', 17));
    }
    return wkt;
}

bool areSame(const std::vector<MethodValue> &a, const std::vector<MethodValue> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const MethodValue &one, const MethodValue &other) {
                          return one.name == other.name && !(one.value < other.value)
                                 && !(one.value > other.value);
                      });
}

/// The keys of PROJ's parameters that differ.
std::set<QByteArray> differences(const ProjStep &a, const ProjStep &b)
{
    std::set<QByteArray> keys;
    for (const ProjStep *step : {&a, &b}) {
        for (const auto &parameter : step->parameters) {
            if (a.has(parameter.first.constData()) != b.has(parameter.first.constData())
                || a.text(parameter.first.constData()) != b.text(parameter.first.constData()))
                keys.insert(parameter.first);
        }
    }
    return keys;
}

} // namespace

MadeOfWkt madeOf(const ProjSession &session, const QByteArray &wkt)
{
    const proj::ProjFunctions &proj = session.functions();
    PROJ_STRING_LIST lists[2] = {};
    ProjObject object(proj.proj_create_from_wkt(session.context(), wkt.constData(), nullptr,
                                                &lists[0], &lists[1]));
    for (PROJ_STRING_LIST list : lists) {
        if (list != nullptr)
            proj.proj_string_list_destroy(list);
    }
    if (object != nullptr && session.typeOf(object.get()) == PJ_TYPE_BOUND_CRS)
        object.reset(proj.proj_get_source_crs(session.context(), object.get()));
    MadeOfWkt made;
    if (object == nullptr)
        return made;
    const std::vector<ProjStep> steps = stepsOf(session.projTextOf(object.get()));
    if (steps.size() == 1)
        made.step = steps.front();
    const ProjObject conversion(proj.proj_crs_get_coordoperation(session.context(), object.get()));
    if (conversion != nullptr)
        made.values = session.valuesOf(conversion.get());
    return made;
}

ParameterEffects effectsOf(const ProjSession &session, const QByteArray &wkt,
                           const std::vector<GivenParameter> &given, bool isWkt2)
{
    ParameterEffects effects;
    std::vector<int> times(given.size(), 0);
    MadeOfWkt base = madeOf(session, wkt);
    if (base.step.name == "utm") { // which names a zone instead of the numbers
        std::fill(times.begin(), times.end(), 1);
        base = madeOf(session, withChanges(wkt, given, times));
    }
    effects.step = base.step;
    if (base.step.name.isEmpty())
        return effects;
    for (std::size_t index = 0; index < given.size(); ++index) {
        ++times[index];
        const MadeOfWkt other = madeOf(session, withChanges(wkt, given, times));
        --times[index];
        if (other.step.name != base.step.name) {
            effects.fixed.push_back(&given[index]);
            continue;
        }
        const std::set<QByteArray> keys = differences(base.step, other.step);
        effects.given.insert(keys.begin(), keys.end());
        // Of WKT 1 PROJ keeps what it knows, of WKT 2 everything.
        if (keys.empty() && (isWkt2 || areSame(base.values, other.values)))
            effects.none.push_back(&given[index]);
    }
    return effects;
}

} // namespace KelStd::catalogue
