// Variants in streams: read as Qt's own operators read them, and bounded where those are not.

#include "stream/StreamBytes.h"
#include "support/Printers.h"
#include "support/TypedVariants.h"

#include <KelStd/coord/Param.h>

#include <QtCore/QByteArrayList>
#include <QtCore/QDateTime>
#include <QtCore/QElapsedTimer>
#include <QtCore/QIODevice>
#include <QtCore/QTimeZone>
#include <QtCore/QUrl>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <new>
#include <random>
#include <utility>

#ifdef KELSTD_TEST_ASAN
/// Where these tests ask Qt for its own reading it asks for the memory that a damaged count
/// announces, and is to get none, as without the sanitizer.
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1";
}
#endif

namespace KelStd {
namespace {

/// Writes what a stream made to do harm holds.
class Bytes
{
public:
    explicit Bytes(int version = QDataStream::Qt_5_15,
                   QDataStream::ByteOrder order = QDataStream::BigEndian)
        : m_stream(&m_bytes, QIODevice::WriteOnly)
    {
        m_stream.setVersion(version);
        m_stream.setByteOrder(order);
    }
    template <typename T>
    Bytes &operator<<(const T &value)
    {
        m_stream << value;
        return *this;
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
    QDataStream m_stream;
};

/// A parameter's block around the bytes of a variant.
QByteArray paramAround(const QByteArray &variant)
{
    const QByteArray head = (Bytes() << qint32(1) << qint32(4) << qint32(0)).bytes();
    const QByteArray tail =
        (Bytes() << false << QStringLiteral("key") << quint32(0) << QStringLiteral("behind"))
            .bytes();
    return head + variant + tail;
}

/// A container of one variant each, `depth` of them, and a number in the innermost.
QByteArray nested(quint32 type, int depth)
{
    Bytes bytes;
    for (int level = 0; level < depth; ++level) {
        bytes << type << qint8(0);
        if (type != QMetaType::QVariant)
            bytes << quint32(1);
        if (type == QMetaType::QVariantMap || type == QMetaType::QVariantHash)
            bytes << QStringLiteral("k");
    }
    bytes << quint32(QMetaType::Int) << qint8(0) << qint32(7);
    return bytes.bytes();
}

const quint32 nestingTypes[] = {QMetaType::QVariantList, QMetaType::QVariantMap,
                                QMetaType::QVariantHash, QMetaType::QVariant};

class QuietMessages
{
public:
    QuietMessages()
    {
        m_before =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    }
    ~QuietMessages() { qInstallMessageHandler(m_before); }
    Q_DISABLE_COPY(QuietMessages)

private:
    QtMessageHandler m_before;
};

/// What Qt's own operator and a parameter's `load` make of the same bytes, and what they leave.
struct Reading
{
    QVariant value;
    QDataStream::Status status;
    qint64 position;
};

Reading readByQt(const QByteArray &variant, int version, QDataStream::ByteOrder order)
{
    QDataStream stream(variant);
    stream.setVersion(version);
    stream.setByteOrder(order);
    Reading reading;
    stream >> reading.value;
    reading.status = stream.status();
    reading.position = stream.device()->pos();
    return reading;
}

bool isTimeOfUnknownZone(const QVariant &value)
{
    const QDateTime time = value.toDateTime();
    return time.timeSpec() == Qt::TimeZone && !time.timeZone().isValid();
}

Param expectReadAsByQt(const QByteArray &variant, int version, QDataStream::ByteOrder order)
{
    const Reading qt = readByQt(variant, version, order);
    // Behind the variant the parameter's block ends: every later field is read as empty.
    Bytes head(version, order);
    head << qint32(1) << qint32(4) << qint32(0);
    const QByteArray bytes = head.bytes() + variant.left(int(qt.position));
    QDataStream stream(bytes);
    stream.setVersion(version);
    stream.setByteOrder(order);
    Param param;
    EXPECT_TRUE(param.load(stream));
    EXPECT_EQ(stream.device()->pos(), bytes.size());
    EXPECT_EQ(param.value.userType(), qt.value.userType());
    const bool differs = isTimeOfUnknownZone(qt.value); // on purpose
    EXPECT_EQ(param.value.isNull(), differs ? QVariant(QDateTime()).isNull() : qt.value.isNull());
    if (differs)
        EXPECT_FALSE(param.value.toDateTime().isValid());
    else
        EXPECT_TRUE(param.value == qt.value);
    // It outlives the end of the block.
    EXPECT_EQ(stream.status(), qt.status == QDataStream::Ok ? QDataStream::ReadPastEnd : qt.status);
    return param;
}

std::vector<QVariant> variantsOfManyKinds()
{
    const QVariantMap map{{QStringLiteral("a"), 1}, {QStringLiteral("b"), QVariantList{2.5, true}}};
    QVariantMap twice{{QStringLiteral("a"), 1}};
    test::insertAgain(twice, QStringLiteral("a"), 2);
    const QVariant inner(QStringLiteral("inner"));
    std::vector<QVariant> variants = {
        QVariant(),
        test::nullVariant(QMetaType::Double),
        1.5,
        7,
        true,
        QStringLiteral("text"),
        test::nullVariant(QMetaType::QString),
        QByteArray("bytes"),
        QDate(2024, 2, 29),
        QDateTime({2024, 2, 29}, {12, 0}, QTimeZone("UTC")),
        QUrl(QStringLiteral("http://host/x")),
        QStringList{QStringLiteral("a"), QString()},
        test::nullVariant(QMetaType::QStringList),
        QVariant::fromValue(QByteArrayList{"a", "b"}),
        map,
        twice,
        test::nullVariant(QMetaType::QVariantMap),
        QVariantHash{{QStringLiteral("h"), map}},
        test::nullVariant(QMetaType::QVariantHash),
        QVariantList{},
        test::nullVariant(QMetaType::QVariantList),
        QVariantList{map, QVariant(), QStringList{QStringLiteral("x")}, 5},
        test::variantOfVariant(&inner),
        test::variantOfVariant(nullptr),
    };
    QVariantList everything;
    for (const QVariant &variant : variants)
        everything.append(variant);
    variants.emplace_back(everything);
    return variants;
}

TEST(StreamVariants, AreReadAsQtReadsThem)
{
    for (int version :
         {QDataStream::Qt_2_1, QDataStream::Qt_3_3, QDataStream::Qt_4_0, QDataStream::Qt_4_2,
          QDataStream::Qt_4_8, QDataStream::Qt_5_0, QDataStream::Qt_5_15}) {
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
            for (const QVariant &variant : variantsOfManyKinds()) {
                SCOPED_TRACE(testing::Message() << variant.typeName() << " in version " << version
                                                << ", order " << order);
                const QByteArray bytes = (Bytes(version, order) << variant).bytes();
                const Param param = expectReadAsByQt(bytes, version, order);
                EXPECT_EQ((Bytes(version, order) << param.value).bytes().toHex(' '),
                          (Bytes(version, order) << readByQt(bytes, version, order).value)
                              .bytes()
                              .toHex(' '));
            }
        }
    }
}

/// Bytes at random places replaced: whatever Qt makes of them, so does a parameter.
TEST(StreamVariants, DamagedOnesAreReadAsQtReadsThem)
{
    const QuietMessages quiet;
    std::mt19937 random(20240229);
    int compared = 0;
    const auto below = [&random](int limit) { return int(random() % unsigned(limit)); };
    for (const QVariant &variant : variantsOfManyKinds()) {
        const QByteArray whole = (Bytes() << variant).bytes();
        for (int round = 0; round < 120; ++round) {
            QByteArray damaged = whole;
            // Small numbers: types, flags and lengths that mean something.
            const int number = below(64);
            if (number == QMetaType::QEasingCurve)
                continue; // where ours differs on purpose
            damaged[below(damaged.size())] = char(number);
            SCOPED_TRACE(damaged.toHex(' ').constData());
            try {
                readByQt(damaged, QDataStream::Qt_5_15, QDataStream::BigEndian);
            } catch (const std::bad_alloc &) {
                continue; // here, too
            }
            expectReadAsByQt(damaged, QDataStream::Qt_5_15, QDataStream::BigEndian);
            ++compared;
        }
    }
    EXPECT_GT(compared, 2000);
}

/// Numbers that stand for types of other modules, for none, and for names; older forms number
/// otherwise.
TEST(StreamVariants, EveryTypeNumberIsReadAsQtReadsIt)
{
    const QuietMessages quiet;
    const QByteArray ones = QByteArray::fromHex("00000001").repeated(16);
    for (int version :
         {QDataStream::Qt_2_1, QDataStream::Qt_3_3, QDataStream::Qt_4_0, QDataStream::Qt_4_2,
          QDataStream::Qt_4_8, QDataStream::Qt_5_0, QDataStream::Qt_5_1, QDataStream::Qt_5_15}) {
        for (quint32 number = 0; number < 1200; ++number) {
            for (const QByteArray &content : {ones, QByteArray(64, '\0'), QByteArray()}) {
                SCOPED_TRACE(testing::Message() << number << " in version " << version << ", "
                                                << content.size() << " bytes");
                const QByteArray variant = (Bytes() << number).bytes() + content;
                const Reading qt = readByQt(variant, version, QDataStream::BigEndian);
                if (qt.value.userType() == QMetaType::QEasingCurve)
                    continue; // where ours differs on purpose
                const QByteArray head = (Bytes() << qint32(1) << qint32(4) << qint32(0)).bytes();
                QDataStream stream(head + variant.left(int(qt.position)));
                stream.setVersion(version);
                Param param;
                EXPECT_TRUE(param.load(stream));
                EXPECT_TRUE(stream.atEnd());
                EXPECT_EQ(param.value.userType(), qt.value.userType());
                EXPECT_EQ(param.value.isNull(), qt.value.isNull());
                EXPECT_EQ((Bytes() << param.value).bytes().toHex(' '),
                          (Bytes() << qt.value).bytes().toHex(' '));
                EXPECT_EQ(stream.status(),
                          qt.status == QDataStream::Ok ? QDataStream::ReadPastEnd : qt.status);
            }
        }
    }
}

TEST(StreamVariants, OfATypeWithAName)
{
    for (const char *name : {"QVariantList", "QList<QVariant>", "QStringList", "QVariant",
                             "QVariantMap", "QVariantHash", "QByteArrayList", "no such type"}) {
        for (int version : {QDataStream::Qt_4_2, QDataStream::Qt_5_15}) {
            SCOPED_TRACE(testing::Message() << name << " in version " << version);
            const QuietMessages quiet;
            Bytes variant(version);
            variant << quint32(version < QDataStream::Qt_5_0 ? 127 : 1024) << qint8(0)
                    << QByteArray(name, int(qstrlen(name)) + 1) << quint32(0) << quint32(0);
            expectReadAsByQt(variant.bytes(), version, QDataStream::BigEndian);
        }
    }
}

TEST(StreamVariants, AnUnknownTypeIsAnInvalidVariantAndACorruptStream)
{
    const QuietMessages quiet;
    Param param;
    QDataStream stream(paramAround(
        (Bytes() << quint32(QMetaType::User) << qint8(0) << QByteArray("no such type\0", 13))
            .bytes()));
    EXPECT_TRUE(param.load(stream));
    EXPECT_FALSE(param.value.isValid());
    EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
    EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("behind"));
}

TEST(StreamVariants, AMapWithABrokenEntryIsEmpty)
{
    const QuietMessages quiet;
    Bytes bytes;
    bytes << qint32(1) << qint32(4) << qint32(0) << QVariant(1.5) << true << QStringLiteral("sel")
          << quint32(2) << QStringLiteral("good") << QVariant(1) << QStringLiteral("bad")
          << quint32(QMetaType::User) << qint8(0) << QByteArray("no such type\0", 13)
          << QStringLiteral("bind");
    Param param;
    QDataStream stream(bytes.bytes());
    EXPECT_TRUE(param.load(stream));
    EXPECT_EQ(param.value.toDouble(), 1.5);
    EXPECT_TRUE(param.dictionaryValues.isEmpty());
    EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("bind"));
    EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
}

