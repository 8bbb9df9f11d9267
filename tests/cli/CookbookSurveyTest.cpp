// A hundred thousand lines in every format, of which no line and no column is lost: GDAL reads the
// files. Fewer under a sanitizer.

#include "cli/Kitchen.h"
#include "cli/vector/VectorRun.h"
#include "support/Printers.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <functional>

namespace KelStd {
namespace {

constexpr int count = KELSTD_SURVEY_LINES;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// The carried fields of a line, behind its name.
struct Carried
{
    QString code;
    QString remark;
    QString measured;
    QString sd;
};

Carried carriedOf(int i)
{
    return {QStringLiteral("C%1").arg(i % 13), text("Gel\u00e4nde %1 \u00d8").arg(i * 7),
            QStringLiteral("2024-05-%1T10:20:%2.%30Z")
                .arg(1 + i % 30, 2, 10, QLatin1Char('0'))
                .arg(i % 60, 2, 10, QLatin1Char('0'))
                .arg(i % 10),
            QStringLiteral("0.%1").arg(i % 500, 3, 10, QLatin1Char('0'))};
}

QByteArray survey()
{
    QByteArray lines = "name;lat;lon;h;code;remark;measured;sd\n";
    for (int i = 1; i <= count; ++i) {
        const Carried carried = carriedOf(i);
        lines += 'P' + QByteArray::number(i) + ';' + QByteArray::number(50 + i * 3e-5, 'f', 9) + ';'
                 + QByteArray::number(2 + i * 2e-5, 'f', 9) + ';'
                 + QByteArray::number(40 + (i % 977) * 0.01, 'f', 4) + ';'
                 + QStringList{carried.code, carried.remark, carried.measured, carried.sd}
                       .join(QLatin1Char(';'))
                       .toUtf8()
                 + '\n';
    }
    return lines;
}

/// What a file says of one line: a value by the column's name in it.
using Value = std::function<QString(const char *column)>;

/// Every column of the line `i`, whose names have a prefix in some files.
void expectLine(int i, const Value &value, const char *names, bool isShort)
{
    const auto number = [&value](const char *column) {
        bool ok = false;
        const double result = value(column).toDouble(&ok);
        EXPECT_TRUE(ok) << column << ' ' << value(column);
        return result;
    };
    ASSERT_EQ(value(names), QStringLiteral("P%1").arg(i));
    const Carried carried = carriedOf(i);
    ASSERT_EQ(value("code"), carried.code);
    ASSERT_EQ(value("remark"), carried.remark);
    // A format with times of its own shows them in its own way: 2024/05/02 10:20:01.100+00.
    const QString measured = value("measured").replace('/', '-').replace(' ', 'T');
    const int shown = i % 10 == 0 ? 19 : 21;
    ASSERT_EQ(measured.left(shown), carried.measured.left(shown));
    ASSERT_EQ(number("sd"), carried.sd.toDouble());
    ASSERT_NEAR(number(isShort ? "wgs84_lat" : "wgs84_latitude_deg"), 50 + i * 3e-5, 1e-11);
    ASSERT_NEAR(number(isShort ? "wgs84_lon" : "wgs84_longitude_deg"), 2 + i * 2e-5, 1e-11);
    ASSERT_NEAR(number(isShort ? "wgs84_h" : "wgs84_height_m"), 40 + (i % 977) * 0.01, 1e-8);
    ASSERT_EQ(value(isShort ? "height_ref" : "local_height_reference"), text("ellipsoid"));
    ASSERT_GT(number(isShort ? "northing" : "local_northing_m"), 5e6);
    ASSERT_GT(number(isShort ? "easting" : "local_easting_m"), 4e5);
    ASSERT_NEAR(number(isShort ? "height" : "local_height_m"), 40 + (i % 977) * 0.01, 1.1e-5);
}

/// A list of which no field holds a separator.
void expectList(const QString &file, const char *names = "point", const char *prefix = "",
                bool isShort = false)
{
    QFile list(file);
    ASSERT_TRUE(list.open(QIODevice::ReadOnly));
    const QList<QByteArray> columns = list.readLine().trimmed().split(',');
    int i = 0;
    while (!list.atEnd()) {
        const QList<QByteArray> fields = list.readLine().trimmed().split(',');
        ASSERT_EQ(fields.size(), columns.size());
        const Value value = [&](const char *column) {
            QByteArray name = column;
            if (name != names)
                name.prepend(prefix);
            QByteArray field = fields.value(columns.indexOf(name));
            return QString::fromUtf8(field.replace('"', ""));
        };
        ASSERT_NO_FATAL_FAILURE(expectLine(++i, value, names, isShort));
    }
    EXPECT_EQ(i, count);
}

/// A layer as ogr2ogr gives it.
void expectLayer(const test::Kitchen &kitchen, const char *file, const char *names,
                 const char *prefix = "", bool isShort = false, const QStringList &layer = {})
{
    SCOPED_TRACE(file);
    const QString list = kitchen.path(text("by_ogr_") + text(file) + text(".csv"));
    test::toolOutput(text("ogr2ogr"),
                     QStringList{text("-f"), text("CSV"), list, kitchen.path(text(file))} + layer);
    ASSERT_NO_FATAL_FAILURE(expectList(list, names, prefix, isShort));
    QFile::remove(list);
}

/// A text of a drawing, in which other characters are "\U+" and four hexadecimal digits.
QString decoded(QByteArray bytes)
{
    for (int at = bytes.indexOf("\\U+"); at >= 0; at = bytes.indexOf("\\U+", at + 1))
        bytes.replace(at, 7, QString(QChar(bytes.mid(at + 3, 4).toInt(nullptr, 16))).toUtf8());
    return QString::fromUtf8(bytes);
}

/// GDAL passes over the extended data of a drawing's points: its groups of codes are read here.
void expectDrawing(const QString &file)
{
    QFile drawing(file);
    ASSERT_TRUE(drawing.open(QIODevice::ReadOnly));
    QMap<QByteArray, QByteArray> values;
    QByteArray column;
    int i = 0;
    while (!drawing.atEnd()) {
        const QByteArray code = drawing.readLine().trimmed();
        const QByteArray value = drawing.readLine().trimmed();
        if (code == "0" && !values.isEmpty()) {
            ASSERT_NO_FATAL_FAILURE(expectLine(
                ++i, [&](const char *name) { return decoded(values.value(name)); }, "point",
                false));
            values.clear();
        } else if (code == "1000") {
            column = value.left(value.indexOf('='));
            values[column] = value.mid(value.indexOf('=') + 1);
        } else if (code == "1040") {
            values[column] = value;
        }
    }
    EXPECT_EQ(i, count);
}

TEST(Cookbook, LosesNothingOfASurvey)
{
    const test::Kitchen kitchen;
    test::writeFile(kitchen.path(text("survey.csv")), survey());
    auto commands = test::commandsOf(test::cookbookPart(text("A whole survey in every format")));
    for (test::ShownCommand &command : commands)
        command.lines.replaceInStrings(text("100000"), QString::number(count));
    kitchen.cook(commands, kitchen.path(QString()));
    expectList(kitchen.path(text("out.csv")));
    expectLayer(kitchen, "out.geojson", "point");
    expectLayer(kitchen, "out.gpkg", "point");
    expectLayer(kitchen, "out.shp", "point", "", true);
    expectLayer(kitchen, "out.kml", "Name");
    expectLayer(kitchen, "out.gpx", "name", "ogr_", false, {text("waypoints")});
    expectDrawing(kitchen.path(text("out.dxf")));

    QFile json(kitchen.path(text("out.json")));
    ASSERT_TRUE(json.open(QIODevice::ReadOnly));
    int i = 0;
    while (!json.atEnd()) {
        const QJsonObject object = QJsonDocument::fromJson(json.readLine()).object();
        ASSERT_NO_FATAL_FAILURE(expectLine(
            ++i,
            [&](const char *column) {
                const QJsonValue value = object.value(QLatin1String(column));
                return value.isDouble() ? QString::number(value.toDouble(), 'g', 17)
                                        : value.toString();
            },
            "point", false));
    }
    EXPECT_EQ(i, count);
}

} // namespace
} // namespace KelStd
