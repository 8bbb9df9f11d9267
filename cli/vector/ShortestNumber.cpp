#include <cli/vector/ShortestNumber.h>

#include <QtCore/QLocale>

#include <cmath>

namespace KelStd::cli::vector {

QByteArray shortestDecimal(double number)
{
    return QByteArray::number(number, 'f', QLocale::FloatingPointShortest);
}

QByteArray shortestNumber(double number)
{
    constexpr double min = 1e-7;
    constexpr double max = 1e15;
    const double size = std::abs(number);
    return size == 0.0 || (size >= min && size <= max)
               ? shortestDecimal(number)
               : QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
}

} // namespace KelStd::cli::vector
