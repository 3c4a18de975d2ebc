#pragma once

namespace nolfa::CommandLine {

/// What the shell gets to see.
enum ExitStatus : int {
    success = 0,
    documentFailed = 1, ///< at least one document; its sentence is on standard error
    wrongUsage = 2,
    interrupted = 130
};

} // namespace nolfa::CommandLine
