#include "Engine/PandocRunner.h"

#include "Engine/ConversionError.h"
#include "Engine/PandocDiagnostics.h"
#include "Engine/ProcessRunner.h"
#include "Platform/File.h"
#include "Platform/Unicode.h"

#include <array>

namespace nolfa {

std::span<const std::filesystem::path> PandocRunner::systemPlaces()
{
    static const std::array<std::filesystem::path, 3> places{
        "/opt/homebrew/bin/pandoc", "/usr/local/bin/pandoc", "/usr/bin/pandoc"};
    return places;
}

std::optional<PandocRunner> PandocRunner::resolve(const Bundle &bundle, std::span<const std::filesystem::path> places)
{
    for (const std::string_view subfolder : {"bin", ""}) {
        const std::optional<std::filesystem::path> own = bundle.resource("pandoc", {}, subfolder);
        if (own && File::isExecutable(*own))
            return PandocRunner{*own};
    }
    for (const std::filesystem::path &place : places) {
        if (File::isExecutable(place))
            return PandocRunner{place};
    }
    return std::nullopt;
}

std::string PandocRunner::run(const std::vector<std::string> &arguments, std::optional<std::string_view> stdin,
    const std::stop_token &stop, const std::optional<std::filesystem::path> &currentDirectory,
    const std::vector<std::string> &environment) const
{
    ProcessResult result = ProcessRunner::run(binaryURL, arguments,
        {.stdin = stdin,
            .currentDirectory = currentDirectory,
            .environment = environment,
            .timeout = timeLimit,
            .label = "pandoc"},
        stop);
    if (result.status == 0)
        return std::move(result.stdout);
    const std::string_view text = Unicode::isValidUTF8(result.stderr) ? result.stderr : std::string_view();
    throw ConversionError::toolFailure(
        "pandoc", PandocDiagnostics::summarize(text, result.status), std::string(Unicode::trimmed(text)));
}

std::string PandocRunner::version(const std::stop_token &stop) const
{
    std::string output = run({"--version"}, std::nullopt, stop);
    return Unicode::isValidUTF8(output) ? output : std::string();
}

} // namespace nolfa