/// As Qt's map operators have it: in Qt 5, no later one replaces an earlier one; a map of Qt 6
/// keeps the last. The value of the key is the same.
TEST(StreamVariants, ADictionaryHasTheLastValueOfAKeyThatOccursTwice)
{
    Bytes bytes;
    bytes << qint32(1) << qint32(4) << qint32(0) << QVariant(1.5) << true << QString() << quint32(2)
          << QStringLiteral("k") << QVariant(1) << QStringLiteral("k") << QVariant(2) << QString();
    Param param;
    EXPECT_TRUE(test::loadBytes(param, bytes.bytes()));
    EXPECT_EQ(param.dictionaryValues.value(QStringLiteral("k")).toInt(), 2);
    Param last;
    EXPECT_TRUE(test::loadBytes(last, test::saved(param)));
    EXPECT_TRUE(last == param);
    const bool keepsBoth = QT_VERSION < QT_VERSION_CHECK(6, 0, 0);
    EXPECT_EQ(param.dictionaryValues.size(), keepsBoth ? 2 : 1);
    EXPECT_EQ(test::saved(param) == bytes.bytes(), keepsBoth);
}

TEST(StreamVariants, NestedAsDeepAsIsReadComeBackWhole)
{
    for (const quint32 type : nestingTypes) {
        SCOPED_TRACE(type);
        Param param;
        QDataStream stream(paramAround(nested(type, 256)));
        EXPECT_TRUE(param.load(stream));
        EXPECT_EQ(stream.status(), QDataStream::Ok);
        EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("behind"));
        EXPECT_EQ(test::saved(param).toHex(' '), paramAround(nested(type, 256)).toHex(' '));
    }
}

