#include <KelStd/positions/OrderDoubts.h>

#include <KelStd/positions/LineShape.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/text/TypedAngle.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>

namespace KelStd::positions {

namespace {

constexpr double fullCircle = 360.0;
constexpr double minutesPerDegree = 60.0;

bool isWhole(const QString &field)
{
    return positions::isWhole(field.toStdString());
}

double numberOf(const QString &field)
{
    bool ok = false;
    const double value = field.toDouble(&ok);
    return ok ? value : std::nan("");
}

} // namespace

bool isOtherNumber(const QString &field)
{
    return std::isfinite(numberOf(field)) && !isWhole(field);
}

namespace {

bool hasDecimals(const QString &field)
{
    return isOtherNumber(field) && field.contains(QLatin1Char('.'));
}

/// The fields with decimal points.
QStringList fieldsOf(const SplitLine &line)
{
    QStringList fields;
    for (int i = 0; i < line.fields.size(); ++i) {
        const bool mayBeDecimal = line.separator != QLatin1Char(',') || line.isQuoted.at(i);
        fields += mayBeDecimal ? withDecimalPoint(line.fields.at(i), DecimalMark::Comma)
                               : line.fields.at(i);
    }
    return fields;
}

QString whatToAdd(const InputForm &form)
{
    return QStringLiteral("; say it with %1").arg(waysToSayOrder(form));
}

/// "101,465682.96,183928.88": a whole number before two others with decimals; also "E12" and
/// "10:00:00" before two longitudes or latitudes.
QString missingHeight(const QStringList &fields, const InputForm &form)
{
    const Frame frame = form.frame;
    static const QRegularExpression nameOrTime(
        QStringLiteral("\\A([NSEW][0-9]+|[0-9]+[NSEW]|[0-9]{1,2}(:[0-9]{2}){1,2})\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const bool isNumber = isWhole(fields.at(0));
    const bool mayBeName =
        frame != Frame::LocalProjected && nameOrTime.match(fields.at(0)).hasMatch();
    const bool looksNumbered =
        (isNumber || mayBeName) && hasDecimals(fields.at(1)) && hasDecimals(fields.at(2));
    if (!looksNumbered || frame == Frame::Wgs84Cartesian)
        return {};
    const bool isGeographic = frame != Frame::LocalProjected;
    // A number beyond the range of angles can only be a height.
    if (isGeographic
        && !(std::abs(numberOf(fields.at(1))) <= fullCircle
             && std::abs(numberOf(fields.at(2))) <= fullCircle))
        return {};
    return QStringLiteral("%1 may be a point's number before %2 without a height, or the %3%4, or "
                          "%5")
        .arg(fields.at(0),
             isGeographic ? QStringLiteral("longitude and latitude")
                          : QStringLiteral("northing and easting"),
             QLatin1String(columnOf(frame, 0).label), whatToAdd(form),
             isNumber ? QStringLiteral("with decimals: %1.0").arg(fields.at(0))
                      : QStringLiteral("write the angle with its signs"));
}

/// "5,52.5", "5 30" and "465,682.96": two numbers that may be a name and one number, or one number
/// alone.
QString twoNumbersDoubt(const QStringList &fields, const SplitLine &line, const FieldOrder &order,
                        const InputForm &form)
{
    const QString &first = fields.at(order.components[0]);
    const QString &second = fields.at(order.components[1]);
    const bool areTyped = hasAngleSigns(first) && hasAngleSigns(second);
    const bool isSeparated = !line.byBlanks && line.separator != QLatin1Char(',');
    const bool hasPoint = first.contains(QLatin1Char('.')) && !hasAngleSigns(first);
    if ((hasPoint && isValue(first)) || areTyped || (order.name >= 0 && isSeparated))
        return {};
    return QStringLiteral("%1 and %2 may be a number in two pieces, or a point's number before one "
                          "component%3, or write %4 with decimals")
        .arg(quoted(first), quoted(second), whatToAdd(form), quoted(first));
}

/// "5 30 52 10" and "5,52,5,10": pairs of numbers that may be one each.
QString pairs(const QStringList &fields, bool byCommas, const InputForm &form)
{
    const Frame frame = form.frame;
    const bool isGeographic = frame == Frame::Wgs84Geographic || frame == Frame::LocalGeographic;
    const auto mayBeDegrees = [isGeographic](const QString &field) {
        return isWhole(field) && (!isGeographic || numberOf(field) <= fullCircle);
    };
    const auto mayBeMinutes = [](const QString &field) {
        return numberOf(field) >= 0 && numberOf(field) < minutesPerDegree;
    };
    if (!mayBeDegrees(fields.at(0)) || !mayBeDegrees(fields.at(2)))
        return {};
    if (byCommas && isWhole(fields.at(1)) && isWhole(fields.at(3))) {
        return QStringLiteral("four whole numbers: the first may be a point's, and the commas may "
                              "mark decimals%1")
                   .arg(isGeographic ? QStringLiteral(", and degrees may stand before minutes")
                                     : QString())
               + whatToAdd(form);
    }
    if (!isGeographic || !mayBeMinutes(fields.at(1)) || !mayBeMinutes(fields.at(3)))
        return {};
    return QStringLiteral("the numbers may be degrees and minutes, or %1 is the point's%2, or "
                          "write angles as 5\u00B030'")
        .arg(fields.at(0), whatToAdd(form));
}

} // namespace

QString heightDoubt(const QString &field, const InputForm &form)
{
    return QStringLiteral("height %1 is beyond %2 m: it may be an easting, behind a point's number "
                          "and the northing")
               .arg(field)
               .arg(maxPlaneHeight)
           + whatToAdd(form);
}

bool mayBeAngle(const QString &name)
{
    static const QRegularExpression withLetter(
        QStringLiteral("\\A([NSEW]\\s*[0-9]+[.,][0-9]+|[0-9]+[.,][0-9]+\\s*[NSEW])\\z"),
        QRegularExpression::CaseInsensitiveOption);
    TypedValueFailure failure;
    const auto isTyped = [&](AngleSense sense) {
        return readTypedAngle(name, sense, DecimalMark::Point, failure).has_value();
    };
    return withLetter.match(name).hasMatch()
           || (hasAngleSigns(name)
               && (isTyped(AngleSense::Longitude) || isTyped(AngleSense::Latitude)));
}

QString nameDoubt(const QString &name, const InputForm &form)
{
    return QStringLiteral("%1 may be the %2 or a point's name%3, or set a name in quotation marks")
        .arg(quoted(name), QLatin1String(columnOf(form.frame, 0).label), whatToAdd(form));
}

QString latitudeFirst(const SplitLine &line, const FieldOrder &order, const InputForm &form)
{
    static const QRegularExpression northOrSouth(
        QStringLiteral("\\A([NS]\\s*[0-9].*|[0-9].*[NS])\\z"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression eastOrWest(
        QStringLiteral("\\A([EW]\\s*[0-9].*|[0-9].*[EW])\\z"),
        QRegularExpression::CaseInsensitiveOption);
    if (!order.isPlain || !isAngle(columnOf(form.frame, 0)))
        return {};
    const QString &first = line.fields.at(order.components[0]);
    const QString &second = line.fields.at(order.components[1]);
    if (!northOrSouth.match(first).hasMatch() || !eastOrWest.match(second).hasMatch())
        return {};
    return QStringLiteral("the latitude %1 stands before the longitude %2; say the order with %3 "
                          "(%4lat,lon,h)")
        .arg(quoted(first), quoted(second), waysToSayOrder(form),
             order.name >= 0 ? QStringLiteral("name,") : QString());
}

QString laterNameDoubt(const SplitLine &line, const FieldOrder &order, const InputForm &form)
{
    const QString &name = line.fields.at(order.name);
    if (!isValue(name))
        return {};
    const ComponentFields fields = order.componentFields();
    const bool areWhole =
        isWhole(name) && std::all_of(fields.begin(), fields.end(), [&line](int field) {
            return isWhole(line.fields.at(field));
        });
    // Numbers of points are whole ones, and coordinates have decimals.
    if (form.lacksHeight() && isWhole(name) && !areWhole)
        return {};
    return QStringLiteral(
               "%1 may be a point's number before %2 and %3, or these are %4%5, or set a "
               "name in quotation marks")
        .arg(quoted(name), line.fields.at(order.components[0]), line.fields.at(order.components[1]),
             labelsOf(form.frame), whatToAdd(form));
}

int fieldOfHeightBehind(const FieldOrder &order, const InputForm &form)
{
    if (order.hasHeight() || !order.hasHeadings || form.lacksHeight() || order.isPicked)
        return FieldOrder::noField;
    const ComponentFields fields = order.componentFields();
    const int next = *std::max_element(fields.begin(), fields.end()) + 1;
    return next < order.fields && next != order.name ? next : FieldOrder::noField;
}

QString heightBehind(const SplitLine &line, const FieldOrder &order, const InputForm &form)
{
    const int next = fieldOfHeightBehind(order, form);
    if (next < 0 || next >= line.fields.size() || !isValue(line.fields.at(next)))
        return {};
    return QStringLiteral("the headings name no height, and %1 behind %2 may be one; say it with a "
                          "heading, or that there is none with %3")
        .arg(quoted(line.fields.at(next)), quoted(line.fields.at(next - 1)), form.words.height);
}

QString laterPairsDoubt(const SplitLine &line, const InputForm &form)
{
    const QStringList fields = fieldsOf(line);
    const bool byCommas = line.separator == QLatin1Char(',');
    // A northing of six digits is not six decimals.
    constexpr int maxDecimals = 3;
    if (byCommas && isWhole(fields.at(1)) && isWhole(fields.at(3))
        && (fields.at(1).size() > maxDecimals || fields.at(3).size() > maxDecimals))
        return {};
    return pairs(fields, byCommas, form);
}

QString orderDoubt(const SplitLine &line, const FieldOrder &order, const InputForm &form)
{
    const Frame frame = form.frame;
    // Of a quoted name nothing is said by marks that all fields have.
    const bool isSure = order.name >= 0 && line.isQuoted.at(0) && !line.isQuoted.at(1);
    if (!order.isPlain || (isSure && order.hasHeight()))
        return {};
    const QStringList fields = fieldsOf(line);
    if (!order.hasHeight()) {
        const bool areApart = order.name < 0 && line.isQuoted.at(0) && line.isQuoted.at(1);
        const QString doubt = areApart ? QString() : twoNumbersDoubt(fields, line, order, form);
        const bool isNameSure = order.name < 0 || isSure;
        return doubt.isEmpty() && !isNameSure ? laterNameDoubt(line, order, form) : doubt;
    }
    if (order.name < 0)
        return missingHeight(fields, form);

    const bool byCommas = line.separator == QLatin1Char(',');
    const bool areLengths = frame == Frame::Wgs84Cartesian || frame == Frame::LocalProjected;
    for (int i = 0; areLengths && (byCommas || line.byBlanks) && i + 1 < fields.size(); ++i) {
        if (mayBeGroups(fields.at(i).toStdString(), fields.at(i + 1).toStdString())) {
            return QStringLiteral("%1 and %2 may be one number, with its thousands set apart%3")
                .arg(quoted(fields.at(i)), quoted(fields.at(i + 1)), whatToAdd(form));
        }
    }
    QString doubt = pairs(fields, byCommas, form);
    if (!doubt.isEmpty())
        return doubt;
    if (isOtherNumber(fields.at(0)) || (!areLengths && mayBeAngle(fields.at(0))))
        return nameDoubt(fields.at(0), form);
    return {};
}

} // namespace KelStd::positions
