#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Param.h>

#include <QtCore/QMap>
#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

namespace KelStd {

/// A map projection: a PROJ projection name and named parameters.
///
/// `param` holds the values under keys of the author's choice; `paramProj4` says which PROJ
/// parameter carries a key's value. Only parameters that have a PROJ name reach a definition.
class KELSTD_EXPORT Projection
{
public:
    /// No names, no parameters, plane coordinates in metres.
    Projection();

    /// Empties names and parameters; `locationType` and `loc_or_height_unit` survive on purpose.
    void clear();

    /// Equality of all that enters a computation; `projection_name` is not compared.
    bool operator==(const Projection &other) const;
    /// The negation of `operator==`.
    bool operator!=(const Projection &other) const;

    /// True when both name the same PROJ projection and give each PROJ parameter the same value,
    /// whatever their parameter keys are called. PROJ names compare trimmed and without regard to
    /// case, and "k" and "k_0" are one name. Parameters without a PROJ name do not take part.
    bool isSameLogic(const Projection &other) const;

    /// Metre for plane coordinates, degree for geographic ones, none for any other
    /// `locationType`. `northUnit` is the same operation.
    EUnit eastUnit() const;
    /// As `eastUnit`.
    EUnit northUnit() const;

    /// `loc_or_height_unit`, or none for a `locationType` that is neither plane nor geographic.
    EUnit heightUnit() const;

    /// Writes the block of version 1: the version [int32], the names, the count of `param` [int32]
    /// with each key and its block in key order, `paramProj4`, `locationType` [int32].
    /// `loc_or_height_unit` is not part of the block, on purpose.
    void save(QDataStream &stream) const;

    /// Clears, then reads a block; `loc_or_height_unit` keeps its value. Of a key that occurs twice
    /// the later parameter stays.
    ///
    /// False when the version is not 1 or a parameter's block fails: what was read so far stays,
    /// the parameters before the failing one included (an earlier one under the same key, too);
    /// `locationType` keeps its value. The stream's status is neither inspected nor reset (see
    /// `Param::load`); a count beyond the stream's end fails at the end.
    bool load(QDataStream &stream);

    QString projection_name;           ///< for people; not compared
    QString proj4Projection;           ///< PROJ's name, for example "tmerc"
    QMap<QString, Param> param;        ///< values by keys of the author's choice
    QMap<QString, QString> paramProj4; ///< parameter key to PROJ parameter name
    ELocationType locationType;        ///< whether positions are plane or geographic
    EUnit loc_or_height_unit;          ///< unit of the plane coordinates or of the heights
};

} // namespace KelStd
