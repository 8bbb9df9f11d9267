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
};

/// An NTv2 file of one grid from "SITE" to "WORLD", little-endian, in seconds of arc. Each node
/// moves by 3.6 seconds northwards and 7.2 seconds westwards.
QByteArray ntv2Bytes(const ShiftGridNodes &nodes = {});

/// A little-endian TIFF file of nine pixels with so many float values each, whose centres lie from
/// 50 N 5 E to 52 N 7 E (PixelIsPoint). The values stand at its end.
QByteArray geoTiffBytes(int valuesPerPixel);

/// Gives a home with a prepared PROJ a resource directory of its own, which the test may change.
void ownResourceDirectory(const TemporaryHome &home);

} // namespace KelStd::test
