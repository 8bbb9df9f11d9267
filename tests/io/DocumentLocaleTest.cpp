#include "io/CompleteSystem.h"
#include "io/DocumentTest.h"
#include "io/XmlTree.h"

#include <QtCore/QLocale>

#include <clocale>
#include <string>

namespace KelStd::test {
namespace {

/// A locale with a decimal comma, for Qt and, as far as the machine has one, for C.
class DecimalComma : public DocumentTest
{
protected:
    void SetUp() override
    {
        DocumentTest::SetUp();
        m_before = std::setlocale(LC_ALL, nullptr);
        for (const char *name : {"de_DE.UTF-8", "fr_FR.UTF-8", "ru_RU.UTF-8", "de_DE"}) {
            if (std::setlocale(LC_ALL, name) != nullptr)
                break;
        }
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }

    void TearDown() override
    {
        QLocale::setDefault(m_defaultBefore);
        std::setlocale(LC_ALL, m_before.c_str());
    }

private:
    const QLocale m_defaultBefore;
    std::string m_before;
};

TEST_F(DecimalComma, IsNotWritten)
{
    ASSERT_TRUE(QLocale().decimalPoint() == QLatin1Char(','));
    EXPECT_EQ(withSortedAttributes(written(completeSystem())).toStdString(),
              withSortedAttributes(storedDocument("complete.xml")).toStdString());
}

TEST_F(DecimalComma, IsNotRead)
{
    Coord coord;
    ASSERT_TRUE(Coord_IO::xml_read(storedDocumentPath("complete.xml"), coord, nullptr));
    expectSameSystem(coord, completeSystem());
    ASSERT_TRUE(
        read(documentWithDatum(R"(<x_translate ver="1" valType="Double">1,5</x_translate>)"
                               R"(<y_translate ver="1" valType="Int32">1.500</y_translate>)"),
             coord));
    EXPECT_EQ(coord.ellipsoidTransform.x_translate.value.toDouble(), 0.0);
    EXPECT_EQ(coord.ellipsoidTransform.y_translate.value.toInt(), 0);
}

} // namespace
} // namespace KelStd::test
