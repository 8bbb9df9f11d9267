#include "library/LibraryTest.h"

#include <QtCore/QDir>

namespace KelStd::test {

namespace {

/// The places in the library's directory.
struct Place
{
    void (StandardLibrary::*set)(const QString &);
    const char *name;
    bool isFolder;
};

const Place places[] = {
    {&StandardLibrary::setBaseCoordFilePath, "base.xml", false},
    {&StandardLibrary::setEllipsoidListPath, "ellipsoids", true},
    {&StandardLibrary::setProjectionListPath, "projections", true},
    {&StandardLibrary::setCustomCoordPath, "custom", true},
    {&StandardLibrary::setStandardCoordPath, "standard", true},
    {&StandardLibrary::setShowInCreateProjectCoordsFilePath, "names.xml", false},
    {&StandardLibrary::setShowConfigFilePath, "show.cfg", false},
};

} // namespace

void LibraryTest::SetUp()
{
    ASSERT_TRUE(m_dir.isValid());
    library().setShowConfigFilePath(QString());
    library().setShowConfig(stShowConfig());
    for (const Place &place : places) {
        if (place.isFolder) {
            ASSERT_TRUE(QDir(m_dir.path()).mkdir(QString::fromLatin1(place.name)));
        }
        (library().*place.set)(path(place.name));
    }
    library().loadLibrary();
    QFile::remove(path("names.xml")); // which loading creates
}

void LibraryTest::TearDown()
{
    forgetPlaces();
    library().setShowConfig(stShowConfig());
}

QStringList LibraryTest::entries(const char *folder) const
{
    return QDir(path(folder))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                   QDir::Name);
}

void LibraryTest::forgetPlaces()
{
    for (const Place &place : places)
        (library().*place.set)(QString());
}

ScopedCurrentDirectory::ScopedCurrentDirectory(const QString &path) : m_before(QDir::currentPath())
{
    EXPECT_TRUE(QDir::setCurrent(path));
}

ScopedCurrentDirectory::~ScopedCurrentDirectory()
{
    EXPECT_TRUE(QDir::setCurrent(m_before));
}

SignalCount::SignalCount()
{
    const StandardLibrary *library = &StandardLibrary::getInstance();
    QObject::connect(library, &StandardLibrary::sgShowConfigChanged, &m_receiver,
                     [this] { ++showConfigChanged; });
    QObject::connect(library, &StandardLibrary::sgShowInCreateProjectCoordsChanged, &m_receiver,
                     [this] { ++showInCreateProjectCoordsChanged; });
}

SignalCount::~SignalCount() = default;

NamePairs offered()
{
    NamePairs pairs;
    StandardLibrary::getInstance().getShowInCreateProjectCoords(pairs);
    return pairs;
}

} // namespace KelStd::test
