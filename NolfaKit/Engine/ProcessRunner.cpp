#include "Engine/ProcessRunner.h"

#include "Engine/ConversionError.h"
#include "Platform/PlatformError.h"
#include "Platform/ProcessRun.h"

namespace nolfa {

namespace {

/// Starts the program under a limit that holds from its first instruction on: prlimit sets it and becomes the program.
ProcessRun limitedRun(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
    const ProcessRunner::Options &options, std::uint64_t largestFile)
{
    const std::string limit = std::to_string(largestFile);
    std::vector<std::string> words{"--fsize=" + limit + ":" + limit, executable};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return {"/usr/bin/prlimit", words, options.stdin, options.currentDirectory, options.environment,
        std::chrono::duration<double>(options.timeout)};
}

ProcessRun startRun(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
    const ProcessRunner::Options &options)
{
    if (options.largestFile)
        return limitedRun(executable, arguments, options, *options.largestFile);
    return {executable, arguments, options.stdin, options.currentDirectory, options.environment,
        std::chrono::duration<double>(options.timeout)};
}

} // namespace

ProcessResult ProcessRunner::run(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
    const Options &options, const std::stop_token &stop)
{
    if (stop.stop_requested())
        throw ConversionError::cancelled();
    try {
        ProcessRun run = startRun(executable, arguments, options);
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
