#include "delivered/DeliveredDocuments.h"

#include "support/Printers.h"
#include "support/TemporaryHome.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/SystemDocument.h>

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

namespace KelStd::test {

QString deliveredPath(const QString &relative)
{
    return QStringLiteral(KELSTD_TEST_BIN_DIR "/library/") + relative;
}

std::vector<std::string> deliveredFiles(const QString &folder)
{
    std::vector<std::string> names;
    for (const QString &name : QDir(deliveredPath(folder)).entryList(QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

bool isUtmZone(const std::string &fileName)
{
    return fileName.rfind("WGS_84_UTM_zone_", 0) == 0;
}

std::vector<std::string> nationalSystems()
{
    std::vector<std::string> names;
    for (const std::string &name : deliveredFiles(QStringLiteral("standard"))) {
        if (!isUtmZone(name))
            names.push_back(name);
    }
    return names;
}

Coord deliveredSystem(const std::string &fileName)
{
    Coord coord;
    QString error;
    EXPECT_TRUE(Coord_IO::xml_read(
        deliveredPath(QStringLiteral("standard/") + QString::fromStdString(fileName)), coord,
        &error))
        << fileName << ": " << error;
    return coord;
}

SystemOrigin deliveredOrigin(const std::string &fileName)
{
    SystemOrigin origin;
    io::DocumentFailure failure;
    EXPECT_TRUE(io::readOrigin(
        deliveredPath(QStringLiteral("standard/") + QString::fromStdString(fileName)), origin,
        failure))
        << fileName << ": " << failure.text;
    return origin;
}

Citation citationOf(const std::string &fileName)
{
    static const QRegularExpression form(
        QStringLiteral("<!-- Parameters: (EPSG:\\d+)\\. "
                       "Datum shift: (?:(EPSG:\\d+)|none|none, taken as WGS 84)\\. -->"));
    const QByteArray document =
        readFile(deliveredPath(QStringLiteral("standard/") + QString::fromStdString(fileName)));
    const QRegularExpressionMatch match = form.match(QString::fromUtf8(document));
    EXPECT_TRUE(match.hasMatch()) << fileName;
    return {match.captured(1), match.captured(2)};
}

} // namespace KelStd::test
