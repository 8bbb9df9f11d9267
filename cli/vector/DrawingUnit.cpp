#include <cli/vector/DrawingUnit.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>

namespace KelStd::cli::vector {

namespace {

struct Unit
{
    int code; ///< of $INSUNITS
    double metres;
};

constexpr Unit units[] = {
    {1, 0.0254}, {2, 0.3048},  {3, 1609.344}, {4, 0.001}, {5, 0.01},   {6, 1.0},
    {7, 1000.0}, {10, 0.9144}, {14, 0.1},     {15, 10.0}, {16, 100.0}, {21, 1200.0 / 3937.0},
};

std::optional<double> metresOf(int code)
{
    for (const Unit &unit : units) {
        if (unit.code == code)
            return unit.metres;
    }
    return std::nullopt;
}

/// Of the comment "1 unit = 0.3048 m".
std::optional<double> metresIn(const QByteArray &comment)
{
    static const QByteArray before = "1 unit = ";
    static const QByteArray behind = " m";
    if (!comment.startsWith(before) || !comment.endsWith(behind))
        return std::nullopt;
    bool ok = false;
    const double metres =
        comment.mid(before.size(), comment.size() - before.size() - behind.size()).toDouble(&ok);
    return ok && metres > 0.0 ? std::optional(metres) : std::nullopt;
}

} // namespace

std::optional<double> drawingUnit(const QString &path)
{
    constexpr int maxGroups = 20000; // a header has some hundreds
    constexpr qint64 maxLine = 4096; // [bytes]
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    bool isUnit = false;
    for (int i = 0; i < maxGroups && !file.atEnd(); ++i) {
        const QByteArray code = file.readLine(maxLine).trimmed();
        const QByteArray value = file.readLine(maxLine).trimmed();
        if (code == "999") {
            if (const auto metres = metresIn(value))
                return metres;
        } else if (code == "0" && value == "ENDSEC") {
            return std::nullopt;
        } else if (isUnit && code == "70") {
            return metresOf(value.toInt());
        } else if (code == "9") {
            isUnit = value == "$INSUNITS";
        }
    }
    return std::nullopt;
}

} // namespace KelStd::cli::vector
