#include "Engine/ProcessRunner.h"

#include "Engine/ConversionError.h"
#include "Platform/PlatformError.h"
#include "Platform/ProcessRun.h"

namespace nolfa {

ProcessResult ProcessRunner::run(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
    const Options &options, const std::stop_token &stop)
{
    if (stop.stop_requested())
        throw ConversionError::cancelled();
    try {
        ProcessRun run(executable, arguments, options.stdin, options.currentDirectory,
            std::chrono::duration<double>(options.timeout));
        switch (run.wait(stop)) {
        case ProcessRun::Ending::timedOut:
            throw ConversionError::timedOut(options.label);
        case ProcessRun::Ending::cancelled:
            throw ConversionError::cancelled();
        case ProcessRun::Ending::exited:
            break;
        }
        return {run.status(), run.takeOutput(), run.takeError()};
    } catch (const PlatformError &error) {
        throw ConversionError::engineFailure(error.what());
    }
}

} // namespace nolfa