/// Such a time is invalid for Qt, too, which then crashes when it writes it.
TEST(StreamVariants, ATimeOfAnUnknownZoneIsInvalidAndCanBeWritten)
{
    Bytes time;
    time << quint32(QMetaType::QDateTime) << qint8(0) << QDate(2024, 2, 29) << QTime(12, 0)
         << qint8(3) << QStringLiteral("No/Such_Zone"); // 3: a time zone
    Param param;
    QDataStream stream(paramAround(time.bytes()));
    EXPECT_TRUE(param.load(stream));
    EXPECT_EQ(stream.status(), QDataStream::Ok);
    EXPECT_EQ(param.value.userType(), int(QMetaType::QDateTime));
    EXPECT_FALSE(param.value.toDateTime().isValid());
    EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("behind"));
    Param again;
    EXPECT_TRUE(test::loadBytes(again, test::saved(param)));
    EXPECT_TRUE(again == param);
}

/// The form of Qt 5.0 has a number for the kind of time. One that stands for no kind makes Qt
/// follow pointers that are none. A zone, 3, is not in this form: Qt takes the machine's.
TEST(StreamVariants, ATimeOfNoKindInTheFormOfQt50IsInvalid)
{
    for (const int kind : {0, 1, 2, 3, 4, 7, 127, -128, -1}) {
        SCOPED_TRACE(kind);
        Bytes time(QDataStream::Qt_5_0);
        time << quint32(QMetaType::QDateTime) << qint8(0) << QDate(2024, 2, 29) << QTime(12, 0)
             << qint8(kind);
        Param param;
        QDataStream stream(paramAround(time.bytes()));
        stream.setVersion(QDataStream::Qt_5_0);
        EXPECT_TRUE(param.load(stream));
        EXPECT_EQ(stream.status(), QDataStream::Ok);
        EXPECT_TRUE(stream.atEnd());
        EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("behind"));
        EXPECT_EQ(param.value.userType(), int(QMetaType::QDateTime));
        const QDateTime noon({2024, 2, 29}, {12, 0}, Qt::UTC);
        const bool isTime = kind >= 0 && kind <= 3;
        EXPECT_EQ(param.value.toDateTime(), isTime ? noon : QDateTime());
        EXPECT_EQ(param.value.toDateTime().isValid(), isTime);
        Param again;
        EXPECT_TRUE(test::loadBytes(again, test::saved(param)));
        EXPECT_TRUE(again == param);
    }
}

