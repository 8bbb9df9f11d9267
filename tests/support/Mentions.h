#pragma once

#include <QtCore/QString>

#include <gmock/gmock.h>

namespace KelStd::test {

/// That a text holds another one.
MATCHER_P(Mentions, text, "")
{
    return QString(arg).contains(QString::fromUtf8(text));
}

} // namespace KelStd::test
