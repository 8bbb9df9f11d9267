#include "proj/ProjPrograms.h"

#include <QtCore/QProcess>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

namespace KelStd::test {

namespace {

QByteArray linesOf(const QList<Pos> &positions, const QByteArray &end)
{
    QByteArray lines;
    for (const Pos &pos : positions) {
        for (const double component : componentsOf(pos))
            lines += QByteArray::number(component, 'g', 17) + ' ';
        lines += end + '\n';
    }
    return lines;
}

QList<Pos> run(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();

    QList<Pos> results;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() >= 3)
            results << Pos::fromXYZ(words[0].toDouble(), words[1].toDouble(), words[2].toDouble());
    }
    EXPECT_EQ(results.size(), input.count('\n'));
    return results;
}

QStringList piecesOf(const QString &definition)
{
    return definition.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

QList<Pos> runCs2cs(const QString &from, const QString &to, const QList<Pos> &positions)
{
    // cs2cs reads a definition as one of a coordinate reference system only when it says so.
    const QStringList asSystem{QStringLiteral("+type=crs")};
    return run(QStringLiteral("cs2cs"),
               QStringList{QStringLiteral("-f"), QStringLiteral("%.12f")} + piecesOf(from)
                   + asSystem + QStringList{QStringLiteral("+to")} + piecesOf(to) + asSystem,
               linesOf(positions, ""));
}

QList<Pos> runCs2csTo(const QString &system, const QList<Pos> &positions)
{
    if (system.startsWith(QLatin1Char('+')))
        return runCs2cs(QStringLiteral("+proj=longlat +datum=WGS84"), system, positions);
    QList<Pos> latitudesFirst;
    for (const Pos &position : positions) {
        const stLongLatH &place = position.getLongLatH();
        latitudesFirst << Pos::fromXYZ(place.latitude, place.longitude, place.height);
    }
    return run(QStringLiteral("cs2cs"),
               {QStringLiteral("-f"), QStringLiteral("%.12f"), QStringLiteral("EPSG:4326"),
                QStringLiteral("+to"), system},
               linesOf(latitudesFirst, ""));
}

QList<Pos> runCct(const QString &definition, const QList<Pos> &positions)
{
    // The fourth component is the time; nothing here depends on it.
    return run(QStringLiteral("cct"),
               QStringList{QStringLiteral("-d"), QStringLiteral("12")} + piecesOf(definition),
               linesOf(positions, "0"));
}

void expectNear(const QList<Pos> &ours, const QList<Pos> &theirs, double tolerance)
{
    ASSERT_EQ(ours.size(), theirs.size());
    for (int i = 0; i < ours.size(); ++i) {
        const auto a = componentsOf(ours[i]);
        const auto b = componentsOf(theirs[i]);
        for (std::size_t c = 0; c < a.size(); ++c)
            EXPECT_NEAR(a[c], b[c], tolerance) << "position " << i << ", component " << c;
    }
}

} // namespace KelStd::test
