#include "Engine/ArchiveTool.h"

#include "Engine/ConversionError.h"
#include "Engine/ProcessRunner.h"
#include "Engine/ZipDirectory.h"
#include "Localization/NolfaL10n.h"
#include "Platform/Unicode.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace nolfa::ArchiveTool {

namespace fs = std::filesystem;
using ZipDirectory::Totals;

namespace {

constexpr double timeLimit = 60;
const fs::path unzipProgram = "/usr/bin/unzip";
const fs::path zipProgram = "/usr/bin/zip";

std::string openFailure()
{
    return T("The file couldn't be opened.", "Le fichier n’a pas pu être ouvert.");
}

ProcessResult runUnzip(const std::vector<std::string> &arguments, const std::stop_token &stop,
    std::optional<std::uint64_t> largestFile = std::nullopt)
{
    ProcessResult result = ProcessRunner::run(
        unzipProgram, arguments, {.timeout = timeLimit, .label = "unzip", .largestFile = largestFile}, stop);
    if (result.status != 0)
        throw ConversionError::engineFailure(openFailure());
    return result;
}

/// The archive's path as unzip takes it: as a pattern, if it holds the signs of one. Without this a file named
/// "a[1].xlsx" would not be found, and "a1.xlsx" be opened in its place.
std::string archiveArgument(const fs::path &archive)
{
    constexpr std::string_view patternSigns = "[*?\\";
    const std::string name = archive.filename();
    if (name.find_first_of(patternSigns) == std::string::npos)
        return archive;
    std::string escaped;
    for (const char c : name) {
        if (patternSigns.find(c) == std::string_view::npos)
            escaped += c;
        else
            escaped.append(c == '\\' ? "[\\" : "[").append(1, c).append("]");
    }
    return archive.parent_path() / escaped;
}

bool isEscaping(std::string_view entry)
{
    const std::string_view name = Unicode::trimmed(entry);
    if (name.starts_with('/'))
        return true;
    for (std::size_t start = 0; start < name.size();) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        if (name.substr(start, end - start) == "..")
            return true;
        start = end + 1;
    }
    return false;
}

/// @return the number of entries
std::size_t rejectEscapingEntries(const std::string &archive, const std::stop_token &stop)
{
    const std::string listing = runUnzip({"-Z1", archive}, stop).stdout;
    std::string_view names = Unicode::isValidUTF8(listing) ? std::string_view(listing) : std::string_view();
    std::size_t count = 0;
    while (!names.empty()) {
        const std::size_t end = std::min(names.find('\n'), names.size());
        if (isEscaping(names.substr(0, end))) {
            throw ConversionError::engineFailure(
                T("The file contains an entry that points outside its own folder, so it was not opened.",
                    "Le fichier contient un élément qui pointe en dehors de son propre dossier, il n’a donc pas été "
                    "ouvert."));
        }
        ++count;
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return count;
}

/// From a line such as "2 files, 6 bytes uncompressed, 6 bytes compressed:  0.0%".
std::optional<Totals> parseTotals(std::string_view line)
{
    Totals totals;
    for (std::uint64_t *number : {&totals.entries, &totals.unpacked, &totals.packed}) {
        line.remove_prefix(std::min(line.find_first_of("0123456789"), line.size()));
        const auto [end, failure] = std::from_chars(line.data(), line.data() + line.size(), *number);
        if (failure != std::errc())
            return std::nullopt;
        line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    }
    return totals;
}

bool isWithin(const Totals &totals, const Limits &limits)
{
    if (totals.entries > limits.entries || totals.unpacked > limits.totalSize)
        return false;
    return totals.unpacked <= limits.ratioFloor || totals.unpacked / limits.ratio <= totals.packed;
}

/// What the archive claims: by our own reading where it agrees with the names that unzip listed, else as unzip sums up.
std::optional<Totals> claimedTotals(
    const fs::path &archive, const std::string &argument, std::size_t names, const std::stop_token &stop)
{
    const std::optional<Totals> totals = ZipDirectory::totals(archive);
    if (totals && totals->entries == names)
        return totals;
    return parseTotals(runUnzip({"-Zt", argument}, stop).stdout);
}

} // namespace

void zip(const fs::path &directory, const fs::path &archive, const std::stop_token &stop)
{
    std::error_code ignored;
    fs::remove_all(archive, ignored);
    const ProcessResult result = ProcessRunner::run(zipProgram, {"-r", "-q", "-X", archive, "."},
        {.currentDirectory = directory, .timeout = timeLimit, .label = "zip"}, stop);
    if (result.status != 0) {
        throw ConversionError::engineFailure(T("The file couldn't be written.", "Le fichier n’a pas pu être écrit."));
    }
}

Checked check(const fs::path &archive, const std::stop_token &stop, const Limits &limits)
{
    std::string argument = archiveArgument(archive);
    const std::size_t names = rejectEscapingEntries(argument, stop);
    if (names > limits.entries)
        throw ConversionError::engineFailure(openFailure());
    // Archives that would fill the disk stay shut.
    const std::optional<Totals> totals = claimedTotals(archive, argument, names, stop);
    if (!totals || !isWithin(*totals, limits))
        throw ConversionError::engineFailure(openFailure());
    return {std::move(argument), totals->entries, totals->unpacked};
}

void unpack(const Checked &archive, const fs::path &destination, const std::stop_token &stop,
    std::optional<std::uint64_t> largestFile)
{
    fs::create_directories(destination);
    // An archive may lie about its sizes: no file becomes larger than all of them claim to be together.
    runUnzip({"-o", "-qq", archive.argument, "-d", destination}, stop, largestFile.value_or(archive.unpacked));
}

void unzip(const fs::path &archive, const fs::path &destination, const std::stop_token &stop, const Limits &limits)
{
    unpack(check(archive, stop, limits), destination, stop);
}

} // namespace nolfa::ArchiveTool
