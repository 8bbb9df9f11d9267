#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    // What the user of this machine has set must not decide what the tests see.
    for (const char *variable :
         {"KELSTD_HOME_DIR", "KELSTD_BIN_DIR", "PROJ_LIB", "PROJ_DATA", "PROJ_DEBUG"})
        qunsetenv(variable);

    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
