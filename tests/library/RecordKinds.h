#pragma once

#include "io/XmlTree.h"
#include "library/LibraryTest.h"

#include <QtCore/QMap>

// The three kinds of records that can be changed, in one form for tests of what they share. Each
// has two values for every name, 1 and 2, and the documents of them by hand.

namespace KelStd::test {

struct EllipsoidKind
{
    using Record = Ellipsoid;
    static constexpr const char *folder = "ellipsoids";
    static constexpr auto setPath = &StandardLibrary::setEllipsoidListPath;
    static constexpr auto add = &StandardLibrary::addEllipsoidToLibrary;
    static constexpr auto replace = &StandardLibrary::setEllipsoidInLibrary;
    static constexpr auto remove = &StandardLibrary::removeEllipsoidFromLibrary;
    static constexpr auto find = &StandardLibrary::getEllipsoidFromLibrary;
    static constexpr auto all = &StandardLibrary::getEllipsoidLibrary;
    static Ellipsoid record(const QString &name, int value);
    static QByteArray document(const QString &name, int value);
    static QString nameOf(const Ellipsoid &record);
    static int valueOf(const Ellipsoid &record);
};

/// A list of ellipsoids with names of one letter, in this order.
QByteArray ellipsoidsCalled(const QByteArray &names);

struct ProjectionKind
{
    using Record = Projection;
    static constexpr const char *folder = "projections";
    static constexpr auto setPath = &StandardLibrary::setProjectionListPath;
    static constexpr auto add = &StandardLibrary::addProjectionToLibrary;
    static constexpr auto replace = &StandardLibrary::setProjectionInLibrary;
    static constexpr auto remove = &StandardLibrary::removeProjectionFromLibrary;
    static constexpr auto find = &StandardLibrary::getProjectionFromLibrary;
    static constexpr auto all = &StandardLibrary::getProjectionLibrary;
    static Projection record(const QString &name, int value);
    static QByteArray document(const QString &name, int value);
    static QString nameOf(const Projection &record);
    static int valueOf(const Projection &record);
};

struct SystemKind
{
    using Record = Coord;
    static constexpr const char *folder = "custom";
    static constexpr auto setPath = &StandardLibrary::setCustomCoordPath;
    static constexpr auto add = &StandardLibrary::addCoordToCustomLibrary;
    static constexpr auto replace = &StandardLibrary::setCoordInCustomLibrary;
    static constexpr auto remove = &StandardLibrary::removeCoordFromCustomLibrary;
    static constexpr auto find = &StandardLibrary::getCoordFromCustomLibrary;
    static constexpr auto all = &StandardLibrary::getCustomCoordLibrary;
    static Coord record(const QString &name, int value);
    static QByteArray document(const QString &name, int value);
    static QString nameOf(const Coord &record);
    static int valueOf(const Coord &record);
};

using RecordKinds = testing::Types<EllipsoidKind, ProjectionKind, SystemKind>;

/// A test of what the three kinds share.
template <typename Kind>
class RecordTest : public LibraryTest
{
protected:
    using Record = typename Kind::Record;

    static QString name(const char *text) { return QString::fromUtf8(text); }

    /// The path of the file named `fileName` in the kind's folder.
    QString file(const char *fileName) const { return file(name(fileName)); }
    QString file(const QString &fileName) const
    {
        return path(QString::fromLatin1(Kind::folder) + QLatin1Char('/') + fileName);
    }

    QStringList files() const { return entries(Kind::folder); }

    static bool add(const QString &recordName, const Record *record)
    {
        return (library().*Kind::add)(recordName, record);
    }

    static bool addNew(const QString &recordName, int value = 1)
    {
        const Record record = Kind::record(recordName, value);
        return add(recordName, &record);
    }

    static bool replace(const QString &recordName, const Record *record)
    {
        return (library().*Kind::replace)(recordName, record);
    }

    static bool replace(const QString &recordName, int value)
    {
        const Record record = Kind::record(recordName, value);
        return replace(recordName, &record);
    }

    static bool remove(const QString &recordName) { return (library().*Kind::remove)(recordName); }

    static const Record *find(const QString &recordName)
    {
        return (library().*Kind::find)(recordName);
    }

    static QStringList names()
    {
        QMap<QString, const Record *> records;
        (library().*Kind::all)(records);
        return records.keys();
    }

    /// The value of the record called `recordName`, 0 when there is none.
    static int value(const QString &recordName)
    {
        const Record *record = find(recordName);
        return record == nullptr ? 0 : Kind::valueOf(*record);
    }

    void expectDocument(const QString &fileName, const QByteArray &document) const
    {
        EXPECT_EQ(withSortedAttributes(readFile(file(fileName))).toStdString(),
                  withSortedAttributes(document).toStdString());
    }
};

} // namespace KelStd::test
