#pragma once

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/io/Coord_IO.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace KelStd::test {

/// A test with a directory of its own for documents.
class DocumentTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_dir.isValid()); }

    QString path(const QString &name = QStringLiteral("system.xml")) const
    {
        return m_dir.filePath(name);
    }

    /// Everything in the directory, hidden files included.
    QStringList entries() const;

    /// Writes `coord` and returns the bytes of the file.
    QByteArray written(const Coord &coord) const;

    /// Reads a document of these bytes; the answer of `xml_read`.
    bool read(const QByteArray &document, Coord &coord, QString *error = nullptr) const;

    /// `coord` written and read back into a fresh system.
    Coord throughFile(const Coord &coord) const;

private:
    QTemporaryDir m_dir;
};

/// A readable document to be changed piece by piece: every required element, with nothing but its
/// version, and no geoid model.
struct DocumentPieces
{
    QByteArray declaration = R"(<?xml version="1.0" encoding="UTF-8"?>)";
    QByteArray rootAttributes = R"(ver="1" coord_name="site")";
    QByteArray ellipsoid = R"(<Ellpsoid ver="1"/>)";
    QByteArray projection = R"(<Projection ver="1"/>)";
    QByteArray datum = R"(<Ellipsoid_Transform ver="1"/>)";
    QByteArray plane = R"(<Plane_Transform ver="1"/>)";
    QByteArray fitting = R"(<Elevation_Fitting ver="1"/>)";
    QByteArray geoid;
    QByteArray more; ///< further children of the root

    QByteArray bytes() const;
};

/// A document whose projection has these children.
QByteArray documentWithProjection(const QByteArray &children);

/// A document whose datum transformation has these children.
QByteArray documentWithDatum(const QByteArray &children);

/// The bytes of tests/data/documents/`name`.
QByteArray storedDocument(const char *name);
QString storedDocumentPath(const char *name);

} // namespace KelStd::test