/// Qt keeps thirty bits of the number: the others hid lists from every bound, and times.
TEST(StreamVariants, ATypeNumberOfMoreThanThirtyBitsIsRefused)
{
    for (const quint32 high : {0x40000000U, 0x80000000U, 0xC0000000U}) {
        for (const int number :
             {QMetaType::QDateTime, QMetaType::QVariantList, QMetaType::QVariantMap,
              QMetaType::QStringList, QMetaType::Int, QMetaType::QRectF}) {
            const auto type = quint32(number);
            SCOPED_TRACE(high + type);
            Param param(ValueType_Double, Unit_None, 5.0);
            QDataStream stream(paramAround((Bytes() << (high + type) << qint8(0)).bytes()));
            EXPECT_TRUE(param.load(stream));
            EXPECT_FALSE(param.value.isValid());
            EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
            EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("behind"));
        }
    }
}

/// Qt rounds the count up to whole bytes in 32 bits: none, and an array of less than none.
TEST(StreamVariants, AnArrayOfMoreBitsThanItsBytesCanCountIsRefused)
{
    for (quint32 bits = 0xFFFFFFF9U; bits != 0; ++bits) {
        SCOPED_TRACE(bits);
        Param param(ValueType_Double, Unit_None, 5.0);
        QDataStream stream(
            paramAround((Bytes() << quint32(QMetaType::QBitArray) << qint8(0) << bits).bytes()));
        stream.setVersion(QDataStream::Qt_5_15);
        EXPECT_TRUE(param.load(stream));
        EXPECT_FALSE(param.value.isValid());
        EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
        EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("behind"));
    }
}

