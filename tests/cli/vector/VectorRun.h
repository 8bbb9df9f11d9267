#pragma once

#include "cli/ProgramRun.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

namespace KelStd::test {

/// What a program of PROJ or GDAL prints, which has to succeed.
QString toolOutput(const QString &program, const QStringList &arguments,
                   const QByteArray &input = {});

/// The rows of a layer as ogr2ogr reads them, with X, Y, Z of the points.
QList<QMap<QString, QString>> ogrRows(const QString &file, const QStringList &layer = {});

/// Easting and northing of a longitude and a latitude on WGS 84, by cs2cs. `code`: of a system
/// whose first axis is the easting.
QPair<double, double> cs2csEastNorth(const QString &code, double longitude, double latitude);

/// That a text holds all of the others.
testing::AssertionResult mentionsAll(const QString &text, const QList<const char *> &parts);

/// "convert --system EPSG:32631 in.gpkg" as arguments.
QStringList words(const QString &text);

/// Two points with names and attributes, and one without either.
QByteArray somePoints();

} // namespace KelStd::test
