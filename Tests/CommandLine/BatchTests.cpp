// Many files in one call.

#include "Support/Documents.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

constexpr int fileCount = 200;

std::vector<std::string> linesOf(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// 200 Word files, of which every twentieth is damaged.
std::vector<std::string> manyDocuments(const TemporaryFolder &folder)
{
    const fs::path made = pandocDocument(folder.path(), "made.docx", "# Titre\n\nTexte.");
    std::vector<std::string> files;
    for (int number = 0; number < fileCount; ++number) {
        const fs::path file = folder / ("file " + std::to_string(number) + ".docx");
        fs::copy_file(made, file);
        if (number % 20 == 7)
            fs::resize_file(file, fs::file_size(file) / 2);
        files.push_back(file);
    }
    return files;
}

std::vector<std::string> commandFor(std::vector<std::string> files, const fs::path &into)
{
    std::vector<std::string> words{"convert", "--to", "markdown", "--jobs", "3", "--into", into, "--lang", "en"};
    std::ranges::move(files, std::back_inserter(words));
    return words;
}

/// A program started with its standard output in a file, in a process group of its own.
class Started {
public:
    Started(const fs::path &program, std::vector<std::string> words, const fs::path &output, const fs::path &errors)
    {
        words.insert(words.begin(), program);
        std::vector<char *> arguments;
        std::ranges::transform(words, std::back_inserter(arguments), [](std::string &word) { return word.data(); });
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        constexpr int forWriting = 0x241; // O_WRONLY | O_CREAT | O_TRUNC
        ::posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), forWriting, 0600);
        ::posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), forWriting, 0600);
        EXPECT_EQ(::posix_spawn(&pid, program.c_str(), &actions, nullptr, arguments.data(), environ), 0);
        ::posix_spawn_file_actions_destroy(&actions);
    }

    /// The exit status.
    [[nodiscard]] int wait() const
    {
        int status = 0;
        ::waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    pid_t pid = 0;
};

/// The processes whose command line mentions a folder.
std::size_t processesThatMention(const fs::path &folder)
{
    const auto all = commandLines();
    return static_cast<std::size_t>(std::ranges::count_if(
        all, [&folder](const auto &process) { return process.second.find(folder) != std::string::npos; }));
}

} // namespace

TEST(Batch, twoHundredFilesOfWhichSomeFail)
{
    const TemporaryFolder folder;
    const TemporaryFolder out;
    const ProcessResult result
        = runProgram(commandLineProgram(), commandFor(manyDocuments(folder), out.path()), {"LC_ALL=C"});
    EXPECT_EQ(result.status, 1);

    std::vector<std::string> expected;
    std::size_t failures = 0;
    for (int number = 0; number < fileCount; ++number) {
        const std::string stem = "file " + std::to_string(number);
        if (number % 20 == 7) {
            EXPECT_THAT(result.stderr, HasSubstr(stem + ".docx: Nolfa couldn't read " + stem + ".docx."));
            ++failures;
        } else {
            expected.push_back(out / (stem + ".md"));
        }
    }
    EXPECT_EQ(linesOf(result.stdout), expected);
    EXPECT_EQ(linesOf(result.stderr).size(), failures) << "no progress where there is no terminal";
    EXPECT_EQ(out.names().size(), expected.size());
}

TEST(Batch, filesOfTheSameNameIntoOneFolderAllArrive)
{
    const TemporaryFolder folder;
    const TemporaryFolder out;
    std::vector<std::string> files;
    for (int number = 0; number < 12; ++number)
        files.push_back(folder.write(std::to_string(number) + "/same.md", "Text " + std::to_string(number)));
    std::vector<std::string> words{"convert", "--to", "docx", "--jobs", "6", "--into", out.path()};
    std::ranges::copy(files, std::back_inserter(words));
    EXPECT_EQ(runProgram(commandLineProgram(), words).status, 0);
    EXPECT_EQ(out.names().size(), 12U);
    std::string all;
    for (const std::string &name : out.names())
        all += partOf(out / name, "word/document.xml");
    for (int number = 0; number < 12; ++number)
        EXPECT_THAT(all, HasSubstr("Text " + std::to_string(number) + "<"));
}

TEST(Batch, progressShowsOnATerminalOnly)
{
    const TemporaryFolder folder;
    const TemporaryFolder out;
    const fs::path first = folder.write("été.md", "x");
    const fs::path second = folder.write("b.md", "x");
    const std::string command = "'" + commandLineProgram().string() + "' convert --to docx --jobs 1 --into '"
        + out.path().string() + "' '" + first.string() + "' '" + second.string() + "'";
    // script gives the program a terminal of its own.
    const auto onTerminal = [&](const std::string &options) {
        return runProgram("/usr/bin/script", {"-qec", command + options, "/dev/null"}, {"LC_ALL=C.UTF-8"}).stdout;
    };
    const std::string shown = onTerminal("");
    EXPECT_THAT(shown, HasSubstr("\r\033[K0/2  été.md"));
    EXPECT_THAT(shown, HasSubstr("1/2  b.md"));
    EXPECT_THAT(shown, HasSubstr((out / "b.docx").string()));
    EXPECT_THAT(onTerminal(" --quiet"), ::testing::Not(HasSubstr("0/2")));
}

TEST(Batch, anInterruptionEndsWithinASecondAndLeavesNothingHalfDone)
{
    const TemporaryFolder folder;
    const TemporaryFolder out;
    const TemporaryFolder temporary;
    std::vector<std::string> files = manyDocuments(folder);
    // Word to PowerPoint goes through scratch.
    std::vector<std::string> words = commandFor(files, out.path());
    words[2] = "pptx";
    words.insert(words.begin(), {"TMPDIR=" + temporary.path().string(), commandLineProgram()});

    for (const int signal : {SIGINT, SIGTERM}) {
        const Started program("/usr/bin/env", words, folder / "stdout", folder / "stderr");
        ASSERT_TRUE(waitUntil(30s, [&] { return out.names().size() > 10; }));
        const auto asked = std::chrono::steady_clock::now();
        ::kill(program.pid, signal);
        EXPECT_EQ(program.wait(), 130);
        EXPECT_LT(std::chrono::steady_clock::now() - asked, 1s);
        EXPECT_THAT(contentOf(folder / "stderr"), HasSubstr("Interrupted: "));

        EXPECT_THAT(temporary.names(), IsEmpty()) << "scratch";
        EXPECT_EQ(processesThatMention(temporary.path()) + processesThatMention(out.path()), 0U) << "children";
        for (const std::string &name : out.names()) {
            const ProcessResult whole = runProgram("/usr/bin/unzip", {"-tqq", out / name});
            EXPECT_EQ(whole.status, 0) << name << " is not whole";
        }
        // What was printed is there, and nothing else.
        EXPECT_LE(linesOf(contentOf(folder / "stdout")).size(), out.names().size());
        for (const std::string &line : linesOf(contentOf(folder / "stdout")))
            EXPECT_TRUE(fs::exists(line)) << line;
    }
}
