#pragma once

#include <KelStd/coord/Coord.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>

#include <string>
#include <vector>

/// Binary streams of the coordinate model in hex, and what they hold.
namespace KelStd::test {

/// A field of a block: its path and its bytes.
struct StreamField
{
    std::string name;
    QByteArray bytes;
};

/// The fields of a text file of tests/data/streams, for example "coord_v2". Throws at a line that
/// is not a name and bytes in hex.
std::vector<StreamField> streamFields(const char *file);

/// The bytes of the file beside that text.
QByteArray streamFile(const char *file);

QByteArray joined(const std::vector<StreamField> &fields);

/// Where the field's bytes begin. Throws when there is no such field.
int offsetOf(const std::vector<StreamField> &fields, const std::string &name);

/// A version, as opposed to all other fields, decides whether a block loads.
bool isVersion(const StreamField &field);

/// The system of tests/data/streams/coord_v2.txt.
Coord streamedSystem();

/// A system of which every member differs from `streamedSystem` and from its default, `Param`s with
/// dictionaries included.
Coord occupiedSystem();

/// As `operator==`, and the display names are the same; `loc_or_height_unit` is `heightUnit` in the
/// actual one.
void expectSameStreamedSystem(const Coord &actual, const Coord &expected, EUnit heightUnit);

template <typename Value>
QByteArray saved(const Value &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    value.save(stream);
    return bytes;
}

template <typename Value>
std::string savedHex(const Value &value)
{
    return saved(value).toHex(' ').toStdString();
}

template <typename Value>
bool loadBytes(Value &value, const QByteArray &bytes)
{
    QDataStream stream(bytes);
    return value.load(stream);
}

template <typename Value>
bool loadHex(Value &value, const std::string &hex)
{
    return loadBytes(value, QByteArray::fromHex(QByteArray::fromStdString(hex)));
}

} // namespace KelStd::test
