#pragma once

#include <KelStd/Export.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/io/DocumentFailure.h>

#include <QtCore/QString>

namespace KelStd {

/// Coordinate systems as XML documents.
///
/// The element and attribute names below are the file format; several keep historical spellings
/// ("Ellpsoid", "fuction") that must not be mended.
class KELSTD_EXPORT Coord_IO
{
public:
    Coord_IO() = delete;

    /// Writes `coord` as a document, replacing the file whole or not at all.
    ///
    /// Returns true when every byte reached the file. Otherwise the old file is as it was and
    /// `errorMessage` (when given) has the file's error text, or says that the document could not
    /// be read back: it is larger than 64 MiB, or a text has a character that none can hold
    /// (U+FFFE, U+FFFF, half a surrogate pair). A parameter of kind `ValueType_Time` raises "No
    /// Time Value In Make Coordinate" by pointer (a `std::exception *` that the catcher deletes),
    /// which leaves the old file, too.
    ///
    /// Three losses are part of the format: string-valued parameters are written without their
    /// text, parameter values with 15 significant digits, and a text of blanks only is no text to
    /// the reader.
    ///
    /// The origin of the file that is replaced goes with it; `io::writeSystem` writes one.
    static bool xml_write(const Coord &coord, const QString &fileName,
                          QString *errorMessage = nullptr);

    /// As above. `failure` becomes one of the kinds `CannotBeWritten`, `TooLarge` and `ForeignText`
    /// with the same text, or none when the document was written; what is raised leaves it.
    static bool xml_write(const Coord &coord, const QString &fileName,
                          io::DocumentFailure &failure);

    /// Reads a document into `coord`; what the document does not mention keeps its value.
    ///
    /// Returns true when a complete system was read. On failure `coord` may be partly updated.
    /// `errorMessage` (when given) is written when the file cannot be opened and when a required
    /// element is missing; a document that is no XML, is larger than 64 MiB, is nested deeper than
    /// 256 elements, has more than 400,000 tags and attributes, declares entities or anything else
    /// in its document type, or carries another version fails without a message. Bytes that are no
    /// text in the document's encoding are read as U+FFFD.
    static bool xml_read(const QString &fileName, Coord &coord, QString *errorMessage = nullptr);

    /// As above, and says of every failure why: `failure` becomes one with a text, and a line where
    /// the document is at fault, or none when a complete system was read. What is raised leaves it.
    static bool xml_read(const QString &fileName, Coord &coord, io::DocumentFailure &failure);

    /// \name Element names
    /// \{
    static const QString xml_segName_root;               ///< "Coord"
    static const QString xml_segName_ellipsoid;          ///< "Ellpsoid"
    static const QString xml_segName_projection;         ///< "Projection"
    static const QString xml_segName_ellipsoidTransform; ///< "Ellipsoid_Transform"
    static const QString xml_segName_planeTransform;     ///< "Plane_Transform"
    static const QString xml_segName_elevationFitting;   ///< "Elevation_Fitting"
    static const QString xml_segName_geoidModel;         ///< "Geoid_Model"
    static const QString xml_segName_param;              ///< "param"
    static const QString xml_segName_paramProj4;         ///< "paramProj4"
    static const QString xml_segName_dictionaryKey;      ///< "key"
    /// \}
    /// \name Attribute names
    /// \{
    static const QString xml_attrName_ver;                     ///< "ver"
    static const QString xml_attrName_rootName;                ///< "coord_name"
    static const QString xml_attrName_ellipsoidName;           ///< "ellipsoid_name"
    static const QString xml_attrName_biggerHalfAxle;          ///< "biggerHalfAxle"
    static const QString xml_attrName_reciprocal;              ///< "reciprocal"
    static const QString xml_attrName_positiveDir;             ///< "positiveDir"
    static const QString xml_attrName_proj4EllpsName;          ///< "proj4EllpsName"
    static const QString xml_attrName_projectionName;          ///< "projection_name"
    static const QString xml_attrName_proj4Projection;         ///< "proj4Projection"
    static const QString xml_attrName_locationType;            ///< "locationType"
    static const QString xml_attrName_locOrHeightUnit;         ///< "loc_or_height_unit"
    static const QString xml_attrName_fuction;                 ///< "fuction"
    static const QString xml_attrName_nofuctionTranstion;      ///< "nofuction_transtion"
    static const QString xml_attrName_function;                ///< "function"
    static const QString xml_attrName_modelFileName;           ///< "modelFileName"
    static const QString xml_attrName_name;                    ///< "name"
    static const QString xml_attrName_proj4Param;              ///< "proj4Param"
    static const QString xml_attrName_unit;                    ///< "unit"
    static const QString xml_attrName_valType;                 ///< "valType"
    static const QString xml_attrName_isDictionary;            ///< "isDictionary"
    static const QString xml_attrName_dictionarySelKey;        ///< "dictionarySelKey"
    static const QString xml_attrName_dictionaryBindParamName; ///< "dictionaryBindParamName"
    static const QString xml_attrName_keyName;                 ///< "key_name"
    /// \}
};

} // namespace KelStd
