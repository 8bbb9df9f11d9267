#pragma once

#include "cli/ProgramRun.h"
#include "support/Printers.h"

#include <QtCore/QFileInfo>

namespace KelStd::test {

/// `kelstd library` on a directory of its own, "lib" in the home directory.
class LibraryRun : public testing::Test
{
protected:
    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    QString directory() const { return m_program.home().path(QStringLiteral("lib")); }
    QString path(const char *file) const { return directory() + QLatin1Char('/') + text(file); }
    void put(const char *file, const QByteArray &bytes) const { writeFile(path(file), bytes); }
    bool has(const char *file) const { return QFileInfo::exists(path(file)); }

    ProgramResult library(std::initializer_list<QString> words) const
    {
        return m_program.run(
            QStringList{QStringLiteral("library"), QStringLiteral("--dir"), directory()}
            + QStringList(words));
    }

    QStringList names(const char *kind) const
    {
        return library({QStringLiteral("list"), QStringLiteral("--names"), QStringLiteral("--kind"),
                        text(kind)})
            .outLines();
    }

    /// The Dutch grid under another name, which must need no escapes.
    static QByteArray system(const char *name)
    {
        return editedSystem(QStringLiteral("rd_new.xml"),
                            {{QStringLiteral("Amersfoort / RD New"), text(name)}});
    }

    static QByteArray ellipsoid(const char *name, const char *axis = "6378137")
    {
        return QByteArray("<Ellpsoid ver=\"1\" ellipsoid_name=\"") + name + "\" biggerHalfAxle=\""
               + axis + "\" reciprocal=\"298.25\" positiveDir=\"ENU\" proj4EllpsName=\"\"/>";
    }

    static QByteArray ellipsoids(const QByteArray &elements)
    {
        return "<Ellipsoid_List ver=\"1\">" + elements + "</Ellipsoid_List>";
    }

    static QByteArray projections(const char *name)
    {
        return QByteArray("<Projection_List ver=\"1\"><Projection ver=\"1\" projection_name=\"")
               + name
               + "\" proj4Projection=\"utm\" locationType=\"X_Y_ElevationHeight\" "
                 "loc_or_height_unit=\"Meter\"/></Projection_List>";
    }

    /// A document outside of the library.
    QString given(const char *name, const QByteArray &bytes) const
    {
        return m_program.file(text(name), bytes);
    }

    ProgramRun m_program;
};

} // namespace KelStd::test
