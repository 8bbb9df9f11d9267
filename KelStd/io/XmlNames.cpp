#include <KelStd/io/Coord_IO.h>

namespace KelStd {

// The names of the file format, spelled as every existing document spells them.
#define KELSTD_XML_NAME(member, name) const QString Coord_IO::member = QStringLiteral(name)

KELSTD_XML_NAME(xml_segName_root, "Coord");
KELSTD_XML_NAME(xml_segName_ellipsoid, "Ellpsoid");
KELSTD_XML_NAME(xml_segName_projection, "Projection");
KELSTD_XML_NAME(xml_segName_ellipsoidTransform, "Ellipsoid_Transform");
KELSTD_XML_NAME(xml_segName_planeTransform, "Plane_Transform");
KELSTD_XML_NAME(xml_segName_elevationFitting, "Elevation_Fitting");
KELSTD_XML_NAME(xml_segName_geoidModel, "Geoid_Model");
KELSTD_XML_NAME(xml_segName_param, "param");
KELSTD_XML_NAME(xml_segName_paramProj4, "paramProj4");
KELSTD_XML_NAME(xml_segName_dictionaryKey, "key");

KELSTD_XML_NAME(xml_attrName_ver, "ver");
KELSTD_XML_NAME(xml_attrName_rootName, "coord_name");
KELSTD_XML_NAME(xml_attrName_ellipsoidName, "ellipsoid_name");
KELSTD_XML_NAME(xml_attrName_biggerHalfAxle, "biggerHalfAxle");
KELSTD_XML_NAME(xml_attrName_reciprocal, "reciprocal");
KELSTD_XML_NAME(xml_attrName_positiveDir, "positiveDir");
KELSTD_XML_NAME(xml_attrName_proj4EllpsName, "proj4EllpsName");
KELSTD_XML_NAME(xml_attrName_projectionName, "projection_name");
KELSTD_XML_NAME(xml_attrName_proj4Projection, "proj4Projection");
KELSTD_XML_NAME(xml_attrName_locationType, "locationType");
KELSTD_XML_NAME(xml_attrName_locOrHeightUnit, "loc_or_height_unit");
KELSTD_XML_NAME(xml_attrName_fuction, "fuction");
KELSTD_XML_NAME(xml_attrName_nofuctionTranstion, "nofuction_transtion");
KELSTD_XML_NAME(xml_attrName_function, "function");
KELSTD_XML_NAME(xml_attrName_modelFileName, "modelFileName");
KELSTD_XML_NAME(xml_attrName_name, "name");
KELSTD_XML_NAME(xml_attrName_proj4Param, "proj4Param");
KELSTD_XML_NAME(xml_attrName_unit, "unit");
KELSTD_XML_NAME(xml_attrName_valType, "valType");
KELSTD_XML_NAME(xml_attrName_isDictionary, "isDictionary");
KELSTD_XML_NAME(xml_attrName_dictionarySelKey, "dictionarySelKey");
KELSTD_XML_NAME(xml_attrName_dictionaryBindParamName, "dictionaryBindParamName");
KELSTD_XML_NAME(xml_attrName_keyName, "key_name");

#undef KELSTD_XML_NAME

} // namespace KelStd
