#pragma once

#include <gtest/gtest.h>

#include <QtCore/QString>

namespace KelStd::test {

/// A test that converts: PROJ is loaded before it, and it leaves the current directory as it was.
class ProjTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

private:
    QString m_directory;
};

} // namespace KelStd::test
