#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/SystemOrigin.h>
#include <KelStd/io/DocumentFailure.h>

#include <QtCore/QList>
#include <QtCore/QString>

/// What a document says that its reader takes otherwise.
///
/// Reading is forgiving, because files of many years must stay readable: what is no number reads as
/// 0, a misspelt word as the first of its kind, a misspelt attribute as nothing, and a unit that
/// PROJ is not told of changes nothing. The operations below read exactly as `Coord_IO::xml_read`
/// and the readers of lists do, and list beside it everything that was not taken over as it stands,
/// that the definitions made of the record will not use, or that no system of this earth has.
/// Before a system's numbers are trusted, or written anew, the list should be empty.
///
///     QList<io::DocumentFinding> findings;
///     if (io::reviewCoord(fileName, coord, findings, &error) && findings.isEmpty())
///         use(coord);
namespace KelStd::io {

/// What is wrong with one place of a document.
enum class FindingKind
{
    // What was not taken over as it stands
    UnknownElement,   ///< no such element is read in this place
    UnknownAttribute, ///< no such attribute is read in this place
    StrayText,        ///< a text where none is read
    Repeated,         ///< one of several that mean the same thing, of which one is taken
    WrongVersion,     ///< "ver" is missing or another than 1, so that the element is passed over
    MissingAttribute, ///< one without which the element does not mean what it should
    MissingValue,     ///< a parameter that is used has no value
    UnknownWord,      ///< a word in none of the format's spellings: case counts, and so do blanks
    NotANumber,       ///< also an infinite number, and one that its type cannot hold
    SplitText,        ///< something within a text, of which the part before it is taken at most
    DamagedText,      ///< bytes that are no text in the document's encoding

    // What the definitions will not use
    NotUsed,        ///< a value that no definition has, or that it has otherwise
    UnitNotUsed,    ///< a unit other than the one in which the definition takes the number
    Contradiction,  ///< numbers of an ellipsoid beside the PROJ name of another one
    UnusedProjName, ///< a parameter that PROJ, or its projection, does not have
    NotOneProjName, ///< a PROJ name with blanks or signs that make several of it
    Overruling,     ///< a parameter of a projection that would overrule another record

    // What cannot be meant
    Implausible,  ///< an axis, flattening, scale, angle or shift that none on this earth is
    WrongUnitSize ///< a unit's size that is not that of its name

};

/// One place of a document.
struct DocumentFinding
{
    FindingKind kind;   ///< to decide by
    QString element;    ///< from the root: "Coord/Projection/param[FalseEast]"
    int line;           ///< the line, from 1, in which the element's first tag ends
    QString written;    ///< a text, or an attribute as in fuction="seven"
    QString understood; ///< what reading, or the definition, makes of it; empty for nothing
};

/// Findings beyond so many are not listed.
inline constexpr int maxFindings = 1000;

/// Reads what `Coord_IO::xml_read` reads, with its result, its effect on `coord` and its message,
/// and appends what there is to say of the document to `findings`, in the order of the format.
/// The file is read once, so that both are about the same bytes.
///
/// A document that is no XML, or is not safe to parse, is refused without a finding. One that is
/// refused for what it holds has findings as far as it was understood.
///
/// No findings are: blanks around a number or in its place, digits beyond those of a double,
/// comments that split nothing, attributes of XML itself ("xml:lang", "xmlns"), a missing attribute
/// whose absence means what it would say, dictionaries and texts that no definition needs, and the
/// planar transformation and the height fitting, which are kept for applications.
///
/// What `Coord_IO::xml_write` writes of a system that can be computed has none, except for the
/// losses that are part of the format: a text among the parameters of a projection, the value
/// beside a dictionary, a direction of axes as a parameter.
KELSTD_EXPORT bool reviewCoord(const QString &fileName, Coord &coord,
                               QList<DocumentFinding> &findings, QString *error = nullptr);

/// As above, and says of every failure why, as `Coord_IO::xml_read` does.
KELSTD_EXPORT bool reviewCoord(const QString &fileName, Coord &coord,
                               QList<DocumentFinding> &findings, DocumentFailure &failure);

/// As above, and reads the origin from the same bytes, as `readSystem` does.
KELSTD_EXPORT bool reviewSystem(const QString &fileName, Coord &coord, SystemOrigin &origin,
                                QList<DocumentFinding> &findings, DocumentFailure &failure);

/// Appends what `reviewCoord` would find in the document that `Coord_IO::xml_write` would write of
/// `given`, without a file. False with the failure where it could not be written or read; raises
/// what `xml_write` raises.
KELSTD_EXPORT bool reviewFromMemory(const Coord &given, QList<DocumentFinding> &findings,
                                    DocumentFailure &failure);

/// As `reviewCoord`, of `readEllipsoidList`.
KELSTD_EXPORT bool reviewEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                                       QList<DocumentFinding> &findings, QString *error = nullptr);
/// The same, with the failure whole.
KELSTD_EXPORT bool reviewEllipsoidList(const QString &fileName, QList<Ellipsoid> &ellipsoids,
                                       QList<DocumentFinding> &findings, DocumentFailure &failure);

/// As `reviewCoord`, of `readProjectionList`.
KELSTD_EXPORT bool reviewProjectionList(const QString &fileName, QList<Projection> &projections,
                                        QList<DocumentFinding> &findings, QString *error = nullptr);
/// The same, with the failure whole.
KELSTD_EXPORT bool reviewProjectionList(const QString &fileName, QList<Projection> &projections,
                                        QList<DocumentFinding> &findings, DocumentFailure &failure);

/// Makes `read` what `Coord_IO::xml_read` would make of the document that `Coord_IO::xml_write`
/// would write of `given`, without a file: what differs is what the document does not keep. False
/// where the document could not be written or read, with a text in `error` (when given) if
/// `xml_write` has one; raises what it raises.
KELSTD_EXPORT bool readBackFromMemory(const Coord &given, Coord &read, QString *error = nullptr);

/// A finding in words, translated: "line 12, Coord/Ellipsoid_Transform: fuction="seven" is none of
/// the format's words; it was understood as "None"". Long texts are shortened.
KELSTD_EXPORT QString describedFinding(const DocumentFinding &finding);

} // namespace KelStd::io
