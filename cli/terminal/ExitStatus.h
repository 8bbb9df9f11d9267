#pragma once

namespace KelStd::cli {

/// What a script can rely on; `kelstd --help` lists it.
enum class ExitStatus : int
{
    Success = 0,     ///< everything was done
    SomeFailed = 1,  ///< the run went to its end, but some positions, values or comparisons failed
    Usage = 2,       ///< the command line, the header of the input or a time is not understood
    Environment = 3, ///< no PROJ, no usable system or geoid model, or output that cannot be written
    Unreported = 4,  ///< the change was made, but standard output cannot be written to say so
    Stopped = 130,   ///< told to stop; whoever started the program sees a signal instead
};

} // namespace KelStd::cli
