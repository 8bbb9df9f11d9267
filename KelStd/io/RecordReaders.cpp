#include <KelStd/io/RecordReaders.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DomParser.h>
#include <KelStd/io/RecordParamNames.h>
#include <KelStd/io/ShortenedText.h>
#include <KelStd/io/ValueText.h>
#include <KelStd/text/CoordStringHelper.h>

namespace KelStd::io {

namespace {

using Names = Coord_IO;
using Words = CoordStringHelper;

/// Reads an enumeration word when the element has one; otherwise the value stays.
template <typename Enumeration>
void readWord(const QDomElement &element, const QString &attribute,
              Enumeration (*fromWord)(const QString &), Enumeration &value)
{
    const QString word = element.attribute(attribute);
    if (!word.isEmpty())
        value = fromWord(word);
}

/// The value of an element whose first child is a text; otherwise null.
QVariant ownValue(const QDomElement &element, EValueType type)
{
    const QDomNode first = element.firstChild();
    return first.isText() ? fromValueText(type, first.nodeValue()) : QVariant();
}

/// Reads the parameters that the element has. One of another version is left as it is.
template <typename Record, std::size_t count>
void readParams(const QDomElement &element, Record &record, const NamedParam<Record> (&rows)[count])
{
    for (const auto &row : rows) {
        const QDomElement child = element.firstChildElement(QString::fromLatin1(row.name));
        DocumentFailure passedOver;
        if (!child.isNull())
            readParam(child, record.*row.member, passedOver);
    }
}

} // namespace

bool hasReadableVersion(const QDomElement &element)
{
    return element.attribute(Names::xml_attrName_ver).toInt() == documentVersion;
}

bool hasReadableVersion(const QDomElement &element, DocumentFailure &failure)
{
    if (hasReadableVersion(element))
        return true;
    const QString version = element.attribute(Names::xml_attrName_ver);
    failure = {DocumentFault::OtherVersion,
               QStringLiteral("the element [%1] has %2, not version %3")
                   .arg(shortened(element.tagName()),
                        version.isEmpty()
                            ? QStringLiteral("no version")
                            : QStringLiteral("version \"%1\"").arg(shortened(version)),
                        QString::number(documentVersion)),
               lineOf(element)};
    return false;
}

bool readParam(const QDomElement &element, Param &param, DocumentFailure &failure)
{
    if (!hasReadableVersion(element, failure))
        return false;
    // Type and unit are always assigned: a missing or unknown word is 0.
    param.unit = Words::ForCoordIO_Unit_from_DescriptionAsciiString(
        element.attribute(Names::xml_attrName_unit));
    param.valType = Words::ForCoordIO_ValueType_from_AsciiString(
        element.attribute(Names::xml_attrName_valType));
    param.isDictionary = Words::ForCoordIO_Boolean_from_AsciiString(
        element.attribute(Names::xml_attrName_isDictionary));
    if (param.isDictionary) {
        param.dictionarySelKey = element.attribute(Names::xml_attrName_dictionarySelKey);
        param.dictionaryBindParamName =
            element.attribute(Names::xml_attrName_dictionaryBindParamName);
        readEach(element, Names::xml_segName_dictionaryKey, [&param](const QDomElement &key) {
            const QVariant value = ownValue(key, param.valType);
            if (value.isValid())
                param.dictionaryValues.insert(key.attribute(Names::xml_attrName_keyName), value);
            return true;
        });
    }
    const QVariant value = ownValue(element, param.valType);
    if (value.isValid())
        param.value = value;
    return true;
}

bool readEllipsoid(const QDomElement &element, Ellipsoid &ellipsoid, DocumentFailure &failure)
{
    if (!hasReadableVersion(element, failure))
        return false;
    ellipsoid.ellipsoid_name = element.attribute(Names::xml_attrName_ellipsoidName);
    const QString axis = element.attribute(Names::xml_attrName_biggerHalfAxle);
    if (!axis.isEmpty())
        ellipsoid.biggerHalfAxle.value = axis.toDouble();
    ellipsoid.reciprocal = element.attribute(Names::xml_attrName_reciprocal).toDouble();
    // The first release's words ("EEllipsoidHeadDirection_WSU" and the like) are in no table: they
    // read as east, north, up, like every unknown word.
    readWord(element, Names::xml_attrName_positiveDir,
             &Words::ForCoordIO_EEllipsoidDirection_from_AsciiString, ellipsoid.positiveDir);
    ellipsoid.proj4EllpsName = element.attribute(Names::xml_attrName_proj4EllpsName);
    return true;
}

bool readProjection(const QDomElement &element, Projection &projection, DocumentFailure &failure)
{
    if (!hasReadableVersion(element, failure))
        return false;
    projection.projection_name = element.attribute(Names::xml_attrName_projectionName);
    projection.proj4Projection = element.attribute(Names::xml_attrName_proj4Projection);
    readWord(element, Names::xml_attrName_locationType,
             &Words::ForCoordIO_ELocationType_from_AsciiString, projection.locationType);
    readWord(element, Names::xml_attrName_locOrHeightUnit,
             &Words::ForCoordIO_Unit_from_DescriptionAsciiString, projection.loc_or_height_unit);

    const bool complete =
        readEach(element, Names::xml_segName_param, [&](const QDomElement &child) {
            Param param;
            if (!readParam(child, param, failure))
                return false;
            projection.param.insert(child.attribute(Names::xml_attrName_name), param);
            return true;
        });
    return complete
           && readEach(
               element, Names::xml_segName_paramProj4, [&projection](const QDomElement &child) {
                   projection.paramProj4.insert(child.attribute(Names::xml_attrName_name),
                                                child.attribute(Names::xml_attrName_proj4Param));
                   return true;
               });
}

bool readEllipsoidTransform(const QDomElement &element, stEllipsoinTransform &record,
                            DocumentFailure &failure)
{
    if (!hasReadableVersion(element, failure))
        return false;
    readWord(element, Names::xml_attrName_fuction,
             &Words::ForCoordIO_EEllipsoinTransformFunction_from_AsciiString, record.fuction);
    readWord(element, Names::xml_attrName_nofuctionTranstion,
             &Words::ForCoordIO_EEllipsoinTransition_from_AsciiString, record.nofuction_transtion);
    readParams(element, record, ellipsoidTransformParams);
    return true;
}

bool readPlaneTransform(const QDomElement &element, stPlaneTransform &record,
                        DocumentFailure &failure)
{
    if (!hasReadableVersion(element, failure))
        return false;
    readWord(element, Names::xml_attrName_fuction,
             &Words::ForCoordIO_EPlaneTransformFunction_from_AsciiString, record.fuction);
    readParams(element, record, planeTransformParams);
    return true;
}

bool readElevationFitting(const QDomElement &element, stElevationFitting &record,
                          DocumentFailure &failure)
{
    if (!hasReadableVersion(element, failure))
        return false;
    readWord(element, Names::xml_attrName_function,
             &Words::ForCoordIO_EElevationFittingFunction_from_AsciiString, record.function);
    readParams(element, record, elevationFittingParams);
    return true;
}

bool readGeoidModel(const QDomElement &element, stGeoidModel &record, DocumentFailure &failure)
{
    if (!hasReadableVersion(element, failure))
        return false;
    record.modelFileName = element.attribute(Names::xml_attrName_modelFileName);
    return true;
}

} // namespace KelStd::io
