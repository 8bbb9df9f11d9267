#include <KelStd/io/DocumentFailure.h>

namespace KelStd::io {

QString describedFailure(const DocumentFailure &failure)
{
    return failure.line == 0 ? failure.text
                             : QStringLiteral("line %1: ").arg(failure.line) + failure.text;
}

} // namespace KelStd::io
