#pragma once

#include <KelStd/Failure.h>

namespace KelStd {

/// Why a position was not converted, or its height not referred to the geoid.
enum class ConversionFailureKind
{
    None,              ///< no failure
    NotLoaded,         ///< PROJ is not loaded (`ProjLib::___InitializeEnviroment`)
    BadSystem,         ///< no definition can be written of the system, or of one of its units
    RefusedDefinition, ///< PROJ has no transformation between the definitions
    NoResult,          ///< PROJ has none for the position; the text is PROJ's own
    NotOneToOne,       ///< see `LocationBuilder::requireOneToOne`
    NoGeoidModel,      ///< no file of a geoid model is given
    BadGeoidModel      ///< PROJ cannot use the file of the geoid model
};

/// A failure of one of the kinds of `ConversionFailureKind`.
using ConversionFailure = Failure<ConversionFailureKind>;

} // namespace KelStd
