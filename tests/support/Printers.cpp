#include "support/Printers.h"

#include <iomanip>
#include <limits>
#include <ostream>

QT_BEGIN_NAMESPACE
void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

std::ostream &operator<<(std::ostream &out, const QString &text)
{
    return out << text.toStdString();
}
QT_END_NAMESPACE

namespace KelStd {

void PrintTo(const Pos &pos, std::ostream *out)
{
    const stXYZ &p = pos.getXYZ();
    *out << std::setprecision(std::numeric_limits<double>::max_digits10) << '(' << p.x << ", "
         << p.y << ", " << p.z << ')';
}

} // namespace KelStd
