#pragma once

#include <KelStd/grid/GridFailure.h>
#include <KelStd/grid/GridNodes.h>

#include <QtCore/QString>
#include <QtCore/QtEndian>

#include <cstring>

/// The layouts of geoid grid files: a header, and after it four bytes for each node's value, row by
/// row from west to east. Both libraries are compiled with these sources (see GgfGrid.h).
namespace kelstd_grid {

/// Where a layout has the fields of its header, and which order its bytes have.
struct GridLayout
{
    const char *suffix; ///< of the files' names, in small letters
    bool isBigEndian;
    qint64 headerSize;
    // Doubles.
    int latitudeAt;
    int longitudeAt;
    int latitudeSpacingAt;
    int longitudeSpacingAt;
    // Integers of four bytes.
    int rowsAt;
    int columnsAt;
    /// One byte, 1 where the first row is the southernmost and anything else where it is the
    /// northernmost; -1 for a layout without it, whose first row is the southernmost.
    int rowOrderAt;
    bool endsWithValues; ///< nothing may stand behind the last value
};

inline constexpr GridLayout gtxLayout{"gtx", true, 40, 0, 8, 16, 24, 32, 36, -1, true};
inline constexpr GridLayout ggfLayout{"ggf", false, 146, 48, 64, 80, 88, 96, 100, 142, false};

inline constexpr qint64 valueSize = 4;

/// A number in the layout's order of bytes.
template <typename Bits>
Bits bitsOf(const GridLayout &layout, const char *bytes)
{
    return layout.isBigEndian ? qFromBigEndian<Bits>(bytes) : qFromLittleEndian<Bits>(bytes);
}

template <typename Bits>
void putBits(const GridLayout &layout, Bits bits, char *bytes)
{
    if (layout.isBigEndian)
        qToBigEndian(bits, bytes);
    else
        qToLittleEndian(bits, bytes);
}

template <typename Number, typename Bits>
Number numberOf(Bits bits)
{
    static_assert(sizeof(Number) == sizeof(Bits));
    Number number{};
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

/// What a header says, whether it makes sense or not.
KelStd::GridNodes nodesOf(const GridLayout &layout, const char *header);

/// Whether the first row of the file is the northernmost one.
bool isReversed(const GridLayout &layout, const char *header);

/// Whether a spacing is one by which PROJ can tell nodes apart [deg]. NaN is none.
bool isSpacing(double degrees);

/// Whether a header has rows, columns, spacings and a place on the earth.
bool describesGrid(const KelStd::GridNodes &nodes);

/// Why a grid with these nodes cannot be used in a file of so many bytes: what a header describes
/// may not be there, or not on the earth.
KelStd::GridFailureKind faultOf(const GridLayout &layout, const KelStd::GridNodes &nodes,
                                qint64 fileSize);

/// Whether a file's name ends like those of the layout, in letters of either size.
bool isNamedAs(const GridLayout &layout, const QString &name);

} // namespace kelstd_grid
