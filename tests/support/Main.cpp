#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    // What the user of this machine has set must not decide what the tests see; and PROJ's notes on
    // standard error about positions that are meant to fail would hide the report.
    for (const char *variable : {"KELSTD_HOME_DIR", "KELSTD_BIN_DIR", "PROJ_LIB", "PROJ_DATA"})
        qunsetenv(variable);
    qputenv("PROJ_DEBUG", "0");

    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
