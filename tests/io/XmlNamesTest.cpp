#include "support/Printers.h"

#include <KelStd/io/Coord_IO.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

struct NameRow
{
    const QString &member;
    const char *name;
};

TEST(XmlNames, ElementsAreSpelledAsInTheFiles)
{
    const NameRow rows[] = {
        {Coord_IO::xml_segName_root, "Coord"},
        {Coord_IO::xml_segName_ellipsoid, "Ellpsoid"},
        {Coord_IO::xml_segName_projection, "Projection"},
        {Coord_IO::xml_segName_ellipsoidTransform, "Ellipsoid_Transform"},
        {Coord_IO::xml_segName_planeTransform, "Plane_Transform"},
        {Coord_IO::xml_segName_elevationFitting, "Elevation_Fitting"},
        {Coord_IO::xml_segName_geoidModel, "Geoid_Model"},
        {Coord_IO::xml_segName_param, "param"},
        {Coord_IO::xml_segName_paramProj4, "paramProj4"},
        {Coord_IO::xml_segName_dictionaryKey, "key"},
    };
    for (const NameRow &row : rows)
        EXPECT_EQ(row.member, QString::fromLatin1(row.name));
}

TEST(XmlNames, AttributesAreSpelledAsInTheFiles)
{
    const NameRow rows[] = {
        {Coord_IO::xml_attrName_ver, "ver"},
        {Coord_IO::xml_attrName_rootName, "coord_name"},
        {Coord_IO::xml_attrName_ellipsoidName, "ellipsoid_name"},
        {Coord_IO::xml_attrName_biggerHalfAxle, "biggerHalfAxle"},
        {Coord_IO::xml_attrName_reciprocal, "reciprocal"},
        {Coord_IO::xml_attrName_positiveDir, "positiveDir"},
        {Coord_IO::xml_attrName_proj4EllpsName, "proj4EllpsName"},
        {Coord_IO::xml_attrName_projectionName, "projection_name"},
        {Coord_IO::xml_attrName_proj4Projection, "proj4Projection"},
        {Coord_IO::xml_attrName_locationType, "locationType"},
        {Coord_IO::xml_attrName_locOrHeightUnit, "loc_or_height_unit"},
        {Coord_IO::xml_attrName_fuction, "fuction"},
        {Coord_IO::xml_attrName_nofuctionTranstion, "nofuction_transtion"},
        {Coord_IO::xml_attrName_function, "function"},
        {Coord_IO::xml_attrName_modelFileName, "modelFileName"},
        {Coord_IO::xml_attrName_name, "name"},
        {Coord_IO::xml_attrName_proj4Param, "proj4Param"},
        {Coord_IO::xml_attrName_unit, "unit"},
        {Coord_IO::xml_attrName_valType, "valType"},
        {Coord_IO::xml_attrName_isDictionary, "isDictionary"},
        {Coord_IO::xml_attrName_dictionarySelKey, "dictionarySelKey"},
        {Coord_IO::xml_attrName_dictionaryBindParamName, "dictionaryBindParamName"},
        {Coord_IO::xml_attrName_keyName, "key_name"},
    };
    for (const NameRow &row : rows)
        EXPECT_EQ(row.member, QString::fromLatin1(row.name));
}

} // namespace
} // namespace KelStd