/// Its form holds the address of a function, which Qt would call.
TEST(StreamVariants, AnEasingCurveIsRefusedLikeAnUnknownType)
{
    Param param(ValueType_Double, Unit_None, 5.0);
    QDataStream stream(
        paramAround((Bytes() << quint32(QMetaType::QEasingCurve) << qint8(0)).bytes()));
    EXPECT_TRUE(param.load(stream));
    EXPECT_FALSE(param.value.isValid());
    EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
    // Nothing of the value is read, as of a type that is unknown.
    EXPECT_EQ(param.dictionaryBindParamName, QStringLiteral("behind"));
}

/// Qt's own operator would use up the stack.
TEST(StreamVariants, NestedDeeperAreRefusedLikeAnUnknownType)
{
    for (const quint32 type : nestingTypes) {
        for (const int depth : {257, 1000000}) {
            SCOPED_TRACE(testing::Message() << type << ' ' << depth);
            Param param;
            QDataStream stream(paramAround(nested(type, depth)));
            EXPECT_TRUE(param.load(stream));
            EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
        }
    }
}

TEST(StreamVariants, NestedDeeperAreRefusedInEveryFormOfStream)
{
    for (int version :
         {QDataStream::Qt_2_1, QDataStream::Qt_4_0, QDataStream::Qt_4_8, QDataStream::Qt_5_15}) {
        for (const auto order : {QDataStream::BigEndian, QDataStream::LittleEndian}) {
            SCOPED_TRACE(testing::Message() << "version " << version << ", order " << order);
            Bytes bytes(version, order);
            bytes << qint32(1) << qint32(4) << qint32(0);
            for (int level = 0; level < 300000; ++level) {
                bytes << quint32(version < QDataStream::Qt_4_0 ? 2 : 9); // a list
                if (version >= QDataStream::Qt_4_2)
                    bytes << qint8(0);
                bytes << quint32(1);
            }
            QDataStream stream(bytes.bytes());
            stream.setVersion(version);
            stream.setByteOrder(order);
            Param param;
            EXPECT_TRUE(param.load(stream));
            EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
        }
    }
}

