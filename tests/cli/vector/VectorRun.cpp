#include "cli/vector/VectorRun.h"

#include "support/Printers.h"

#include <QtCore/QProcess>

namespace KelStd::test {

QString toolOutput(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(120000)) << program;
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

QList<QMap<QString, QString>> ogrRows(const QString &file, const QStringList &layer)
{
    return csvRows(toolOutput(
        QStringLiteral("ogr2ogr"),
        QStringList{QStringLiteral("--config"), QStringLiteral("GPX_ELE_AS_25D"),
                    QStringLiteral("YES"), QStringLiteral("-f"), QStringLiteral("CSV"),
                    QStringLiteral("/vsistdout/"), file}
            + layer + QStringList{QStringLiteral("-lco"), QStringLiteral("GEOMETRY=AS_XYZ")}));
}

QPair<double, double> cs2csEastNorth(const QString &code, double longitude, double latitude)
{
    const QByteArray input =
        QByteArray::number(latitude, 'g', 17) + ' ' + QByteArray::number(longitude, 'g', 17) + '\n';
    const QStringList numbers =
        toolOutput(QStringLiteral("cs2cs"),
                   {QStringLiteral("-f"), QStringLiteral("%.6f"), QStringLiteral("EPSG:4326"),
                    QStringLiteral("+to"), code},
                   input)
            .simplified()
            .split(QLatin1Char(' '));
    return {numbers.value(0).toDouble(), numbers.value(1).toDouble()};
}

testing::AssertionResult mentionsAll(const QString &text, const QList<const char *> &parts)
{
    for (const char *const part : parts) {
        if (!text.contains(QString::fromUtf8(part)))
            return testing::AssertionFailure() << part;
    }
    return testing::AssertionSuccess();
}

QStringList words(const QString &text)
{
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QByteArray somePoints()
{
    return "{\"type\":\"FeatureCollection\",\"features\":[\n"
           "{\"type\":\"Feature\",\"properties\":{\"name\":\"Mast\",\"code\":\"TREE\","
           "\"girth\":1.25,\"count\":7},"
           "\"geometry\":{\"type\":\"Point\",\"coordinates\":[5.387,52.155,43.1]}},\n"
           "{\"type\":\"Feature\",\"properties\":{\"name\":\"\u00c7e\u015fme\",\"code\":\"WELL\","
           "\"girth\":0.5,\"count\":8},"
           "\"geometry\":{\"type\":\"Point\",\"coordinates\":[3.25,51.5,-2.5]}},\n"
           "{\"type\":\"Feature\",\"properties\":{},"
           "\"geometry\":{\"type\":\"Point\",\"coordinates\":[2.0,50.0,0.25]}}\n"
           "]}\n";
}

} // namespace KelStd::test
