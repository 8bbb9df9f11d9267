#include <KelStd/stream/VariantWriter.h>

#include <KelStd/stream/MetaTypes.h>

#include <QtCore/QHash>
#include <QtCore/QIODevice>

#include <algorithm>
#include <iterator>

namespace KelStd {

namespace {

void writeContent(QDataStream &stream, const QVariantMap &map)
{
    writeVariants(stream, map);
}

void writeContent(QDataStream &stream, const QVariantHash &hash)
{
    stream << static_cast<quint32>(hash.size());
    for (auto entry = hash.constBegin(); entry != hash.constEnd(); ++entry) {
        stream << entry.key();
        writeVariant(stream, entry.value());
    }
}

void writeContent(QDataStream &stream, const QVariantList &list)
{
    stream << static_cast<quint32>(list.size());
    for (const QVariant &value : list)
        writeVariant(stream, value);
}

void writeContent(QDataStream &stream, const QVariant &value)
{
    writeVariant(stream, value);
}

/// The number of the type and the null flag: Qt numbers the types for each version of streams, and
/// is asked with an empty variant of the type, whose content is known. Empty where that version has
/// no such type.
template <typename Content>
QByteArray headerOf(const QVariant &value, const QDataStream &stream)
{
    constexpr int minHeader = 4;
    QByteArray bytes;
    QDataStream whole(&bytes, QIODevice::WriteOnly);
    whole.setVersion(stream.version());
    whole.setByteOrder(stream.byteOrder());
    whole << emptyVariant(value.userType(), value.isNull());
    QByteArray content;
    QDataStream last(&content, QIODevice::WriteOnly);
    last.setVersion(stream.version());
    last << Content();
    const auto size = bytes.size() - content.size();
    return size >= minHeader && bytes.endsWith(content) ? bytes.left(size) : QByteArray();
}

template <typename Content>
void writeHolding(QDataStream &stream, const QVariant &value)
{
    const QByteArray header = headerOf<Content>(value, stream);
    if (header.isEmpty()) {
        stream << value;
        return;
    }
    stream.writeRawData(header.constData(), static_cast<int>(header.size()));
    writeContent(stream, *static_cast<const Content *>(value.constData()));
}

/// The types whose values may hold maps.
struct HoldingType
{
    int type;
    void (*write)(QDataStream &, const QVariant &);
};

constexpr HoldingType holdingTypes[] = {
    {QMetaType::QVariantList, &writeHolding<QVariantList>},
    {QMetaType::QVariantMap, &writeHolding<QVariantMap>},
    {QMetaType::QVariantHash, &writeHolding<QVariantHash>},
    {QMetaType::QVariant, &writeHolding<QVariant>},
};

} // namespace

void writeTexts(QDataStream &stream, const QMap<QString, QString> &texts)
{
    writeEntries(stream, texts, [](QDataStream &out, const QString &text) { out << text; });
}

void writeVariant(QDataStream &stream, const QVariant &value)
{
    const auto row =
        std::find_if(std::begin(holdingTypes), std::end(holdingTypes),
                     [&value](const HoldingType &each) { return each.type == value.userType(); });
    if (row != std::end(holdingTypes))
        row->write(stream, value);
    else
        stream << value;
}

void writeVariants(QDataStream &stream, const QMap<QString, QVariant> &values)
{
    writeEntries(stream, values, &writeVariant);
}

} // namespace KelStd
