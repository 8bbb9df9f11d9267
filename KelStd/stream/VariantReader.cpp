#include <KelStd/stream/VariantReader.h>

#include <KelStd/stream/MetaTypes.h>

#include <QtCore/QBitArray>
#include <QtCore/QByteArrayList>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QMetaType>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>

#include <algorithm>
#include <iterator>
#include <new>
#include <type_traits>

namespace KelStd {

namespace {

void readNested(QDataStream &stream, QVariant &value, int depth);

// --- What stands before a variant's value --------------------------------------------------------

struct VariantHeader
{
    int type = QMetaType::UnknownType;
    bool isNull = false;
};

constexpr quint32 distanceOfMoved = 97; // of the numbers from 128 on, by Qt 5.0

/// Whether the type's name follows.
bool isNamed(quint32 id, int streamVersion)
{
    constexpr quint32 named = QMetaType::User;
    constexpr quint32 namedByQt5 = 1024;
    constexpr quint32 namedByQt4 = 127;
    const auto isEither = [](quint32 number) { return number == named || number == namedByQt5; };
    if (streamVersion < QDataStream::Qt_4_0)
        return false;
    if (streamVersion < QDataStream::Qt_5_0)
        return id == namedByQt4 || isEither(id) || isEither(id - distanceOfMoved);
    return id == named || (id == namedByQt5 && streamVersion < firstVersionOfThisQt);
}

/// Qt keeps thirty bits of the number. Where those bits of a larger number are another type's, Qt
/// allocates memory as for the one type and frees it as for the other.
bool isTakenForAnother(quint32 id, int streamVersion)
{
    constexpr quint32 kept = (1U << 30) - 1;
    const quint32 present = streamVersion < QDataStream::Qt_5_0 ? id - distanceOfMoved : id;
    return id > kept && QMetaType::isRegistered(static_cast<int>(present & kept));
}

/// The present number of a type. Qt knows what its older forms called it, and is asked with a
/// variant that ends behind the number.
int presentType(quint32 id, int streamVersion)
{
    if (streamVersion >= firstVersionOfThisQt)
        return static_cast<int>(id);
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << id;
    QDataStream ending(bytes);
    ending.setVersion(streamVersion);
    QVariant value;
    ending >> value;
    return value.userType();
}

/// Reads the header. False where a name stands for no type, or a number for two.
bool readHeader(QDataStream &stream, VariantHeader &header)
{
    quint32 id = 0;
    stream >> id;
    if (stream.version() >= QDataStream::Qt_4_2) {
        qint8 flag = 0;
        stream >> flag;
        header.isNull = (flag & 1) != 0; // Qt keeps one bit of it
    }
    if (isNamed(id, stream.version())) {
        QByteArray name;
        stream >> name;
        header.type = typeOfName(name);
        if (header.type != QMetaType::UnknownType)
            return true;
    } else if (!isTakenForAnother(id, stream.version())) {
        header.type = presentType(id, stream.version());
        return true;
    }
    stream.setStatus(QDataStream::ReadCorruptData);
    return false;
}

// --- Containers ----------------------------------------------------------------------------------

/// Qt's container operators judge the elements by a status of their own, and leave a failure from
/// before where it was.
class ElementStatus
{
public:
    explicit ElementStatus(QDataStream &stream) : m_stream(stream), m_before(stream.status())
    {
        if (stream.device() == nullptr || !stream.device()->isTransactionStarted())
            stream.resetStatus();
    }
    ~ElementStatus()
    {
        if (m_before != QDataStream::Ok) {
            m_stream.resetStatus();
            m_stream.setStatus(m_before);
        }
    }
    Q_DISABLE_COPY(ElementStatus)

private:
    QDataStream &m_stream;
    QDataStream::Status m_before;
};

/// A count and as many elements; none when one fails. `readElement` reads one and adds it.
template <typename Container, typename ReadElement>
void readElements(QDataStream &stream, Container &container, ReadElement readElement)
{
    const ElementStatus status(stream);
    container.clear();
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count; ++i) {
        readElement();
        if (stream.status() != QDataStream::Ok) {
            container.clear();
            return;
        }
    }
}

template <typename Element>
void readContent(QDataStream &stream, QList<Element> &list, int depth)
{
    readElements(stream, list, [&] {
        Element element;
        if constexpr (std::is_same_v<Element, QVariant>)
            readNested(stream, element, depth);
        else
            stream >> element;
        list.append(element);
    });
}

template <typename Map>
void readEntries(QDataStream &stream, Map &map, int depth)
{
    readElements(stream, map, [&] {
        QString key;
        QVariant value;
        stream >> key;
        readNested(stream, value, depth);
        insertEntry(map, key, value);
    });
}

void readContent(QDataStream &stream, QVariantMap &map, int depth)
{
    readEntries(stream, map, depth);
}

void readContent(QDataStream &stream, QVariantHash &hash, int depth)
{
    readEntries(stream, hash, depth);
}

void readContent(QDataStream &stream, QVariant &value, int depth)
{
    readNested(stream, value, depth);
}

/// A time in the form of Qt 5.0. By a number that stands for no kind of time Qt would set flags
/// that say where the time's memory is.
void readContent(QDataStream &stream, QDateTime &time, int /*depth*/)
{
    QDate day;
    QTime milliseconds;
    qint8 spec = Qt::LocalTime;
    stream >> day >> milliseconds >> spec;
    time = spec >= Qt::LocalTime && spec <= Qt::TimeZone
               ? QDateTime(day, milliseconds, Qt::UTC).toTimeSpec(static_cast<Qt::TimeSpec>(spec))
               : QDateTime();
}

// --- Variants ------------------------------------------------------------------------------------

/// What Qt leaves of a variant whose type it does not know.
void refuse(QDataStream &stream, QVariant &value)
{
    value.clear();
    stream.setStatus(QDataStream::ReadCorruptData);
}

template <typename Content>
void readHolding(QDataStream &stream, QVariant &value, int depth)
{
    readContent(stream, *static_cast<Content *>(placeOfValue(value)), depth + 1);
}

/// Qt reads a time of a zone that it does not know as an invalid one, and crashes when it writes
/// it.
void forgetUnknownZone(QVariant &value)
{
    if (value.userType() != QMetaType::QDateTime)
        return;
    const QDateTime time = value.toDateTime();
    if (time.timeSpec() == Qt::TimeZone && !time.timeZone().isValid())
        value = QDateTime();
}

void readByQt(QDataStream &stream, QVariant &value, int /*depth*/)
{
    if (!value.isValid()) {
        value.clear();
        if (stream.version() < QDataStream::Qt_5_0) {
            QString something; // since something was written
            stream >> something;
        }
        return;
    }
    if (!loadValue(stream, value))
        stream.setStatus(QDataStream::ReadCorruptData);
    forgetUnknownZone(value);
}

void readTime(QDataStream &stream, QVariant &value, int depth)
{
    if (stream.version() == QDataStream::Qt_5_0)
        readHolding<QDateTime>(stream, value, depth);
    else
        readByQt(stream, value, depth);
}

void readBitArray(QDataStream &stream, QVariant &value, int /*depth*/)
{
    if (!readBits(stream, *static_cast<QBitArray *>(placeOfValue(value))))
        refuse(stream, value);
}

using ReadValue = void (*)(QDataStream &, QVariant &, int depth);

/// How a type is read that is not left to Qt. None: it is refused.
struct BoundedType
{
    int type;
    ReadValue read;
};

constexpr BoundedType boundedTypes[] = {
    {QMetaType::QVariantList, &readHolding<QVariantList>},
    {QMetaType::QVariantMap, &readHolding<QVariantMap>},
    {QMetaType::QVariantHash, &readHolding<QVariantHash>},
    {QMetaType::QVariant, &readHolding<QVariant>},
    {QMetaType::QStringList, &readHolding<QStringList>},
    {QMetaType::QByteArrayList, &readHolding<QByteArrayList>},
    {QMetaType::QBitArray, &readBitArray},
    {QMetaType::QDateTime, &readTime},
    {QMetaType::QEasingCurve, nullptr},
};

/// Leaves an invalid variant where the memory does not suffice.
void readNested(QDataStream &stream, QVariant &value, int depth)
try {
    if (depth > deepestVariantNesting)
        return refuse(stream, value);
    VariantHeader header;
    if (!readHeader(stream, header))
        return value.clear();
    const auto bounded =
        std::find_if(std::begin(boundedTypes), std::end(boundedTypes),
                     [&header](const BoundedType &row) { return row.type == header.type; });
    const ReadValue read = bounded != std::end(boundedTypes) ? bounded->read : &readByQt;
    if (read == nullptr)
        return refuse(stream, value);
    value = emptyVariant(header.type, header.isNull);
    read(stream, value, depth);
} catch (const std::bad_alloc &) {
    refuse(stream, value);
}

} // namespace

void readVariant(QDataStream &stream, QVariant &value)
{
    readNested(stream, value, 0);
}

void readVariants(QDataStream &stream, QMap<QString, QVariant> &values)
try {
    readContent(stream, values, 0);
} catch (const std::bad_alloc &) {
    values.clear();
    stream.setStatus(QDataStream::ReadCorruptData);
}

} // namespace KelStd
