#pragma once

#include <QtCore/QByteArray>

namespace KelStd::test {

class TemporaryHome;

/// Where the nodes of a grid lie; the first is that in the south-west. Angles in degrees.
struct ShiftGridNodes
{
    double south = 50.0;
    double west = 5.0;
    double latitudeSpacing = 1.0;
    double longitudeSpacing = 1.0;
    int rows = 3;
    int columns = 3;
    double northwards = 3.6; ///< what the most southern row moves ["]
    double northStep = 0.0;  ///< what each row moves more than the one south of it ["]
    double westwards = 7.2;  ///< what the most eastern column moves ["]
    double westStep = 0.0;   ///< what each column moves more than the one east of it ["]
};

/// An NTv2 file of one grid from "SITE" to "WORLD", little-endian, in seconds of arc. Its
/// nodes move northwards and westwards.
QByteArray ntv2Bytes(const ShiftGridNodes &nodes = {});

/// A little-endian TIFF file of nine pixels with so many float values each, whose centres lie from
/// 50 N 5 E to 52 N 7 E (PixelIsPoint). The values stand at its end. `metadata` is GDAL's, as
/// it has it in XML; with it the grid is one of GDA94 (EPSG:4283).
QByteArray geoTiffBytes(int valuesPerPixel, const QByteArray &metadata = {});

/// Gives a home with a prepared PROJ a resource directory of its own, which the test may change.
void ownResourceDirectory(const TemporaryHome &home);

} // namespace KelStd::test
