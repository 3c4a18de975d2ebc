#include "Support/Processes.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>
#include <thread>

namespace nolfa::testing {

namespace fs = std::filesystem;

fs::path testProgram(std::string_view name)
{
    return fs::path(NOLFA_TEST_PROGRAMS) / name;
}

fs::path commandLineProgram()
{
    return fs::path(NOLFA_BIN) / "nolfa-cli";
}

ProcessResult runProgram(const fs::path &program, std::vector<std::string> arguments,
    const std::vector<std::string> &environment, const std::optional<fs::path> &folder)
{
    arguments.insert(arguments.begin(), program);
    arguments.insert(arguments.begin(), environment.begin(), environment.end());
    return ProcessRunner::run("/usr/bin/env", arguments,
        {.stdin = "", .currentDirectory = folder, .timeout = 100, .label = "test"}, std::stop_token());
}

bool isAlive(pid_t process)
{
    if (::kill(process, 0) != 0)
        return false;
    // A zombie of somebody else's is as dead as can be.
    std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
    // Not through an iterator, which throws when the process ends meanwhile.
    std::string text;
    std::getline(stat, text);
    const std::size_t name = text.rfind(") ");
    return name != std::string::npos && text.substr(name + 2, 1) != "Z";
}

std::map<pid_t, std::string> commandLines()
{
    std::map<pid_t, std::string> all;
    for (const fs::directory_entry &process : fs::directory_iterator("/proc")) {
        const std::string name = process.path().filename();
        if (!std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; }))
            continue;
        std::ifstream file(process.path() / "cmdline");
        std::string &command = all[static_cast<pid_t>(std::stol(name))];
        for (std::string argument; std::getline(file, argument, '\0');)
            command += argument + ' ';
    }
    return all;
}

Footprint footprint()
{
    const auto count = [](const char *folder) {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    };
    std::size_t children = 0;
    for (const fs::directory_entry &thread : fs::directory_iterator("/proc/self/task")) {
        std::ifstream list(thread.path() / "children");
        children += static_cast<std::size_t>(
            std::distance(std::istream_iterator<std::string>(list), std::istream_iterator<std::string>()));
    }
    return {count("/proc/self/fd"), count("/proc/self/task"), children};
}

bool waitUntil(std::chrono::milliseconds limit, const std::function<bool()> &condition)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

pid_t processNumberIn(const fs::path &file)
{
    pid_t number = 0;
    const bool isThere = waitUntil(std::chrono::seconds(20), [&] { return bool(std::ifstream(file) >> number); });
    return isThere ? number : 0;
}

} // namespace nolfa::testing