TEST(StreamVariants, NestedByNameAreBounded)
{
    for (const QByteArray &name : {QByteArray("QList<QVariant>"), QByteArray("QVariant"),
                                   "QList<" + QByteArray(3000, ' ') + "QVariant>"}) {
        Bytes bytes;
        for (int level = 0; level < 100000 / (1 + name.size() / 100); ++level) {
            bytes << quint32(1024) << qint8(0) << QByteArray(name.constData(), name.size() + 1);
            if (name != "QVariant")
                bytes << quint32(1);
        }
        Param param;
        QDataStream stream(bytes.bytes().prepend((Bytes() << qint32(1) << qint64(4)).bytes()));
        EXPECT_TRUE(param.load(stream));
        EXPECT_NE(stream.status(), QDataStream::Ok);
    }
}

/// Qt's own operator would set room aside for all of them, or raise `std::bad_alloc`.
TEST(StreamVariants, ListsWhoseCountLiesAreEmpty)
{
    for (const quint32 type :
         {QMetaType::QVariantList, QMetaType::QStringList, QMetaType::QByteArrayList,
          QMetaType::QVariantMap, QMetaType::QVariantHash}) {
        for (const quint32 count : {0x10000000u, 0x7fffffffu, 0xffffffffu}) {
            SCOPED_TRACE(testing::Message() << type << ' ' << count);
            QElapsedTimer timer;
            timer.start();
            Param param;
            QDataStream stream(
                (Bytes() << qint32(1) << qint64(4) << type << qint8(0) << count).bytes());
            EXPECT_TRUE(param.load(stream));
            EXPECT_EQ(param.value.userType(), int(type));
            EXPECT_TRUE(param.value.toList().isEmpty());
            EXPECT_EQ(stream.status(), QDataStream::ReadPastEnd);
            EXPECT_LT(timer.elapsed(), 5000);
        }
    }
}

/// A pipe: it goes forward only, and hands out what has arrived.
class Pipe : public QIODevice
{
public:
    explicit Pipe(QByteArray bytes, int arrived = std::numeric_limits<int>::max())
        : m_left(std::move(bytes)), m_arrived(arrived)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return std::min<qint64>(m_arrived, m_left.size()); }

protected:
    /// What has arrived, once; the rest after that.
    qint64 readData(char *data, qint64 size) override
    {
        const QByteArray part = m_left.left(int(std::min<qint64>(size, m_arrived)));
        m_left.remove(0, part.size());
        m_arrived = part.size() < m_arrived ? m_arrived - part.size() : m_left.size();
        std::copy(part.begin(), part.end(), data);
        return part.size();
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_left;
    qint64 m_arrived;
};

TEST(StreamVariants, FromADeviceThatOnlyGoesForward)
{
    Pipe device(test::streamFile("coord_v2"));
    QDataStream stream(&device);
    Coord coord;
    EXPECT_TRUE(coord.load(stream));
    test::expectSameStreamedSystem(coord, test::streamedSystem(), Unit_Meter);
    EXPECT_EQ(stream.status(), QDataStream::Ok);
}

/// A look at what has arrived would take the type for another one, and leave the nesting to Qt.
TEST(StreamVariants, NestedDeeperAreRefusedWhateverHasArrived)
{
    const QByteArray before = (Bytes() << qint32(1) << qint64(4)).bytes();
    const QByteArray deep = nested(QMetaType::QVariantList, 300000);
    for (int header = 0; header <= 10; ++header) {
        SCOPED_TRACE(header);
        Pipe device(before + deep, before.size() + header);
        QDataStream stream(&device);
        Param param;
        EXPECT_TRUE(param.load(stream));
        EXPECT_NE(stream.status(), QDataStream::Ok);
    }
}

