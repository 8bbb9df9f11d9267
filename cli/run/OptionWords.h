#pragma once

#include <KelStd/positions/InputForm.h>

namespace KelStd::cli {

/// What messages about an input call the options of the commands that read one.
inline positions::InputWords optionWords()
{
    return {QStringLiteral("--columns"), QStringLiteral("--skip"), QStringLiteral("--from"),
            QStringLiteral("--length-unit")};
}

} // namespace KelStd::cli
