#include <cli/vector/DatumFacts.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <cmath>

namespace KelStd::cli::vector {

QString plainName(const std::string &datum)
{
    QString name = QString::fromStdString(datum)
                       .toLower()
                       .replace(QLatin1Char('_'), QLatin1Char(' '))
                       .simplified();
    return name.startsWith(QLatin1String("d ")) ? name.mid(2) : name;
}

bool isUnnamed(const std::string &datum)
{
    const QString name = plainName(datum);
    return name.isEmpty() || name.startsWith(QLatin1String("unknown"))
           || name.startsWith(QLatin1String("unnamed"))
           || name.startsWith(QLatin1String("not specified"));
}

QString plainShift(const QString &numbers)
{
    static const QRegularExpression others(QStringLiteral("[^0-9-]+"));
    static const QRegularExpression ends(QStringLiteral("^_+|(_0+)*_*$"));
    return QString(numbers).replace(others, QStringLiteral("_")).remove(ends);
}

QString shiftInName(const std::string &datum)
{
    static const QString word = QStringLiteral("using towgs84");
    const QString name = plainName(datum);
    const auto place = name.indexOf(word);
    if (place < 0)
        return {};
    return plainShift(
        QString::fromStdString(datum).simplified().right(name.size() - place - word.size()));
}

bool isNearWgs84(const std::string &datum)
{
    static const QRegularExpression names(QStringLiteral(
        "^(wgs ?84|wgs 1984|world geodetic system 1984|etrs ?89|etrs 1989|etrf|european "
        "terrestrial "
        "reference (system|frame)|itrf|igs|international terrestrial reference "
        "frame|sirgas|sistema "
        "de referencia geocentrico|china 2000|cgcs ?2000|gda ?2020|geocentric datum of australia "
        "2020|nzgd ?2000|new zealand geodetic datum 2000)"));
    return names.match(plainName(datum)).hasMatch();
}

bool isWgs84(const std::string &datum)
{
    static const QRegularExpression names(
        QStringLiteral("^(wgs ?84|wgs 1984|world geodetic system 1984)( ensemble)?$"));
    return names.match(plainName(datum)).hasMatch();
}

bool haveSameEllipsoid(const Reference &one, const Reference &other)
{
    // A tenth of a millimetre in the radius; what texts leave of 1/298.257223563.
    constexpr double radiusTolerance = 1e-4;
    constexpr double flatteningTolerance = 1e-6;
    return std::abs(one.semiMajor - other.semiMajor) <= radiusTolerance
           && std::abs(one.inverseFlattening - other.inverseFlattening) <= flatteningTolerance
           && std::abs(one.primeMeridian - other.primeMeridian) <= 1e-9;
}

bool haveSameShift(const std::vector<double> &one, const std::vector<double> &other)
{
    constexpr double earthRadius = 6.4e6;
    constexpr double secondOfArc = 0.017453292519943295 / 3600.0; // [rad]
    const double scales[] = {1.0,
                             1.0,
                             1.0,
                             secondOfArc * earthRadius,
                             secondOfArc * earthRadius,
                             secondOfArc * earthRadius,
                             1e-6 * earthRadius};
    for (std::size_t i = 0; i < one.size() && i < other.size(); ++i) {
        if (std::abs(one[i] - other[i]) * scales[i] > 0.001)
            return false;
    }
    return true;
}

QString shownShift(const std::vector<double> &shift)
{
    QStringList numbers;
    for (const double number : shift)
        numbers += QString::number(number, 'g', 10);
    return numbers.join(QLatin1Char(','));
}

QString shownDatum(const Reference &reference)
{
    return reference.datum.empty() ? QStringLiteral("no datum that has a name")
                                   : QStringLiteral("the datum \"%1\"")
                                         .arg(QString::fromStdString(reference.datum)
                                                  .replace(QLatin1Char('_'), QLatin1Char(' ')));
}

} // namespace KelStd::cli::vector
