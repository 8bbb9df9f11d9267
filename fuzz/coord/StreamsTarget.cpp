// Binary streams of the coordinate model. The first byte picks the block, the second the stream's
// version and byte order; the rest is the stream.

#include "FuzzTarget.h"

#include <KelStd/coord/Coord.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <iterator>

namespace {

using KelStd::fuzz::require;

struct StreamForm
{
    int version;
    QDataStream::ByteOrder order;
};

/// Of 256 forms half are the usual one.
StreamForm formOf(std::uint8_t byte)
{
    constexpr int versions[] = {QDataStream::Qt_2_1, QDataStream::Qt_3_3, QDataStream::Qt_4_0,
                                QDataStream::Qt_4_2, QDataStream::Qt_5_0, QDataStream::Qt_5_6};
    if (byte < 128)
        return {QDataStream::Qt_5_15, QDataStream::BigEndian};
    return {versions[(byte / 2) % std::size(versions)],
            byte % 2 == 0 ? QDataStream::BigEndian : QDataStream::LittleEndian};
}

void setForm(QDataStream &stream, const StreamForm &form)
{
    stream.setVersion(form.version);
    stream.setByteOrder(form.order);
}

template <typename Value>
QByteArray saved(const Value &value, const StreamForm &form)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    setForm(stream, form);
    value.save(stream);
    return bytes;
}

/// What loads without a damage that Qt tells of comes back from the bytes that it is saved as.
/// Equal bytes are as good as an equal value, which a NaN never is.
template <typename Value>
void loadAndReload(const QByteArray &bytes, const StreamForm &form)
{
    Value value;
    QDataStream stream(bytes);
    setForm(stream, form);
    const bool loaded = value.load(stream);
    const QByteArray again = saved(value, form);
    if (!loaded || stream.status() != QDataStream::Ok)
        return;
    Value reloaded;
    QDataStream second(again);
    setForm(second, form);
    require(reloaded.load(second), "what was saved loads");
    require(second.atEnd(), "all that was saved is loaded");
    // Qt 5.15 itself swaps the halves of a 64-bit number in little-endian streams this old.
    require(form.version < QDataStream::Qt_4_0 || reloaded == value
                || saved(reloaded, form) == again,
            "what was saved comes back");
}

using Target = void (*)(const QByteArray &, const StreamForm &);

constexpr Target targets[] = {
    loadAndReload<KelStd::Param>,
    loadAndReload<KelStd::Ellipsoid>,
    loadAndReload<KelStd::Projection>,
    loadAndReload<KelStd::stEllipsoinTransform>,
    loadAndReload<KelStd::stPlaneTransform>,
    loadAndReload<KelStd::stElevationFitting>,
    loadAndReload<KelStd::stGeoidModel>,
    loadAndReload<KelStd::Pos>,
    loadAndReload<KelStd::Location>,
    loadAndReload<KelStd::Coord>,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t head = 2;
    if (size < head)
        return 0;
    static const bool silent = (KelStd::fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    const QByteArray bytes(reinterpret_cast<const char *>(data) + head, int(size - head));
    targets[data[0] % std::size(targets)](bytes, formOf(data[1]));
    return 0;
}
