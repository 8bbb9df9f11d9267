#pragma once

#include "proj/FakeProj.h"
#include "support/TemporaryHome.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <gtest/gtest.h>

namespace KelStd::test {

/// The bytes of a stand-in for the PROJ library: "complete", "without_FUNCTION".
QByteArray fakeProjBytes(const QString &variant = QStringLiteral("complete"));

/// A home whose private PROJ directory is prepared, with `library` as the library file. Each home
/// has a library file of its own, because a library once loaded stays loaded until the process
/// ends.
class FakeProjHome : public TemporaryHome
{
public:
    explicit FakeProjHome(const QByteArray &library = fakeProjBytes());

    QString libraryFile() const;

    /// The record of this home's library. Loads it when it is not.
    FakeProj &fake() const;
};

/// The record of the stand-in whose file this is. Loads it when it is not.
FakeProj &fakeProjOf(const QString &libraryFile);

/// A test against the complete stand-in, which is loaded. The current directory is checked at the
/// end.
class FakeProjTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    FakeProj &fake() const { return m_home.fake(); }
    const FakeProjHome &home() const { return m_home; }

private:
    FakeProjHome m_home;
    QString m_directory;
};

/// True when an operation that needs PROJ says that there is none.
bool projIsMissing();

} // namespace KelStd::test