/// A name is compared as far as its end: what follows it in the stream makes it no other one.
TEST(StreamVariants, NestedByNamesOfAnyLengthAreBounded)
{
    for (const int arrived : {0, 4, 100, 4096}) {
        SCOPED_TRACE(arrived);
        const QByteArray before = (Bytes() << qint32(1) << qint64(4)).bytes();
        const QByteArray list = (Bytes() << quint32(1024) << qint8(0)
                                         << "QVariantList" + QByteArray(300000, '\0') << quint32(1))
                                    .bytes();
        Pipe device(before + list + nested(QMetaType::QVariantList, 300000),
                    before.size() + arrived);
        QDataStream stream(&device);
        Param param;
        EXPECT_TRUE(param.load(stream));
        EXPECT_NE(stream.status(), QDataStream::Ok);
    }
}

/// Runs out of memory once, behind so many bytes.
class Exhausting : public QIODevice
{
public:
    Exhausting(QByteArray bytes, int enough) : m_left(std::move(bytes)), m_enough(enough)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        if (m_enough >= 0 && m_enough < size) {
            m_enough = -1;
            throw std::bad_alloc();
        }
        m_enough -= m_enough >= 0 ? int(size) : 0;
        const QByteArray part = m_left.left(int(size));
        m_left.remove(0, part.size());
        std::copy(part.begin(), part.end(), data);
        return part.size();
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_left;
    int m_enough;
};

TEST(StreamVariants, ThatDoNotFitTheMemoryAreRefusedLikeAnUnknownType)
{
    const QByteArray before = (Bytes() << qint32(1) << qint64(4)).bytes();
    for (const quint32 type : {QMetaType::QVariantList, QMetaType::QVariantMap,
                               QMetaType::QVariantHash, QMetaType::QVariant, QMetaType::QString}) {
        const QByteArray variant = type == QMetaType::QString
                                       ? (Bytes() << QVariant(QStringLiteral("text"))).bytes()
                                       : nested(type, 3);
        for (int enough = 0; enough < variant.size(); ++enough) {
            SCOPED_TRACE(testing::Message() << type << ", " << enough);
            Exhausting device(before + variant, before.size() + enough);
            QDataStream stream(&device);
            Param param(ValueType_Double, Unit_None, 5.0);
            EXPECT_TRUE(param.load(stream));
            EXPECT_FALSE(param.value.toDouble() == 5.0);
            EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
        }
    }
}

TEST(StreamVariants, ADictionaryThatDoesNotFitTheMemoryIsEmpty)
{
    const QByteArray before =
        (Bytes() << qint32(1) << qint64(4) << QVariant(1.5) << true << QString()).bytes();
    const QByteArray dictionary = (Bytes() << quint32(2) << QStringLiteral("a") << QVariant(1)
                                           << QStringLiteral("b") << QVariant(2))
                                      .bytes();
    for (int enough = 0; enough < dictionary.size(); ++enough) {
        SCOPED_TRACE(enough);
        Exhausting device(before + dictionary, before.size() + enough);
        QDataStream stream(&device);
        Param param;
        param.dictionaryValues.insert(QStringLiteral("c"), 3);
        EXPECT_TRUE(param.load(stream));
        EXPECT_EQ(param.value.toDouble(), 1.5);
        EXPECT_TRUE(param.dictionaryValues.isEmpty());
        EXPECT_EQ(stream.status(), QDataStream::ReadCorruptData);
    }
}

TEST(StreamVariants, InATransactionThatIsRolledBack)
{
    QDataStream stream(test::streamFile("coord_v2"));
    stream.startTransaction();
    Coord coord;
    EXPECT_TRUE(coord.load(stream));
    stream.rollbackTransaction();
    stream.resetStatus();
    Coord again;
    EXPECT_TRUE(again.load(stream));
    test::expectSameStreamedSystem(again, test::streamedSystem(), Unit_Meter);
}

} // namespace
} // namespace KelStd
