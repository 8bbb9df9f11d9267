#include "proj/FakeProjHome.h"
#include "support/LogCapture.h"
#include "support/Printers.h"
#include "support/ProjTest.h"

#include <KelStd/proj/ProjLib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

// Definitions travel in buffers of 512 and 1000 bytes, terminating zero included. One that does not
// fit is refused: cut short it could still be a definition, of another system.

namespace KelStd {
namespace {

constexpr int longestChainDefinition = 511;
constexpr int longestDefinition = 999;

constexpr char guard = '\x5a';

/// A caller's buffer, zero-filled, with guard bytes before and behind it.
template <std::size_t size>
class GuardedBuffer
{
public:
    GuardedBuffer()
    {
        m_bytes.fill(guard);
        std::fill_n(data(), size, '\0');
    }
    char *data() { return m_bytes.data() + margin; }
    QByteArray text() { return QByteArray(data(), static_cast<int>(qstrnlen(data(), size))); }
    bool isIntact() const
    {
        const auto isGuard = [](char byte) { return byte == guard; };
        return std::all_of(m_bytes.begin(), m_bytes.begin() + margin, isGuard)
               && std::all_of(m_bytes.end() - margin, m_bytes.end(), isGuard);
    }

private:
    static constexpr std::size_t margin = 2048;
    std::array<char, size + 2 * margin> m_bytes;
};

/// `length` bytes of text in one, two or three bytes a letter (and one-byte letters for the rest).
QString letters(int length, int bytesPerLetter)
{
    const QString letter = bytesPerLetter == 3   ? QStringLiteral(u"测")
                           : bytesPerLetter == 2 ? QStringLiteral(u"é")
                                                 : QStringLiteral("x");
    const QString text = letter.repeated(length / bytesPerLetter);
    return text + QString(length % bytesPerLetter, 'x');
}

/// A projection whose definition by `measure` is `length` bytes long. The text that makes it long
/// is the value of its last parameter.
template <typename Measure>
Coord coordOfLength(int length, int bytesPerLetter, Measure measure)
{
    Coord coord;
    coord.ellipsoid.proj4EllpsName = "GRS80";
    coord.projection.proj4Projection = "tmerc";
    coord.projection.paramProj4["t"] = "title";
    coord.projection.param["t"] = Param(ValueType_String, Unit_None, "");
    const int missing = length - measure(coord);
    coord.projection.param["t"].value = letters(missing, bytesPerLetter);
    return coord;
}

// --- The chain's four buffers --------------------------------------------------------------------

struct ChainBuffers
{
    explicit ChainBuffers(const Coord &coord)
    {
        Coord::__MakeCoordStrings(nullptr, &coord, wgs84LatLong.data(), wgs84XYZ.data(),
                                  localLatLong.data(), localProjected.data());
        EXPECT_TRUE(wgs84LatLong.isIntact());
        EXPECT_TRUE(wgs84XYZ.isIntact());
        EXPECT_TRUE(localLatLong.isIntact());
        EXPECT_TRUE(localProjected.isIntact());
        EXPECT_EQ(wgs84LatLong.text(), "+proj=longlat +datum=WGS84 +axis=enu");
        EXPECT_EQ(wgs84XYZ.text(), "+proj=cart +ellps=GRS80 +towgs84=0,0,0 +axis=enu +units=m");
    }
    GuardedBuffer<512> wgs84LatLong;
    GuardedBuffer<512> wgs84XYZ;
    GuardedBuffer<512> localLatLong;
    GuardedBuffer<512> localProjected;
};

int projectedLength(const Coord &coord)
{
    return ChainBuffers(coord).localProjected.text().size();
}

class LetterSize : public testing::TestWithParam<int>
{};

TEST_P(LetterSize, ProjectedDefinitionFitsToTheLastByte)
{
    const Coord coord = coordOfLength(longestChainDefinition, GetParam(), projectedLength);
    ChainBuffers buffers(coord);
    EXPECT_EQ(buffers.localProjected.text().size(), longestChainDefinition);
    EXPECT_TRUE(buffers.localProjected.text().endsWith(" +towgs84=0,0,0 +units=m"));
}

TEST_P(LetterSize, ProjectedDefinitionThatIsTooLongIsEmpty)
{
    for (const int excess : {1, 2, 3, 4, 100, 100000}) {
        SCOPED_TRACE(excess);
        const Coord coord =
            coordOfLength(longestChainDefinition + excess, GetParam(), projectedLength);
        ChainBuffers buffers(coord);
        EXPECT_EQ(buffers.localProjected.text(), "");
        EXPECT_EQ(buffers.localLatLong.text(),
                  "+proj=longlat +ellps=GRS80 +axis=enu +towgs84=0,0,0 +units=m");
    }
}

TEST_P(LetterSize, GeographicDefinitionFitsOrIsEmpty)
{
    Coord coord;
    coord.ellipsoid.proj4EllpsName = "x";
    const int missing = longestChainDefinition - ChainBuffers(coord).localLatLong.text().size();

    coord.ellipsoid.proj4EllpsName = 'x' + letters(missing, GetParam());
    ChainBuffers fitting(coord);
    EXPECT_EQ(fitting.localLatLong.text().size(), longestChainDefinition);
    EXPECT_TRUE(fitting.localLatLong.text().endsWith(" +units=m"));

    coord.ellipsoid.proj4EllpsName = 'x' + letters(missing + 1, GetParam());
    EXPECT_EQ(ChainBuffers(coord).localLatLong.text(), "");
}

// --- The single definition -----------------------------------------------------------------------

int singleLength(const Coord &coord)
{
    GuardedBuffer<1000> buffer;
    ProjLib::CoordToProjString(&coord, buffer.data(), QString());
    return buffer.text().size();
}

TEST_P(LetterSize, SingleDefinitionFitsOrIsEmpty)
{
    for (const int excess : {0, 1, 2, 3, 100, 100000}) {
        SCOPED_TRACE(excess);
        const Coord coord = coordOfLength(longestDefinition + excess, GetParam(), singleLength);
        GuardedBuffer<1000> buffer;
        ProjLib::CoordToProjString(&coord, buffer.data(), QString());
        EXPECT_TRUE(buffer.isIntact());
        EXPECT_EQ(buffer.text().size(), excess == 0 ? longestDefinition : 0);
        EXPECT_EQ(buffer.text().endsWith(" +no_defs"), excess == 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Bytes, LetterSize, testing::Values(1, 2, 3));

TEST(DefinitionWithAZero, IsEmptyInACallersBuffer)
{
    Coord coord;
    coord.ellipsoid.proj4EllpsName = "GRS80";
    coord.projection.proj4Projection = QString("utm +zone=31") + QChar(0) + "32";
    ChainBuffers chain(coord);
    EXPECT_EQ(chain.localProjected.text(), "");
    GuardedBuffer<1000> single;
    ProjLib::CoordToProjString(&coord, single.data(), QString());
    EXPECT_EQ(single.text(), "");
}

// --- What PROJ is given, by its stand-in that would accept anything
// -------------------------------

class LengthInProj : public test::FakeProjTest
{
protected:
    static QString definition(int length, int bytesPerLetter)
    {
        const QString start = "+proj=longlat +title=";
        return start + letters(length - start.size(), bytesPerLetter);
    }
};

TEST_F(LengthInProj, ConversionTakesBothDefinitionsToTheLastByte)
{
    for (const int bytes : {1, 2, 3}) {
        const QString longest = definition(longestDefinition, bytes);
        ASSERT_EQ(longest.toUtf8().size(), longestDefinition);
        fake().definitions.clear();
        Pos pos;
        EXPECT_TRUE(
            ProjLib::ConvertPosList(longest, longest, pos, ProjLib::WGS84LatLongH_to_WGS84XYZ));
        const std::vector<std::string> expected(2, longest.toStdString());
        EXPECT_EQ(fake().definitions, expected);
    }
}

TEST_F(LengthInProj, ConversionRefusesALongerDefinitionOnEitherSide)
{
    for (const int bytes : {1, 2, 3}) {
        for (const int length : {1000, 1001, 1003, 2000, 1000000}) {
            const QString tooLong = definition(length, bytes);
            for (const bool isSource : {true, false}) {
                SCOPED_TRACE(length);
                const QString from = isSource ? tooLong : "+proj=longlat";
                const QString to = isSource ? "+proj=longlat" : tooLong;
                const test::LogCapture log;
                QList<Pos> list{Pos::fromXYZ(1.0, 2.0, 3.0)};
                QString error;
                EXPECT_FALSE(ProjLib::ConvertPosList(from, to, list,
                                                     ProjLib::WGS84LatLongH_to_WGS84XYZ, &error));
                EXPECT_EQ(error, "Error format.");
                EXPECT_EQ(list, QList<Pos>{Pos::fromXYZ(1.0, 2.0, 3.0)});
                ASSERT_EQ(log.entries().size(), 1);
                EXPECT_TRUE(log.entries()[0].text.contains(tooLong));
            }
        }
    }
    EXPECT_TRUE(fake().definitions.empty());
}

TEST_F(LengthInProj, ConversionRefusesADefinitionWithAZero)
{
    const test::LogCapture log;
    const QString cut = QString("+proj=utm +zone=31") + QChar(0) + "2";
    for (const bool isSource : {true, false}) {
        Pos pos;
        QString error;
        EXPECT_FALSE(ProjLib::ConvertPosList(isSource ? cut : "+proj=longlat",
                                             isSource ? "+proj=longlat" : cut, pos,
                                             ProjLib::LocalLatLongH_to_LocalNEH, &error));
        EXPECT_EQ(error, "Error format.");
    }
    EXPECT_TRUE(fake().definitions.empty());
}

TEST_F(LengthInProj, ProjectionFitsOrIsRefused)
{
    const auto length = [](const Coord &coord) {
        QString out;
        ProjLib::GetProjectionString_proj4(&coord.projection, &coord.ellipsoid, out);
        return out.toUtf8().size();
    };
    for (const int bytes : {1, 2, 3}) {
        for (const int excess : {0, 1, 2, 100, 100000}) {
            SCOPED_TRACE(excess);
            const Coord coord = coordOfLength(longestDefinition + excess, bytes, length);
            fake().definitions.clear();
            QString out;
            QString error;
            const bool fits = excess == 0;
            EXPECT_EQ(ProjLib::GetProjectionString_proj4(&coord.projection, &coord.ellipsoid, out,
                                                         &error),
                      fits);
            EXPECT_EQ(error, fits ? "" : "Error format.");
            // Whole also when it is refused.
            EXPECT_EQ(out.toUtf8().size(), longestDefinition + excess);
            EXPECT_TRUE(out.endsWith(" +units=m"));
            if (fits) {
                ASSERT_EQ(fake().definitions.size(), 1U);
                EXPECT_EQ(fake().definitions[0], out.toStdString());
            } else {
                EXPECT_TRUE(fake().definitions.empty());
            }
        }
    }
}

TEST_F(LengthInProj, ProjectionWithAZeroIsRefused)
{
    Projection projection;
    projection.proj4Projection = QString("utm +zone=31") + QChar(0) + "2";
    QString out;
    QString error;
    EXPECT_FALSE(ProjLib::GetProjectionString_proj4(&projection, nullptr, out, &error));
    EXPECT_EQ(error, "Error format.");
    EXPECT_TRUE(fake().definitions.empty());
}

/// The empty text that a definition too long leaves is refused by PROJ itself.
using EmptyDefinition = test::ProjTest;

TEST_F(EmptyDefinition, IsRefusedByProj)
{
    const test::LogCapture log;
    Pos pos = Pos::fromLongLatH(9.0, 48.0, 0.0);
    for (const char *target : {"", "+proj=longlat +ellps=GRS80"}) {
        QString error;
        EXPECT_FALSE(ProjLib::ConvertPosList(*target == '\0' ? "+proj=longlat +ellps=GRS80" : "",
                                             target, pos, ProjLib::LocalLatLongH_to_LocalNEH,
                                             &error));
        EXPECT_EQ(error, "Error format.");
    }
    EXPECT_EQ(pos, Pos::fromLongLatH(9.0, 48.0, 0.0));
}

} // namespace
} // namespace KelStd
