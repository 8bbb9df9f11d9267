// Rows of a layer on their way from the threads to the one that writes.

#include <cli/vector/LayerRow.h>

#include <gtest/gtest.h>

namespace KelStd {
namespace {

using namespace cli::vector;

TEST(LayerRow, ComesBackAsItWas)
{
    const std::vector<Field> fields = {{"name", FieldType::Text},  {"count", FieldType::Integer},
                                       {"girth", FieldType::Real}, {"none", FieldType::Real},
                                       {"ok", FieldType::Boolean}, {"on", FieldType::Date}};
    QByteArray bytes;
    appendRow(bytes, {1.5, -2.25, 1e-300},
              {QByteArray("a\0b", 3), "42", "0.1", QByteArray(), "true", "2024-05-01"});
    appendRow(bytes, {4.0, 5.0, 6.0}, {"", "x", "1e999", "-7", "false", QByteArray()});

    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    Feature feature;
    ASSERT_TRUE(takeRow(rest, fields, feature));
    EXPECT_EQ(feature.x, 1.5);
    EXPECT_EQ(feature.y, -2.25);
    EXPECT_EQ(feature.z, 1e-300);
    EXPECT_EQ(feature.values, (std::vector<Value>{std::string("a\0b", 3), 42LL, 0.1, Value(), 1LL,
                                                  std::string("2024-05-01")}));
    ASSERT_TRUE(takeRow(rest, fields, feature));
    EXPECT_EQ(feature.values,
              (std::vector<Value>{std::string(), Value(), Value(), -7.0, 0LL, Value()}));
    EXPECT_FALSE(takeRow(rest, fields, feature));
}

} // namespace
} // namespace KelStd
