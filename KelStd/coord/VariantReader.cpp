#include <KelStd/coord/VariantReader.h>

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

/// Type number, null flag and, for a type that Qt does not know by number, the length of its name.
constexpr int headerSize = 9;

/// Qt keeps thirty bits of the number, and would take what is left of a larger one for another
/// type's.
constexpr int greatestTypeId = (1 << 30) - 1;

struct VariantHeader
{
    quint32 id = QMetaType::UnknownType;
    bool null = false;
};

/// Older streams number some types otherwise. Only those that `readNested` looks for matter here.
quint32 presentTypeId(quint32 id, int streamVersion)
{
    if (streamVersion < QDataStream::Qt_4_0) {
        switch (id) {
        case 1: return QMetaType::QVariantMap;
        case 2: return QMetaType::QVariantList;
        case 4: return QMetaType::QStringList;
        default: return QMetaType::UnknownType;
        }
    }
    if (streamVersion < QDataStream::Qt_5_0) {
        constexpr quint32 userTypeThen = 127;
        constexpr quint32 distanceOfMoved = 97; // of the types from 128 on
        if (id == userTypeThen)
            return QMetaType::User;
        if (id > userTypeThen && id != QMetaType::User)
            return id - distanceOfMoved;
    }
    return id;
}

VariantHeader readHeader(QDataStream &stream)
{
    VariantHeader header;
    stream >> header.id;
    header.id = presentTypeId(header.id, stream.version());
    if (stream.version() >= QDataStream::Qt_4_2) {
        qint8 flag = 0;
        stream >> flag;
        header.null = (flag & 1) != 0; // Qt keeps one bit of it
    }
    return header;
}

/// Calls `read` with a stream of the next `size` bytes of `stream`, which stay unread there.
template <typename Read>
auto readAhead(const QDataStream &stream, qint64 size, Read read)
{
    QDataStream ahead(stream.device()->peek(size));
    ahead.setVersion(stream.version());
    ahead.setByteOrder(stream.byteOrder());
    return read(ahead);
}

/// The type of the variant ahead; unknown where it has to be read to be known, or is not there.
int typeAhead(const QDataStream &stream)
{
    if (stream.device() == nullptr)
        return QMetaType::UnknownType;
    quint32 nameLength = 0;
    const quint32 id = readAhead(stream, headerSize, [&nameLength](QDataStream &ahead) {
        const VariantHeader header = readHeader(ahead);
        ahead >> nameLength;
        return header.id;
    });
    if (id != QMetaType::User)
        return static_cast<int>(id);
    if (nameLength > stream.device()->bytesAvailable())
        return QMetaType::UnknownType;
    return readAhead(stream, headerSize + qint64(nameLength), [](QDataStream &ahead) {
        QByteArray name;
        readHeader(ahead);
        ahead >> name;
        return QMetaType::type(name.constData());
    });
}

/// Moves behind the header; true when it has the null flag.
bool skipHeader(QDataStream &stream)
{
    const VariantHeader header = readHeader(stream);
    if (header.id == QMetaType::User) {
        QByteArray name;
        stream >> name;
    }
    return header.null;
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

/// As Qt does, all entries of a key that occurs twice stay.
template <typename MultiMap, typename Map>
void readEntries(QDataStream &stream, Map &map, int depth)
{
    readElements(stream, map, [&] {
        QString key;
        QVariant value;
        stream >> key;
        readNested(stream, value, depth);
        static_cast<MultiMap &>(map).insert(key, value);
    });
}

void readContent(QDataStream &stream, QVariantMap &map, int depth)
{
    readEntries<QMultiMap<QString, QVariant>>(stream, map, depth);
}

void readContent(QDataStream &stream, QVariantHash &hash, int depth)
{
    readEntries<QMultiHash<QString, QVariant>>(stream, hash, depth);
}

void readContent(QDataStream &stream, QVariant &value, int depth)
{
    readNested(stream, value, depth);
}

/// A time in the form of Qt 5.0. By a number that stands for no kind of time Qt would set flags
/// that say where the time's memory is.
void readContent(QDataStream &stream, QDateTime &time, int /*depth*/)
{
    constexpr int size = 13; // of day, milliseconds and number
    const int number = readAhead(stream, size, [](QDataStream &ahead) {
        QDate day;
        QTime milliseconds;
        qint8 spec = Qt::LocalTime;
        ahead >> day >> milliseconds >> spec;
        return static_cast<int>(spec);
    });
    if (number >= Qt::LocalTime && number <= Qt::TimeZone) {
        stream >> time;
        return;
    }
    stream.skipRawData(size);
    time = QDateTime();
}

// --- Variants ------------------------------------------------------------------------------------

/// What Qt leaves of a variant whose type it does not know.
void refuse(QDataStream &stream, QVariant &value)
{
    value.clear();
    stream.setStatus(QDataStream::ReadCorruptData);
}

/// A variant that holds a `Content`. It is read in place: setting it would take the null flag away.
template <typename Content>
void readHolding(QDataStream &stream, QVariant &value, int depth)
{
    const int type = qMetaTypeId<Content>();
    value = skipHeader(stream) ? QVariant(static_cast<QVariant::Type>(type)) // is null
                               : QVariant(type, nullptr);                    // is not
    readContent(stream, *static_cast<Content *>(value.data()), depth + 1);
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

void readByQt(QDataStream &stream, QVariant &value)
{
    try {
        stream >> value;
        forgetUnknownZone(value);
    } catch (const std::bad_alloc &) {
        refuse(stream, value);
    }
}

/// The types that `readNested` does not leave to Qt.
bool isReadHere(int type)
{
    constexpr int types[] = {QMetaType::QVariantList, QMetaType::QVariantMap,
                             QMetaType::QVariantHash, QMetaType::QVariant,
                             QMetaType::QStringList,  QMetaType::QByteArrayList,
                             QMetaType::QDateTime,    QMetaType::QEasingCurve};
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

void readNested(QDataStream &stream, QVariant &value, int depth)
{
    if (depth > deepestVariantNesting)
        return refuse(stream, value);
    const int type = typeAhead(stream);
    const int kept = type & greatestTypeId;
    if (kept != type && isReadHere(kept)) {
        skipHeader(stream);
        return refuse(stream, value);
    }
    switch (type) {
    case QMetaType::QVariantList: return readHolding<QVariantList>(stream, value, depth);
    case QMetaType::QVariantMap: return readHolding<QVariantMap>(stream, value, depth);
    case QMetaType::QVariantHash: return readHolding<QVariantHash>(stream, value, depth);
    case QMetaType::QVariant: return readHolding<QVariant>(stream, value, depth);
    case QMetaType::QStringList: return readHolding<QStringList>(stream, value, depth);
    case QMetaType::QByteArrayList: return readHolding<QByteArrayList>(stream, value, depth);
    case QMetaType::QDateTime:
        return stream.version() == QDataStream::Qt_5_0
                   ? readHolding<QDateTime>(stream, value, depth)
                   : readByQt(stream, value);
    case QMetaType::QEasingCurve: skipHeader(stream); return refuse(stream, value);
    default: return readByQt(stream, value);
    }
}

} // namespace

void readVariant(QDataStream &stream, QVariant &value)
{
    readNested(stream, value, 0);
}

void readVariants(QDataStream &stream, QMap<QString, QVariant> &values)
{
    readContent(stream, values, 0);
}

} // namespace KelStd
