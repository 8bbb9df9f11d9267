#include "support/ProjTest.h"

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/proj/ProjLib.h>

#include <QtCore/QDir>

namespace KelStd::test {

namespace {

/// One for all tests of a process: PROJ stays loaded from the first one's library file.
const TemporaryHome &preparedHome()
{
    static const TemporaryHome home(TemporaryHome::PreparedProj);
    return home;
}

} // namespace

void ProjTest::SetUp()
{
    m_directory = QDir::currentPath();
    preparedHome().use();
    ASSERT_TRUE(ProjLib::___InitializeEnviroment());
}

void ProjTest::TearDown()
{
    EXPECT_EQ(QDir::currentPath(), m_directory);
    ProjLib::___unloadEnviroment();
}

} // namespace KelStd::test
