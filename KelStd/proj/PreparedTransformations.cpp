#include <KelStd/proj/PreparedTransformations.h>

#include <KelStd/proj/Messages.h>
#include <KelStd/proj/TransformationResult.h>

namespace KelStd::proj {

using FailureKind = ConversionFailureKind;

PreparedTransformations::~PreparedTransformations()
{
    beforeUnload();
}

PreparedTransformations::Index PreparedTransformations::addConversion(const QString &from,
                                                                      const QString &to)
{
    m_transformations.push_back(
        {Kind::Conversion, from, to, ShiftDirection::ToGeoid, nullptr, false});
    return m_transformations.size() - 1;
}

PreparedTransformations::Index PreparedTransformations::addShift(const QString &gridFile,
                                                                 ShiftDirection direction)
{
    m_transformations.push_back({Kind::Shift, gridFile, {}, direction, nullptr, false});
    return m_transformations.size() - 1;
}

PreparedTransformations::Index PreparedTransformations::addOperation(const QString &definition)
{
    m_transformations.push_back(
        {Kind::Operation, definition, {}, ShiftDirection::ToGeoid, nullptr, false});
    return m_transformations.size() - 1;
}

template <typename Use>
bool PreparedTransformations::prepareAnd(Use use, Transformation &transformation,
                                         ConversionFailure *failure)
{
    if (transformation.object == nullptr) {
        if (transformation.isRefused)
            return refuse(transformation, failure);
        if (!LoadedProj::instance().isLoaded())
            return fail(failure, FailureKind::NotLoaded, noLibraryText);
        if (transformation.kind == Kind::Shift && transformation.from.isEmpty())
            return fail(failure, FailureKind::NoGeoidModel, noGridFileText);
        create(transformation);
        if (transformation.object == nullptr)
            return refuse(transformation, failure);
    }
    PJ *const object = transformation.object.get();
    // Where PROJ does not know the reason of a failure, it would tell an earlier one's.
    if (m_hasError && m_functions.proj_errno_reset != nullptr)
        m_functions.proj_errno_reset(object);
    m_hasError = false;
    return use(object) || failAt(transformation, failure);
}

bool PreparedTransformations::prepareAndConvert(Transformation &transformation, const Pos &from,
                                                Pos &to, ConversionFailure *failure)
{
    return prepareAnd([&](PJ *object) { return transform(m_functions, object, from, to); },
                      transformation, failure);
}

bool PreparedTransformations::prepareAndShift(Transformation &transformation,
                                              const stLongLatH &point, double &diff,
                                              ConversionFailure *failure)
{
    return prepareAnd([&](PJ *object) { return separation(m_functions, object, point, diff); },
                      transformation, failure);
}

bool PreparedTransformations::prepareAndApply(Transformation &transformation,
                                              PJ_DIRECTION direction, PJ_COORD &coordinate)
{
    return prepareAnd(
        [&](PJ *object) { return transform(m_functions, object, direction, coordinate); },
        transformation, nullptr);
}

bool PreparedTransformations::factors(Index operation, const PJ_COORD &place, PJ_FACTORS &factors)
{
    const auto use = [&](PJ *object) {
        if (m_functions.proj_factors == nullptr)
            return false;
        factors = m_functions.proj_factors(object, place);
        // All are zero where PROJ has none.
        return factors.meridional_scale > 0.0 && isResult(factors.meridional_scale)
               && isResult(factors.parallel_scale) && isResult(factors.meridian_convergence);
    };
    Transformation &transformation = m_transformations[operation];
    if (!isReady(transformation))
        return prepareAnd(use, transformation, nullptr);
    return use(transformation.object.get()) || failAt(transformation, nullptr);
}

void PreparedTransformations::beforeUnload()
{
    for (Transformation &transformation : m_transformations) {
        transformation.object.reset();
        transformation.isRefused = false;
    }
    m_context.reset();
    m_hasError = false;
    ++m_generation;
}

void PreparedTransformations::create(Transformation &transformation)
{
    ProjMessages messages;
    createWith(transformation, messages);
    // An operation is an attempt, after which the transformations are asked.
    if (transformation.kind != Kind::Operation)
        messages.log();
}

void PreparedTransformations::createWith(Transformation &transformation, ProjMessages &messages)
{
    if (m_context == nullptr) {
        const ProjMessages::Listener listener(messages);
        m_context.reset(LoadedProj::instance().createContext());
    }
    // Without a context of its own PROJ would take the default one, which is another thread's.
    if (m_context == nullptr)
        return;
    PJ_CONTEXT *const context = m_context.get();
    switch (transformation.kind) {
    case Kind::Conversion:
        transformation.object =
            createConversion(context, transformation.from, transformation.to, messages);
        break;
    case Kind::Shift:
        transformation.object =
            createShift(context, transformation.from, transformation.direction, messages);
        break;
    case Kind::Operation:
        transformation.object = createOperation(context, transformation.from, messages);
        break;
    }
}

bool PreparedTransformations::refuse(Transformation &transformation, ConversionFailure *failure)
{
    transformation.isRefused = true;
    m_hasError = true;
    return transformation.kind == Kind::Shift
               ? fail(failure, FailureKind::BadGeoidModel, geoidModelFailedText)
               : fail(failure, FailureKind::RefusedDefinition, errorFormatText);
}

bool PreparedTransformations::failAt(Transformation &transformation, ConversionFailure *failure)
{
    m_hasError = true;
    const PJ *const object = transformation.object.get();
    if (failure != nullptr)
        *failure = {FailureKind::NoResult, failureText(object)};
    // A grid that PROJ has opened before it opens again at the first position. Where that fails, it
    // takes all later positions through as if there were no grid.
    if (m_functions.proj_errno(object) == PROJ_ERR_INVALID_OP_FILE_NOT_FOUND_OR_INVALID)
        transformation.object.reset();
    return false;
}

} // namespace KelStd::proj
