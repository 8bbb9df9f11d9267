#include <KelStd/io/RecordWriters.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/RecordParamNames.h>
#include <KelStd/io/ValueText.h>
#include <KelStd/io/XmlDocument.h>
#include <KelStd/text/CoordStringHelper.h>

#include <QtCore/QLocale>

namespace KelStd::io {

namespace {

using Names = Coord_IO;
using Words = CoordStringHelper;

/// The shortest text that reads back as the same double.
QString exactNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

void appendText(QDomDocument &document, QDomElement &element, const QString &text)
{
    element.appendChild(document.createTextNode(text));
}

/// Writes `param` onto an element that may already have attributes of its own.
void writeParam(QDomDocument &document, QDomElement &element, const Param &param)
{
    element.setAttribute(Names::xml_attrName_ver, documentVersion);
    element.setAttribute(Names::xml_attrName_unit,
                         Words::ForCoordIO_Unit_to_DescriptionAsciiString(param.unit));
    element.setAttribute(Names::xml_attrName_valType,
                         Words::ForCoordIO_ValueType_to_AsciiString(param.valType));
    element.setAttribute(Names::xml_attrName_isDictionary,
                         Words::ForCoordIO_Boolean_to_AsciiString(param.isDictionary));
    if (!param.isDictionary) {
        appendText(document, element, toValueText(param.valType, param.value));
        return;
    }

    // A dictionary has no text of its own: its value is not written.
    element.setAttribute(Names::xml_attrName_dictionarySelKey, param.dictionarySelKey);
    element.setAttribute(Names::xml_attrName_dictionaryBindParamName,
                         param.dictionaryBindParamName);
    const auto &entries = param.dictionaryValues;
    for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
        QDomElement key = document.createElement(Names::xml_segName_dictionaryKey);
        key.setAttribute(Names::xml_attrName_keyName, entry.key());
        appendText(document, key, toValueText(param.valType, entry.value()));
        element.appendChild(key);
    }
}

template <typename Record, std::size_t count>
void writeParams(QDomDocument &document, QDomElement &element, const Record &record,
                 const NamedParam<Record> (&rows)[count])
{
    for (const auto &row : rows) {
        QDomElement child = document.createElement(QString::fromLatin1(row.name));
        writeParam(document, child, record.*row.member);
        element.appendChild(child);
    }
}

QDomElement ellipsoidTransformElement(QDomDocument &document, const stEllipsoinTransform &record)
{
    QDomElement element = versionedElement(document, Names::xml_segName_ellipsoidTransform);
    element.setAttribute(
        Names::xml_attrName_fuction,
        Words::ForCoordIO_EEllipsoinTransformFunction_to_AsciiString(record.fuction));
    element.setAttribute(
        Names::xml_attrName_nofuctionTranstion,
        Words::ForCoordIO_EEllipsoinTransition_to_AsciiString(record.nofuction_transtion));
    writeParams(document, element, record, ellipsoidTransformParams);
    return element;
}

QDomElement planeTransformElement(QDomDocument &document, const stPlaneTransform &record)
{
    QDomElement element = versionedElement(document, Names::xml_segName_planeTransform);
    element.setAttribute(Names::xml_attrName_fuction,
                         Words::ForCoordIO_EPlaneTransformFunction_to_AsciiString(record.fuction));
    writeParams(document, element, record, planeTransformParams);
    return element;
}

QDomElement elevationFittingElement(QDomDocument &document, const stElevationFitting &record)
{
    QDomElement element = versionedElement(document, Names::xml_segName_elevationFitting);
    element.setAttribute(
        Names::xml_attrName_function,
        Words::ForCoordIO_EElevationFittingFunction_to_AsciiString(record.function));
    writeParams(document, element, record, elevationFittingParams);
    return element;
}

QDomElement geoidModelElement(QDomDocument &document, const stGeoidModel &record)
{
    QDomElement element = versionedElement(document, Names::xml_segName_geoidModel);
    element.setAttribute(Names::xml_attrName_modelFileName, record.modelFileName);
    return element;
}

} // namespace

QDomElement versionedElement(QDomDocument &document, const QString &name)
{
    QDomElement element = document.createElement(name);
    element.setAttribute(Names::xml_attrName_ver, documentVersion);
    return element;
}

QDomElement ellipsoidElement(QDomDocument &document, const Ellipsoid &ellipsoid)
{
    QDomElement element = versionedElement(document, Names::xml_segName_ellipsoid);
    element.setAttribute(Names::xml_attrName_ellipsoidName, ellipsoid.ellipsoid_name);
    element.setAttribute(Names::xml_attrName_biggerHalfAxle,
                         exactNumber(ellipsoid.biggerHalfAxle.value.toDouble()));
    element.setAttribute(Names::xml_attrName_reciprocal, exactNumber(ellipsoid.reciprocal));
    element.setAttribute(
        Names::xml_attrName_positiveDir,
        Words::ForCoordIO_EEllipsoidDirection_to_AsciiString(ellipsoid.positiveDir));
    element.setAttribute(Names::xml_attrName_proj4EllpsName, ellipsoid.proj4EllpsName);
    return element;
}

QDomElement projectionElement(QDomDocument &document, const Projection &projection)
{
    QDomElement element = versionedElement(document, Names::xml_segName_projection);
    element.setAttribute(Names::xml_attrName_projectionName, projection.projection_name);
    element.setAttribute(Names::xml_attrName_proj4Projection, projection.proj4Projection);
    element.setAttribute(Names::xml_attrName_locationType,
                         Words::ForCoordIO_ELocationType_to_AsciiString(projection.locationType));
    element.setAttribute(
        Names::xml_attrName_locOrHeightUnit,
        Words::ForCoordIO_Unit_to_DescriptionAsciiString(projection.loc_or_height_unit));

    const auto &params = projection.param;
    for (auto entry = params.constBegin(); entry != params.constEnd(); ++entry) {
        QDomElement child = document.createElement(Names::xml_segName_param);
        child.setAttribute(Names::xml_attrName_name, entry.key());
        writeParam(document, child, entry.value());
        element.appendChild(child);
    }
    const auto &names = projection.paramProj4;
    for (auto entry = names.constBegin(); entry != names.constEnd(); ++entry) {
        QDomElement child = document.createElement(Names::xml_segName_paramProj4);
        child.setAttribute(Names::xml_attrName_name, entry.key());
        child.setAttribute(Names::xml_attrName_proj4Param, entry.value());
        element.appendChild(child);
    }
    return element;
}

QDomDocument coordDocument(const Coord &coord)
{
    QDomDocument document = documentFrame();
    QDomElement root = versionedElement(document, Names::xml_segName_root);
    root.setAttribute(Names::xml_attrName_rootName, coord.coord_name);
    root.appendChild(ellipsoidElement(document, coord.ellipsoid));
    root.appendChild(projectionElement(document, coord.projection));
    root.appendChild(ellipsoidTransformElement(document, coord.ellipsoidTransform));
    root.appendChild(planeTransformElement(document, coord.planeTransform));
    root.appendChild(elevationFittingElement(document, coord.elevationFitting));
    root.appendChild(geoidModelElement(document, coord.geoidModel));
    document.appendChild(root);
    return document;
}

} // namespace KelStd::io
