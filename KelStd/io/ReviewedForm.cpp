#include <KelStd/io/ReviewedForm.h>

#include <KelStd/io/ControlElement.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/OriginElement.h>
#include <KelStd/io/ProjNames.h>
#include <KelStd/io/RecordParamNames.h>
#include <KelStd/io/RecordReaders.h>
#include <KelStd/io/ReviewedShape.h>
#include <KelStd/io/ReviewedValue.h>
#include <KelStd/io/ValueText.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/EnumerationTables.h>

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <algorithm>

namespace KelStd::io {

namespace {

using Names = Coord_IO;
using Words = CoordStringHelper;

/// A missing attribute is not read, and an empty one counts as missing.
template <typename Enumeration>
void reviewWord(const QDomElement &element, const QString &attribute,
                Enumeration (*fromWord)(const QString &), QString (*toWord)(Enumeration),
                ReviewFindings &findings)
{
    const QString word = element.attribute(attribute);
    if (word.isEmpty())
        return;
    const QString understood = toWord(fromWord(word));
    // The first release's word for east, north, up, which every unknown word is read as.
    const bool meansTheSame = word == QLatin1String("EEllipsoidHeadDirection_ENU");
    if (understood != word && !meansTheSame)
        findings.addAttribute(FindingKind::UnknownWord, element, attribute, understood);
}

bool hasUnit(EValueType type)
{
    switch (kindOf(type)) {
    case ValueKind::Length:
    case ValueKind::Angle:
    case ValueKind::Longitude:
    case ValueKind::Latitude:
    case ValueKind::Pressure:
    case ValueKind::Temperature: return true;
    default: return false;
    }
}

void reviewDictionary(const QDomElement &element, EValueType type, ReviewFindings &findings)
{
    static const Shape shape = {
        {Names::xml_attrName_keyName, Names::xml_attrName_ver}, {}, {}, true};
    QSet<QString> seen;
    readEach(element, Names::xml_segName_dictionaryKey, [&](const QDomElement &key) {
        reviewShape(key, shape, findings);
        const QString name = key.attribute(Names::xml_attrName_keyName);
        if (!key.hasAttribute(Names::xml_attrName_keyName))
            findings.addAttribute(FindingKind::MissingAttribute, key, Names::xml_attrName_keyName);
        else if (seen.contains(name))
            findings.add(FindingKind::Repeated, key, name, QObject::tr("the last one"));
        seen += name;
        reviewValue(key, type, findings);
        return true;
    });
}

/// A parameter of a record or, with a name, of a projection.
void reviewParam(const QDomElement &element, bool hasName, ReviewFindings &findings)
{
    const bool isDictionary = Words::ForCoordIO_Boolean_from_AsciiString(
        element.attribute(Names::xml_attrName_isDictionary));
    Shape shape = {{Names::xml_attrName_ver, Names::xml_attrName_unit, Names::xml_attrName_valType,
                    Names::xml_attrName_isDictionary},
                   {},
                   {},
                   true};
    if (hasName)
        shape.attributes += Names::xml_attrName_name;
    for (const QString &name :
         {Names::xml_attrName_dictionarySelKey, Names::xml_attrName_dictionaryBindParamName}) {
        if (isDictionary || element.attribute(name).isEmpty())
            shape.attributes += name;
    }
    if (isDictionary)
        shape.repeated += Names::xml_segName_dictionaryKey;
    reviewShape(element, shape, findings);
    if (!reviewVersion(element, findings))
        return;

    Param param;
    DocumentFailure none; // its version is known to be the right one
    readParam(element, param, none);
    if (hasName)
        reviewPresence(element, Names::xml_attrName_name, {}, findings);
    const QString noType = Words::ForCoordIO_ValueType_to_AsciiString(ValueType_None);
    const QString noUnit = Words::ForCoordIO_Unit_to_DescriptionAsciiString(Unit_None);
    reviewPresence(element, Names::xml_attrName_valType, noType, findings);
    if (hasUnit(param.valType))
        reviewPresence(element, Names::xml_attrName_unit, noUnit, findings);
    reviewWord(element, Names::xml_attrName_valType, &Words::ForCoordIO_ValueType_from_AsciiString,
               &Words::ForCoordIO_ValueType_to_AsciiString, findings);
    reviewWord(element, Names::xml_attrName_unit,
               &Words::ForCoordIO_Unit_from_DescriptionAsciiString,
               &Words::ForCoordIO_Unit_to_DescriptionAsciiString, findings);
    const QString dictionaryWord = element.attribute(Names::xml_attrName_isDictionary);
    if (!dictionaryWord.isEmpty() && !isBooleanWord(dictionaryWord)) {
        findings.addAttribute(FindingKind::UnknownWord, element, Names::xml_attrName_isDictionary,
                              Words::ForCoordIO_Boolean_to_AsciiString(false));
    }
    if (isDictionary)
        reviewDictionary(element, param.valType, findings);
    reviewValue(element, param.valType, findings);
}

/// A name of PROJ, which stands in a definition as it is written.
void reviewProjName(const QDomElement &element, const QString &attribute, const QString &name,
                    ReviewFindings &findings)
{
    if (!isOneProjName(name))
        findings.addAttribute(FindingKind::NotOneProjName, element, attribute);
}

void reviewEllipsoidForm(const QDomElement &element, ReviewFindings &findings)
{
    static const Shape shape = {{Names::xml_attrName_ver, Names::xml_attrName_ellipsoidName,
                                 Names::xml_attrName_biggerHalfAxle, Names::xml_attrName_reciprocal,
                                 Names::xml_attrName_positiveDir,
                                 Names::xml_attrName_proj4EllpsName},
                                {},
                                {},
                                false};
    reviewShape(element, shape, findings);
    reviewVersion(element, findings);
    reviewNumber(element, Names::xml_attrName_biggerHalfAxle, findings);
    reviewNumber(element, Names::xml_attrName_reciprocal, findings);
    reviewWord(element, Names::xml_attrName_positiveDir,
               &Words::ForCoordIO_EEllipsoidDirection_from_AsciiString,
               &Words::ForCoordIO_EEllipsoidDirection_to_AsciiString, findings);
    // Blanks around it are left out of the definition.
    if (!isOneProjEllipsoid(element.attribute(Names::xml_attrName_proj4EllpsName).trimmed()))
        findings.addAttribute(FindingKind::NotOneProjName, element,
                              Names::xml_attrName_proj4EllpsName);
}

/// Of the children called `childName` the last of each name counts.
void reviewRepeatedNames(const QDomElement &element, const QString &childName,
                         ReviewFindings &findings)
{
    QSet<QString> seen;
    readEach(element, childName, [&](const QDomElement &child) {
        const QString name = child.attribute(Names::xml_attrName_name);
        if (seen.contains(name)) {
            findings.addAttribute(FindingKind::Repeated, child, Names::xml_attrName_name,
                                  QObject::tr("the last one"));
        }
        seen += name;
        return true;
    });
}

void reviewProjectionForm(const QDomElement &element, ReviewFindings &findings)
{
    static const Shape shape = {{Names::xml_attrName_ver, Names::xml_attrName_projectionName,
                                 Names::xml_attrName_proj4Projection,
                                 Names::xml_attrName_locationType,
                                 Names::xml_attrName_locOrHeightUnit},
                                {},
                                {Names::xml_segName_param, Names::xml_segName_paramProj4},
                                false};
    static const Shape nameShape = {
        {Names::xml_attrName_name, Names::xml_attrName_proj4Param, Names::xml_attrName_ver},
        {},
        {},
        false};
    reviewShape(element, shape, findings);
    reviewVersion(element, findings);
    reviewWord(element, Names::xml_attrName_locationType,
               &Words::ForCoordIO_ELocationType_from_AsciiString,
               &Words::ForCoordIO_ELocationType_to_AsciiString, findings);
    reviewWord(element, Names::xml_attrName_locOrHeightUnit,
               &Words::ForCoordIO_Unit_from_DescriptionAsciiString,
               &Words::ForCoordIO_Unit_to_DescriptionAsciiString, findings);
    reviewProjName(element, Names::xml_attrName_proj4Projection,
                   element.attribute(Names::xml_attrName_proj4Projection), findings);
    readEach(element, Names::xml_segName_param, [&findings](const QDomElement &child) {
        reviewParam(child, true, findings);
        return true;
    });
    readEach(element, Names::xml_segName_paramProj4, [&findings](const QDomElement &child) {
        reviewShape(child, nameShape, findings);
        reviewPresence(child, Names::xml_attrName_name, {}, findings);
        reviewPresence(child, Names::xml_attrName_proj4Param, {}, findings);
        reviewProjName(child, Names::xml_attrName_proj4Param,
                       child.attribute(Names::xml_attrName_proj4Param), findings);
        return true;
    });
    reviewRepeatedNames(element, Names::xml_segName_param, findings);
    reviewRepeatedNames(element, Names::xml_segName_paramProj4, findings);
}

/// A record with words of its own and the parameters of `rows`.
template <typename Record, std::size_t count>
void reviewRecordForm(const QDomElement &element, const QStringList &words,
                      const NamedParam<Record> (&rows)[count], ReviewFindings &findings)
{
    Shape shape = {QStringList{Names::xml_attrName_ver} + words, {}, {}, false};
    for (const auto &row : rows)
        shape.single += QString::fromLatin1(row.name);
    reviewShape(element, shape, findings);
    reviewVersion(element, findings);
    for (const QString &name : shape.single) {
        const QDomElement child = element.firstChildElement(name);
        if (!child.isNull())
            reviewParam(child, false, findings);
    }
}

void reviewTransformForm(const QDomElement &element, ReviewFindings &findings)
{
    reviewRecordForm(element, {Names::xml_attrName_fuction, Names::xml_attrName_nofuctionTranstion},
                     ellipsoidTransformParams, findings);
    reviewWord(element, Names::xml_attrName_fuction,
               &Words::ForCoordIO_EEllipsoinTransformFunction_from_AsciiString,
               &Words::ForCoordIO_EEllipsoinTransformFunction_to_AsciiString, findings);
    reviewWord(element, Names::xml_attrName_nofuctionTranstion,
               &Words::ForCoordIO_EEllipsoinTransition_from_AsciiString,
               &Words::ForCoordIO_EEllipsoinTransition_to_AsciiString, findings);
}

void reviewPlaneForm(const QDomElement &element, ReviewFindings &findings)
{
    reviewRecordForm(element, {Names::xml_attrName_fuction}, planeTransformParams, findings);
    reviewWord(element, Names::xml_attrName_fuction,
               &Words::ForCoordIO_EPlaneTransformFunction_from_AsciiString,
               &Words::ForCoordIO_EPlaneTransformFunction_to_AsciiString, findings);
}

void reviewFittingForm(const QDomElement &element, ReviewFindings &findings)
{
    reviewRecordForm(element, {Names::xml_attrName_function}, elevationFittingParams, findings);
    reviewWord(element, Names::xml_attrName_function,
               &Words::ForCoordIO_EElevationFittingFunction_from_AsciiString,
               &Words::ForCoordIO_EElevationFittingFunction_to_AsciiString, findings);
}

void reviewGeoidForm(const QDomElement &element, ReviewFindings &findings)
{
    static const Shape shape = {
        {Names::xml_attrName_ver, Names::xml_attrName_modelFileName}, {}, {}, false};
    reviewShape(element, shape, findings);
    reviewVersion(element, findings);
}

struct RecordRow
{
    const QString &name;
    void (*review)(const QDomElement &, ReviewFindings &);
};

const RecordRow recordRows[] = {
    {Names::xml_segName_ellipsoid, &reviewEllipsoidForm},
    {Names::xml_segName_projection, &reviewProjectionForm},
    {Names::xml_segName_ellipsoidTransform, &reviewTransformForm},
    {Names::xml_segName_planeTransform, &reviewPlaneForm},
    {Names::xml_segName_elevationFitting, &reviewFittingForm},
    {Names::xml_segName_geoidModel, &reviewGeoidForm},
};

} // namespace

void reviewCoordForm(const QDomElement &root, ReviewFindings &findings)
{
    Shape shape = {{Names::xml_attrName_ver, Names::xml_attrName_rootName}, {}, {}, false};
    for (const RecordRow &row : recordRows)
        shape.single += row.name;
    shape.single += originElementName();
    shape.single += controlElementName();
    reviewVersion(root, findings);
    reviewShape(root, shape, findings);
    for (const RecordRow &row : recordRows) {
        const QDomElement record = root.firstChildElement(row.name);
        if (!record.isNull())
            row.review(record, findings);
    }
    const QDomElement origin = root.firstChildElement(originElementName());
    if (!origin.isNull())
        reviewOriginForm(origin, findings);
    const QDomElement control = root.firstChildElement(controlElementName());
    if (!control.isNull())
        reviewControlForm(control, findings);
}

void reviewListForm(const QDomElement &root, const QString &recordName, ReviewFindings &findings)
{
    reviewVersion(root, findings);
    reviewShape(root, {{Names::xml_attrName_ver}, {}, {recordName}, false}, findings);
    for (const RecordRow &row : recordRows) {
        if (row.name == recordName) {
            readEach(root, recordName, [&](const QDomElement &record) {
                row.review(record, findings);
                return true;
            });
        }
    }
}

void reviewDamage(const QDomElement &element, ReviewFindings &findings)
{
    const auto isDamaged = [](const QString &text) {
        return text.contains(QChar(QChar::ReplacementCharacter));
    };
    for (const QString &name : attributeNames(element)) {
        if (isDamaged(element.attribute(name)))
            findings.addAttribute(FindingKind::DamagedText, element, name);
    }
    const QString text = wholeText(element);
    if (isDamaged(text))
        findings.add(FindingKind::DamagedText, element, text);
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement())
        reviewDamage(child, findings);
}

} // namespace KelStd::io
