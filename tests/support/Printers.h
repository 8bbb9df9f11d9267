#pragma once

#include <KelStd/coord/Pos.h>

#include <QtCore/QString>

#include <iosfwd>

// How Qt's and our own types look in a failed expectation.
QT_BEGIN_NAMESPACE
void PrintTo(const QString &text, std::ostream *out);
std::ostream &operator<<(std::ostream &out, const QString &text);
QT_END_NAMESPACE

namespace KelStd {

void PrintTo(const Pos &pos, std::ostream *out);

} // namespace KelStd
