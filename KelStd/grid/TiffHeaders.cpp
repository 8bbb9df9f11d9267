#include <KelStd/grid/TiffHeaders.h>

#include <KelStd/grid/GridLayout.h>

#include <QtCore/QSet>
#include <QtCore/QtEndian>

#include <algorithm>

namespace kelstd_grid {

namespace {

/// A kind of numbers in TIFF.
struct TypeRow
{
    int type;
    int size; ///< [bytes]
    bool isReal;
};

constexpr TypeRow types[] = {
    {1, 1, false},  // byte
    {2, 1, false},  // ASCII
    {3, 2, false},  // short
    {4, 4, false},  // long
    {12, 8, true},  // double
    {13, 4, false}, // the offset of a header
    {16, 8, false}, // long of BigTIFF
    {18, 8, false}, // the offset of a header of BigTIFF
};

const TypeRow *findType(int type)
{
    for (const TypeRow &row : types) {
        if (row.type == type)
            return &row;
    }
    return nullptr;
}

constexpr TiffTag askedTags[] = {
    TiffTag::SubfileType,    TiffTag::Width,      TiffTag::Height,      TiffTag::StripOffsets,
    TiffTag::ValuesPerPixel, TiffTag::StripSizes, TiffTag::TileOffsets, TiffTag::TileSizes,
    TiffTag::PixelScale,     TiffTag::TiePoint,   TiffTag::GeoKeys,     TiffTag::GdalMetadata,
};

bool isAsked(int tag)
{
    return std::any_of(std::begin(askedTags), std::end(askedTags),
                       [tag](TiffTag asked) { return tag == static_cast<int>(asked); });
}

class Reader
{
public:
    explicit Reader(QFile &file) : m_file(file)
    {
        const QByteArray start = bytes(0, 4);
        m_isBigEndian = start.startsWith("MM");
        m_isBigTiff = start.size() == 4 && start.at(m_isBigEndian ? 3 : 2) == '+';
    }

    std::optional<QList<TiffHeaders::Image>> images()
    {
        constexpr int maxImages = 10000;
        QList<TiffHeaders::Image> images;
        QSet<qint64> seen;
        qint64 at = integer(bytes(m_isBigTiff ? 8 : 4, offsetSize()));
        while (at != 0) {
            if (!m_isWhole || seen.contains(at) || images.size() >= maxImages)
                return std::nullopt;
            seen.insert(at);
            images.append(image(at));
        }
        if (!m_isWhole)
            return std::nullopt;
        return images;
    }

private:
    int offsetSize() const { return m_isBigTiff ? 8 : 4; }

    /// Exactly so many bytes; otherwise the file is not whole.
    QByteArray bytes(qint64 at, qint64 size)
    {
        if (at < 0 || size < 0 || at > m_file.size() - size || !m_file.seek(at)) {
            m_isWhole = false;
            return {};
        }
        const QByteArray read = m_file.read(size);
        m_isWhole = m_isWhole && read.size() == size;
        return read;
    }

    template <typename Bits>
    Bits bitsOf(const char *from) const
    {
        return m_isBigEndian ? qFromBigEndian<Bits>(from) : qFromLittleEndian<Bits>(from);
    }

    /// Of one to eight bytes. What is too large for a file's place becomes a negative number.
    qint64 integer(const QByteArray &from) const
    {
        switch (from.size()) {
        case 1: return static_cast<unsigned char>(from.at(0));
        case 2: return bitsOf<quint16>(from.constData());
        case 4: return bitsOf<quint32>(from.constData());
        case 8: return bitsOf<qint64>(from.constData());
        default: return 0;
        }
    }

    /// The numbers of the image whose header stands there; `at` becomes the next header's place.
    TiffHeaders::Image image(qint64 &at)
    {
        const int countSize = m_isBigTiff ? 8 : 2;
        const qint64 entrySize = m_isBigTiff ? 20 : 12;
        constexpr qint64 maxEntries = 1000;
        TiffHeaders::Image image;
        const qint64 entries = integer(bytes(at, countSize));
        if (entries < 0 || entries > maxEntries)
            m_isWhole = false;
        const QByteArray header =
            m_isWhole ? bytes(at + countSize, entries * entrySize) : QByteArray();
        const qint64 next = m_isWhole ? at + countSize + entries * entrySize : 0;
        for (int entry = 0; m_isWhole && entry < entries; ++entry)
            addTag(header.mid(static_cast<int>(entry * entrySize), static_cast<int>(entrySize)),
                   image);
        at = m_isWhole ? integer(bytes(next, offsetSize())) : 0;
        return image;
    }

    void addTag(const QByteArray &entry, TiffHeaders::Image &image)
    {
        const int tag = static_cast<int>(integer(entry.left(2)));
        const TypeRow *const type = findType(static_cast<int>(integer(entry.mid(2, 2))));
        if (type == nullptr || !isAsked(tag))
            return;
        const qint64 count = integer(entry.mid(4, offsetSize()));
        const QByteArray field = entry.right(offsetSize());
        constexpr qint64 maxCount = 2000000; // pieces of values that an image has
        if (count < 0 || count > maxCount) {
            m_isWhole = false;
            return;
        }
        const qint64 size = count * type->size;
        const QByteArray values =
            size <= field.size() ? field.left(static_cast<int>(size)) : bytes(integer(field), size);
        QVector<double> numbers;
        for (int i = 0; m_isWhole && i < count; ++i) {
            const QByteArray value = values.mid(i * type->size, type->size);
            numbers += type->isReal ? numberOf<double>(bitsOf<quint64>(value.constData()))
                                    : static_cast<double>(integer(value));
        }
        image.insert(tag, numbers);
    }

    QFile &m_file;
    bool m_isBigEndian = false;
    bool m_isBigTiff = false;
    bool m_isWhole = true;
};

} // namespace

bool TiffHeaders::isTiff(const QByteArray &bytes)
{
    constexpr int magicSize = 4;
    const QByteArray magic = bytes.left(magicSize);
    return magic == QByteArray("II*\0", magicSize) || magic == QByteArray("MM\0*", magicSize)
           || magic == QByteArray("II+\0", magicSize) || magic == QByteArray("MM\0+", magicSize);
}

std::optional<QList<TiffHeaders::Image>> TiffHeaders::read(QFile &file)
{
    return Reader(file).images();
}

} // namespace kelstd_grid
