#include <KelStd/proj/PreparedTransformations.h>

#include <KelStd/proj/Messages.h>
#include <KelStd/proj/TransformationResult.h>

namespace KelStd::proj {

using Kind = ConversionFailureKind;

PreparedTransformations::~PreparedTransformations()
{
    beforeUnload();
}

PreparedTransformations::Index PreparedTransformations::addConversion(const QString &from,
                                                                      const QString &to)
{
    m_transformations.push_back({false, from, to, ShiftDirection::ToGeoid, nullptr, false});
    return m_transformations.size() - 1;
}

PreparedTransformations::Index PreparedTransformations::addShift(const QString &gridFile,
                                                                 ShiftDirection direction)
{
    m_transformations.push_back({true, gridFile, {}, direction, nullptr, false});
    return m_transformations.size() - 1;
}

template <typename Use>
bool PreparedTransformations::prepareAnd(Use use, Transformation &transformation,
                                         ConversionFailure *failure)
{
    if (PJ *const object = transformation.object.get()) {
        // Where PROJ does not know the reason of a failure, it would tell an earlier one's.
        if (m_functions.proj_errno_reset != nullptr)
            m_functions.proj_errno_reset(object);
        m_hasError = false;
        return use(object) || failAt(object, failure);
    }
    if (transformation.isRefused)
        return refuse(transformation, failure);
    if (!LoadedProj::instance().isLoaded())
        return fail(failure, Kind::NotLoaded, noLibraryText);
    if (transformation.isShift && transformation.from.isEmpty())
        return fail(failure, Kind::NoGeoidModel, noGridFileText);

    create(transformation);
    PJ *const object = transformation.object.get();
    if (object == nullptr)
        return refuse(transformation, failure);
    return use(object) || failAt(object, failure);
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

void PreparedTransformations::beforeUnload()
{
    for (Transformation &transformation : m_transformations) {
        transformation.object.reset();
        transformation.isRefused = false;
    }
    m_context.reset();
    m_hasError = false;
}

void PreparedTransformations::create(Transformation &transformation)
{
    ProjMessages messages;
    createWith(transformation, messages);
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
    transformation.object =
        transformation.isShift
            ? createShift(context, transformation.from, transformation.direction, messages)
            : createConversion(context, transformation.from, transformation.to, messages);
}

bool PreparedTransformations::refuse(Transformation &transformation, ConversionFailure *failure)
{
    transformation.isRefused = true;
    m_hasError = true;
    return transformation.isShift ? fail(failure, Kind::BadGeoidModel, geoidModelFailedText)
                                  : fail(failure, Kind::RefusedDefinition, errorFormatText);
}

bool PreparedTransformations::failAt(const PJ *transformation, ConversionFailure *failure)
{
    m_hasError = true;
    if (failure != nullptr)
        *failure = {Kind::NoResult, failureText(transformation)};
    return false;
}

} // namespace KelStd::proj
