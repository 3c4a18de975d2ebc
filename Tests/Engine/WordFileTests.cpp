#include "Engine/WordFile.h"

#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::string_literals;
namespace fs = std::filesystem;

namespace {

const std::string compoundStart = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
const std::string encryptedStream = "E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0"s;
const std::string zipStart = "PK\x03\x04";
const std::string zipEnd = "PK\x05\x06" + std::string(18, '\0');

void expectUnreadable(const fs::path &file)
{
    expectError(ConversionError::unreadableInput(file), [&] { WordFile::requireContainer(file); });
}

void expectPasswordProtected(const fs::path &file)
{
    expectError(ConversionError::passwordProtected(file), [&] { WordFile::requireContainer(file); });
}

} // namespace

TEST(WordFile, acceptsWholeArchivesAlsoWithALongComment)
{
    const TemporaryFolder folder;
    EXPECT_NO_THROW(WordFile::requireContainer(folder.write("a.docx", zipStart + "content" + zipEnd)));
    EXPECT_NO_THROW(WordFile::requireContainer(folder.write("b.docx", zipStart + zipEnd + std::string(65535, 'c'))));
}

TEST(WordFile, refusesWhatIsNoWholeArchive)
{
    const TemporaryFolder folder;
    expectUnreadable(folder / "missing.docx");
    expectUnreadable(folder.write("empty.docx", ""));
    expectUnreadable(folder.write("text.docx", "Dear reader"));
    expectUnreadable(folder.write("cut.docx", zipStart + std::string(200'000, 'x')));
    expectUnreadable(folder.write("far.docx", zipStart + zipEnd + std::string(65536, 'c')));
    expectUnreadable(folder.write("tail.docx", "x" + zipStart + zipEnd));
    fs::create_directory(folder / "folder.docx");
    expectUnreadable(folder / "folder.docx");
}

TEST(WordFile, knowsEncryptedDocumentsWhereverTheyKeepTheirFolder)
{
    const TemporaryFolder folder;
    expectPasswordProtected(folder.write("a.docx", compoundStart + std::string(3000, 'x') + encryptedStream + "rest"));
    constexpr std::size_t chunk = 1U << 20U;
    for (const std::size_t where : {chunk - 40, chunk - 20, chunk - 8, chunk, 2 * chunk}) {
        const std::string far = compoundStart + std::string(where - compoundStart.size(), 'x') + encryptedStream;
        expectPasswordProtected(folder.write("far.docx", far));
    }
    expectUnreadable(folder.write("old.docx", compoundStart + std::string(3000, 'x')));
    expectUnreadable(folder.write("mere.docx", compoundStart));
}
