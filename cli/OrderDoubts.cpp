#include <cli/OrderDoubts.h>

#include <cli/TypedNumber.h>

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>

namespace KelStd::cli {

namespace {

constexpr double fullCircle = 360.0;
constexpr double minutesPerDegree = 60.0;

bool isWhole(const QString &field)
{
    return !field.isEmpty() && std::all_of(field.cbegin(), field.cend(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
}

/// A plain number that is not whole: with a sign or decimals.
bool isOtherNumber(const QString &field)
{
    bool ok = false;
    field.toDouble(&ok);
    return ok && !isWhole(field);
}

bool hasDecimals(const QString &field)
{
    return isOtherNumber(field) && field.contains(QLatin1Char('.'));
}

/// "465" and "682.96": one number whose thousands were set apart.
bool mayBeGroups(const QString &first, const QString &second)
{
    static const QRegularExpression start(QStringLiteral("\\A[1-9][0-9]{0,2}\\z"));
    static const QRegularExpression group(QStringLiteral("\\A[0-9]{3}(\\.[0-9]*)?\\z"));
    return start.match(first).hasMatch() && group.match(second).hasMatch();
}

QString whatToAdd()
{
    return QStringLiteral("; say it with a line of headings or --columns");
}

/// "101,465682.96,183928.88": a whole number before two others with decimals.
QString missingHeight(const SplitLine &line, Frame frame)
{
    const QStringList &fields = line.fields;
    const bool looksNumbered = isWhole(fields.at(0)) && hasDecimals(fields.at(1))
                               && hasDecimals(fields.at(2)) && !line.isQuoted.at(0);
    if (!looksNumbered || frame == Frame::Wgs84XYZ)
        return {};
    // Longitudes and latitudes have their range, and a greater height is one for sure.
    const bool isGeographic = frame != Frame::LocalNEH;
    if (isGeographic
        && !(std::abs(fields.at(1).toDouble()) <= fullCircle
             && std::abs(fields.at(2).toDouble()) <= fullCircle))
        return {};
    return QStringLiteral("%1 may be a point's number before %2 without a height, or the %3%4, or "
                          "with decimals: %1.0")
        .arg(fields.at(0),
             isGeographic ? QStringLiteral("longitude and latitude")
                          : QStringLiteral("northing and easting"),
             QLatin1String(columnOf(frame, 0).label), whatToAdd());
}

/// "5 30 52 10" and "5,52,5,10": pairs of numbers that may be one each.
QString pairs(const SplitLine &line, Frame frame)
{
    const QStringList &fields = line.fields;
    const bool allWhole = std::all_of(fields.cbegin(), fields.cend(), isWhole);
    const bool isGeographic = frame == Frame::Wgs84LLH || frame == Frame::LocalLLH;
    if (allWhole && line.separator == QLatin1Char(',')) {
        return QStringLiteral("four whole numbers: the first may be a point's, and the commas may "
                              "mark decimals%1")
                   .arg(isGeographic ? QStringLiteral(", and degrees may stand before minutes")
                                     : QString())
               + whatToAdd();
    }
    const auto mayBeMinutes = [](const QString &field) {
        bool ok = false;
        const double value = field.toDouble(&ok);
        return ok && value >= 0 && value < minutesPerDegree;
    };
    if (isGeographic
        && (allWhole
            || (isWhole(fields.at(0)) && mayBeMinutes(fields.at(1)) && isWhole(fields.at(2))
                && mayBeMinutes(fields.at(3))))) {
        return QStringLiteral("the numbers may be degrees and minutes, or %1 is the point's%2, or "
                              "write angles as 5\u00B030'")
            .arg(fields.at(0), whatToAdd());
    }
    return {};
}

} // namespace

QString heightDoubt(const QString &field)
{
    return QStringLiteral("height %1 is beyond %2 m: is it an easting, behind a point's number and "
                          "the northing?")
               .arg(field)
               .arg(mostPlaneHeight)
           + whatToAdd();
}

QString orderDoubt(const SplitLine &line, const FieldOrder &order, Frame frame)
{
    if (!order.isPlain)
        return {};
    if (order.fields == componentsPerFrame)
        return missingHeight(line, frame);

    const QString &name = line.fields.at(0);
    if (line.isQuoted.at(0))
        return {};
    const bool areLengths = frame == Frame::Wgs84XYZ || frame == Frame::LocalNEH;
    if ((line.byBlanks || line.separator == QLatin1Char(',')) && areLengths) {
        for (int i = 0; i + 1 < line.fields.size(); ++i) {
            if (mayBeGroups(line.fields.at(i), line.fields.at(i + 1))) {
                return QStringLiteral("%1 and %2 may be one number, with its thousands set apart%3")
                    .arg(quoted(line.fields.at(i)), quoted(line.fields.at(i + 1)), whatToAdd());
            }
        }
    }
    const QString doubt = pairs(line, frame);
    if (!doubt.isEmpty())
        return doubt;
    if (isOtherNumber(name)) {
        return QStringLiteral("%1 may be the %2 or a point's name%3, or set a name in quotation "
                              "marks")
            .arg(quoted(name), QLatin1String(columnOf(frame, 0).label), whatToAdd());
    }
    return {};
}

} // namespace KelStd::cli
