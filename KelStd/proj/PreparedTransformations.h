#pragma once

#include <KelStd/proj/ConversionFailure.h>
#include <KelStd/proj/Transformation.h>

#include <vector>

namespace KelStd::proj {

/// Transformations that are created once, each when it is first needed, and then serve any number
/// of positions without touching a file or the heap. One whose grid could not be opened is created
/// anew for the next position.
///
/// They live in a PROJ context of their own: objects of this class may be used on different threads
/// at the same time, one a thread, and neither wait for each other nor touch the current directory.
/// They end with the loaded library and are created anew when it is loaded again. Only what PROJ
/// says when it creates one is logged.
class PreparedTransformations final : private UnloadListener
{
public:
    using Index = std::size_t;

    PreparedTransformations() : m_functions(LoadedProj::instance().functions()) {}
    ~PreparedTransformations() override;

    /// Announces the transformation between two definitions.
    Index addConversion(const QString &from, const QString &to);

    /// Announces the vertical shift by a grid.
    Index addShift(const QString &gridFile, ShiftDirection direction);

    /// Announces the operation of a PROJ definition, in which angles are radians. The definition
    /// names no file. What PROJ says of it is not logged.
    Index addOperation(const QString &definition);

    /// As `ProjLib::ConvertPosList` for one position: the same result and the same text. `to`,
    /// which may be `from`, is untouched by a failure, `failure` (which may be null) by a success.
    bool convert(Index conversion, const Pos &from, Pos &to, ConversionFailure *failure)
    {
        Transformation &transformation = m_transformations[conversion];
        if (!isReady(transformation))
            return prepareAndConvert(transformation, from, to, failure);
        PJ *const object = transformation.object.get();
        return transform(m_functions, object, from, to) || failAt(transformation, failure);
    }

    /// As `ProjLib::Calc_geoid_diff` and its inverse; a failure leaves `diff` untouched.
    bool shift(Index shift, const stLongLatH &point, double &diff, ConversionFailure *failure)
    {
        Transformation &transformation = m_transformations[shift];
        if (!isReady(transformation))
            return prepareAndShift(transformation, point, diff, failure);
        PJ *const object = transformation.object.get();
        return separation(m_functions, object, point, diff) || failAt(transformation, failure);
    }

    /// Takes `coordinate` through an operation, or through its inverse. False where PROJ has no
    /// result, or no such operation; `coordinate` means nothing then.
    bool apply(Index operation, PJ_DIRECTION direction, PJ_COORD &coordinate)
    {
        Transformation &transformation = m_transformations[operation];
        if (!isReady(transformation))
            return prepareAndApply(transformation, direction, coordinate);
        PJ *const object = transformation.object.get();
        return transform(m_functions, object, direction, coordinate)
               || failAt(transformation, nullptr);
    }

    /// What the projection of an operation does to lengths and directions at `place`, longitude and
    /// latitude [rad] from the meridian of Greenwich. PROJ takes no account of `+axis`, false
    /// origins, units and `+pm` here. False where PROJ has no answer, or no such function.
    bool factors(Index operation, const PJ_COORD &place, PJ_FACTORS &factors);

    /// Grows when the library is unloaded: with another one, PROJ may decide otherwise.
    int generation() const { return m_generation; }

private:
    enum class Kind
    {
        Conversion, ///< between two definitions
        Shift,      ///< by a grid
        Operation   ///< of one definition
    };

    struct Transformation
    {
        Kind kind;
        QString from; ///< definition, or the grid file
        QString to;
        ShiftDirection direction;
        ProjObject object; ///< null until it is first needed
        bool isRefused;    ///< PROJ was asked and has none
    };

    void beforeUnload() override;
    /// An object that is there belongs to the library that is loaded.
    bool isReady(const Transformation &transformation) const
    {
        return transformation.object != nullptr && !m_hasError;
    }
    bool prepareAndConvert(Transformation &transformation, const Pos &from, Pos &to,
                           ConversionFailure *failure);
    bool prepareAndShift(Transformation &transformation, const stLongLatH &point, double &diff,
                         ConversionFailure *failure);
    bool prepareAndApply(Transformation &transformation, PJ_DIRECTION direction,
                         PJ_COORD &coordinate);
    template <typename Use>
    bool prepareAnd(Use use, Transformation &transformation, ConversionFailure *failure);
    void create(Transformation &transformation);
    void createWith(Transformation &transformation, ProjMessages &messages);
    bool refuse(Transformation &transformation, ConversionFailure *failure);
    bool failAt(Transformation &transformation, ConversionFailure *failure);

    const ProjFunctions &m_functions; ///< those of whatever library is loaded
    std::vector<Transformation> m_transformations;
    ProjContext m_context;
    int m_generation = 0;
    bool m_hasError = false; ///< PROJ's context holds that of an earlier failure
};

} // namespace KelStd::proj
