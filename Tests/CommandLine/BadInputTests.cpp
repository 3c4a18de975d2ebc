// Whatever is wrong with a file or a folder: a sentence, status 1, and nothing else changed.

#include "Support/Documents.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <unistd.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

namespace {

class BadInputTest : public ::testing::Test {
protected:
    /// Runs the program as a user who must obey permissions, whoever runs the test.
    ProcessResult convert(const fs::path &input, const std::string &target, const fs::path &into)
    {
        std::vector<std::string> words{commandLineProgram(), "convert", input, "--to", target, "--into", into};
        if (::geteuid() == 0)
            words.insert(words.begin(), {"/usr/bin/setpriv", "--bounding-set=-dac_override,-dac_read_search"});
        fs::path program = words.front();
        words.erase(words.begin());
        return runProgram(program, words, {"LC_ALL=C", "TMPDIR=" + temporary.path().string()});
    }

    /// One failure, told in one line that begins with the name, and no trace of it anywhere.
    void expectRefusal(const ProcessResult &result, const std::string &sentence)
    {
        EXPECT_EQ(result, (ProcessResult{1, "", sentence + "\n"}));
        EXPECT_THAT(out.names(), ElementsAre());
        EXPECT_THAT(temporary.names(), ElementsAre()) << "scratch is left";
    }

    void expectUnreadable(const fs::path &input, const std::string &target = "markdown")
    {
        const std::string name = input.filename();
        expectRefusal(convert(input, target, out.path()),
            name + ": Nolfa couldn't read " + name + ". Check that the file is still there and is not damaged.");
    }

    /// Runs a shell script that may mount, with the mounts for its eyes only.
    static ProcessResult runMounting(const std::string &script, const std::vector<std::string> &arguments)
    {
        std::vector<std::string> words{"--mount", "sh", "-c", script, "sh"};
        if (::geteuid() != 0)
            words.insert(words.begin(), {"--user", "--map-root-user"});
        words.insert(words.end(), arguments.begin(), arguments.end());
        return runProgram("/usr/bin/unshare", words, {"LC_ALL=C"});
    }

    TemporaryFolder folder;
    TemporaryFolder out;
    TemporaryFolder temporary;
};

} // namespace

TEST_F(BadInputTest, aMissingFile)
{
    expectUnreadable(folder / "missing.docx");
    expectUnreadable(folder / "missing.md", "docx");
}

TEST_F(BadInputTest, aFolderNamedLikeAFile)
{
    fs::create_directory(folder / "x.docx");
    expectUnreadable(folder / "x.docx");
    fs::create_directory(folder / "x.md");
    expectUnreadable(folder / "x.md", "pptx");
}

TEST_F(BadInputTest, anEmptyFile)
{
    expectUnreadable(folder.write("x.docx", ""));
    expectUnreadable(folder / "x.docx", "pptx");
}

TEST_F(BadInputTest, aFileThatWasCutOff)
{
    const fs::path file = reportDocx(folder.path());
    const std::uintmax_t size = fs::file_size(file);
    for (const std::uintmax_t left : {size - 1, size / 2, std::uintmax_t{100}, std::uintmax_t{3}}) {
        fs::resize_file(file, left);
        if (left == size - 1)
            continue; // the last byte of an archive may be missing; the test below has that
        expectUnreadable(file);
    }
}

TEST_F(BadInputTest, anArchiveWithRubbishInside)
{
    const fs::path file = reportDocx(folder.path());
    std::string bytes = contentOf(file);
    for (std::size_t index = 200; index < bytes.size() - 2000; index += 3)
        bytes[index] = '!';
    folder.write("report.docx", bytes);
    const ProcessResult result = convert(file, "markdown", out.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.stdout, "");
    EXPECT_THAT(result.stderr, MatchesRegex("report.docx: The conversion failed. [^\n]+\n"));
    EXPECT_THAT(out.names(), ElementsAre());
}

TEST_F(BadInputTest, aTextUnderAWordFilesName)
{
    expectUnreadable(folder.write("letter.docx", "Dear reader,\n"));
}

