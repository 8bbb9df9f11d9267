#include "delivered/EpsgReference.h"

#include "support/Printers.h"

#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <random>

namespace KelStd::test {

namespace {

QByteArray run(const QString &program, const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished()) << program;
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QString epsgDefinition(const QString &kind, const QString &code)
{
    return QString::fromUtf8(
               run(QStringLiteral("projinfo"),
                   {QStringLiteral("-k"), kind, QStringLiteral("-o"), QStringLiteral("PROJ"),
                    QStringLiteral("-q"), QStringLiteral("--single-line"), code}))
        .simplified();
}

QList<Pos> throughCct(const QStringList &arguments, const QList<Pos> &positions)
{
    QByteArray input;
    for (const Pos &pos : positions) {
        const stXYZ &p = pos.getXYZ();
        for (const double component : {p.x, p.y, p.z, 0.0})
            input += QByteArray::number(component, 'g', 17) + ' ';
        input += '\n';
    }
    QList<Pos> results;
    const QByteArray output =
        run(QStringLiteral("cct"),
            QStringList{QStringLiteral("-d"), QStringLiteral("12")} + arguments, input);
    for (const QByteArray &line : output.split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() >= 3)
            results << Pos::fromXYZ(words[0].toDouble(), words[1].toDouble(), words[2].toDouble());
    }
    EXPECT_EQ(results.size(), positions.size()) << arguments.join(QLatin1Char(' '));
    return results;
}

QList<Pos> swapped(QList<Pos> positions)
{
    for (Pos &pos : positions) {
        const stXYZ p = pos.getXYZ();
        pos = Pos::fromXYZ(p.y, p.x, p.z);
    }
    return positions;
}

} // namespace

QString epsgText(const QString &kind, const QString &code)
{
    return QString::fromUtf8(
        run(QStringLiteral("projinfo"),
            {QStringLiteral("-k"), kind, QStringLiteral("-o"), QStringLiteral("WKT2:2019"),
             QStringLiteral("-q"), QStringLiteral("--single-line"), code}));
}

QString nameAfter(const QString &keyword, const QString &text)
{
    const QRegularExpressionMatch match =
        QRegularExpression(keyword + QStringLiteral("\\[\"([^\"]*)\"")).match(text);
    EXPECT_TRUE(match.hasMatch()) << keyword << " in " << text;
    return match.captured(1);
}

Usage epsgUsage(const QString &projectedCode)
{
    const QString text = epsgText(QStringLiteral("crs"), projectedCode);
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("BBOX\\[([^,\\]]+),([^,\\]]+),([^,\\]]+),([^,\\]]+)\\]"))
            .match(text);
    EXPECT_TRUE(match.hasMatch()) << text;
    return {{match.captured(1).toDouble(), match.captured(2).toDouble(),
             match.captured(3).toDouble(), match.captured(4).toDouble()},
            nameAfter(QStringLiteral("AREA"), text)};
}

Area epsgArea(const QString &projectedCode)
{
    return epsgUsage(projectedCode).area;
}

QList<Pos> seededPositions(const Area &area, int count)
{
    std::mt19937 random(20260201);
    const auto between = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    QList<Pos> positions;
    for (int i = 0; i < count; ++i) {
        const double longitude = between(area.west, area.east);
        const double latitude = between(area.south, area.north);
        positions << Pos::fromLongLatH(longitude, latitude, between(-100.0, 2000.0));
    }
    return positions;
}

QList<Pos> epsgToLocalDatum(const QString &transformationCode, const QList<Pos> &positions)
{
    const QString pipeline = epsgDefinition(QStringLiteral("operation"), transformationCode);
    // The EPSG axes are latitude, longitude.
    return swapped(throughCct(QStringList{QStringLiteral("-I")}
                                  + pipeline.split(QLatin1Char(' '), Qt::SkipEmptyParts),
                              swapped(positions)));
}

QList<Pos> epsgProject(const QString &projectedCode, const QList<Pos> &positions)
{
    // A projection alone: no reference system, no shift.
    QStringList pieces = epsgDefinition(QStringLiteral("crs"), projectedCode)
                             .split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const char *left : {"^\\+type=", "^\\+towgs84=", "^\\+no_defs"})
        pieces = pieces.replaceInStrings(
            QRegularExpression(QLatin1String(left) + QStringLiteral(".*")), QString());
    pieces.removeAll(QString());
    return throughCct(pieces, positions);
}

} // namespace KelStd::test
