#include <KelStd/text/TextDirection.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

// Unicode Standard Annex 9, section 2: LRE, RLE, PDF, LRO, RLO and LRI, RLI, FSI, PDI. The marks
// (LRM, RLM, ALM), which stand for one letter, turn nothing behind it.
TEST(TextDirection, IsTurnedByEmbeddingsOverridesAndIsolates)
{
    for (const int code : {0x202A, 0x202B, 0x202C, 0x202D, 0x202E, 0x2066, 0x2067, 0x2068, 0x2069})
        EXPECT_TRUE(turnsDirection(QChar(code))) << std::hex << code;
    for (const int code : {0x0041, 0x05D0, 0x0627, 0x061C, 0x200E, 0x200F, 0x2028, 0x2029, 0x202F,
                           0x2065, 0x206A, 0xFEFF})
        EXPECT_FALSE(turnsDirection(QChar(code))) << std::hex << code;
}

} // namespace
} // namespace KelStd