TEST_F(BadInputTest, aFileThatMayNotBeRead)
{
    const fs::path file = folder.write("secret.md", "x");
    fs::permissions(file, fs::perms::none);
    expectUnreadable(file, "docx");
    fs::permissions(reportDocx(folder.path()), fs::perms::none);
    expectUnreadable(folder / "report.docx");
}

TEST_F(BadInputTest, aFolderThatMayNotBeWrittenTo)
{
    const fs::path file = reportDocx(folder.path());
    fs::permissions(out.path(), fs::perms::owner_read | fs::perms::owner_exec);
    for (const char *target : {"markdown", "pptx"}) {
        const ProcessResult result = convert(file, target, out.path());
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.stdout, "");
        EXPECT_THAT(result.stderr, MatchesRegex("report.docx: The conversion failed. [^\n]+\n"));
        EXPECT_THAT(out.names(), ElementsAre());
        EXPECT_THAT(temporary.names(), ElementsAre());
    }
}

TEST_F(BadInputTest, aFullDisk)
{
    // A file system of 64 KiB, mounted where only this command sees it.
    std::string text = "# Text\n\n";
    for (int line = 0; line < 6000; ++line)
        text += "Line " + std::to_string(line) + " of a text.\n\n";
    const fs::path file = pandocDocument(folder.path(), "long.docx", text);
    const fs::path disk = folder / "disk";
    fs::create_directory(disk);
    const std::string script
        = "mount -t tmpfs -o size=64k tmpfs \"$1\" && { \"$2\" convert \"$3\" --to markdown --into "
          "\"$1\"; echo \"status $?\"; ls -A \"$1\"; }";
    const ProcessResult result = runMounting(script, {disk, commandLineProgram(), file});
    EXPECT_EQ(result.stdout, "status 1\n") << result.stderr;
    EXPECT_THAT(result.stderr, MatchesRegex("long.docx: The conversion failed. [^\n]*[Nn]o space left[^\n]*\n"));
}

TEST_F(BadInputTest, aFullTemporaryDisk)
{
    const fs::path file = reportDocx(folder.path());
    const fs::path disk = folder / "disk";
    fs::create_directory(disk);
    const std::string script
        = "mount -t tmpfs -o nr_inodes=1 tmpfs \"$1\" && TMPDIR=$1 \"$2\" convert \"$3\" --to pptx; echo \"status $?\"";
    const ProcessResult result = runMounting(script, {disk, commandLineProgram(), file});
    EXPECT_EQ(result.stdout, "status 1\n");
    EXPECT_EQ(result.stderr, "report.docx: The disk is full. Free some space and try again.\n");
    EXPECT_FALSE(fs::exists(folder / "report.pptx"));
}

TEST_F(BadInputTest, namesOfEveryKindAreToldInOneLine)
{
    expectRefusal(convert(folder / "line\nfeed.docx", "markdown", out.path()),
        "line?feed.docx: Nolfa couldn't read line?feed.docx. Check that the file is still there and is not damaged.");
    expectRefusal(convert(folder / "caf\xE9.docx", "markdown", out.path()),
        "caf\uFFFD.docx: Nolfa couldn't read caf\uFFFD.docx. Check that the file is still there and is not damaged.");
    expectUnreadable(folder / "it's \"quoted\" -x.docx");
}

TEST_F(BadInputTest, aNameThatLooksLikeAnOption)
{
    const ProcessResult result = runProgram(
        commandLineProgram(), {"convert", "--to", "markdown", "--", "-x.docx"}, {"LC_ALL=C"}, folder.path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.stderr, StartsWith("-x.docx: Nolfa couldn't read -x.docx."));
}

TEST_F(BadInputTest, aFormatThatCannotBeMade)
{
    expectRefusal(convert(folder.write("x.md", "x"), "gdoc", out.path()),
        "x.md: Nolfa can't convert Markdown to Google Doc. Choose another format for this file.");
}
