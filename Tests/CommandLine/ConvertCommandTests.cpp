#include "ConvertCommand.h"

#include "Engine/ConversionError.h"
#include "Support/Scopes.h"
#include "Support/StubConverter.h"
#include "Support/TemporaryFolder.h"

#include <atomic>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

using namespace nolfa;
using namespace nolfa::CommandLine;
using namespace nolfa::testing;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

class ConvertCommandTest : public ::testing::Test {
protected:
    /// Converts a0.md to a<count - 1>.md, with @p work for each.
    ExitStatus run(std::size_t count, unsigned jobs, StubConverter::Work work)
    {
        const ConversionService service({std::make_shared<StubConverter>(
            std::vector<ConversionPair>{{DocumentFormat::markdown, DocumentFormat::docx}}, std::move(work))});
        ConvertArguments arguments{.target = DocumentFormat::docx, .jobs = jobs};
        for (std::size_t index = 0; index < count; ++index)
            arguments.inputs.push_back(folder / ("a" + std::to_string(index) + ".md"));
        ::testing::internal::CaptureStderr();
        const ExitStatus status = runConvert(service, arguments, false, out, source.get_token());
        errors = ::testing::internal::GetCapturedStderr();
        return status;
    }

    LanguageScope language{NolfaLanguage::en};
    TemporaryFolder folder;
    std::stop_source source;
    std::ostringstream out;
    std::string errors;
};

/// The number in a stub input's name.
int numberOf(const fs::path &input)
{
    return std::stoi(input.stem().string().substr(1));
}

} // namespace

TEST_F(ConvertCommandTest, printsOutputsInTheOrderOfInputsWhateverEndsFirst)
{
    const ExitStatus status
        = run(8, 4, [](const fs::path &input, const fs::path &output, ConversionPair, std::stop_token) {
              std::this_thread::sleep_for(5ms * (8 - numberOf(input)));
              std::ofstream(output) << "x";
          });
    EXPECT_EQ(status, ExitStatus::success);
    std::string expected;
    for (int index = 0; index < 8; ++index)
        expected += (folder / ("a" + std::to_string(index) + ".docx")).string() + "\n";
    EXPECT_EQ(out.str(), expected);
    EXPECT_EQ(errors, "");
}

TEST_F(ConvertCommandTest, failuresDoNotStopTheRest)
{
    const ExitStatus status
        = run(4, 1, [](const fs::path &input, const fs::path &output, ConversionPair, std::stop_token) {
              if (numberOf(input) % 2 == 1)
                  throw ConversionError::timedOut("pandoc");
              std::ofstream(output) << "x";
          });
    EXPECT_EQ(status, ExitStatus::documentFailed);
    EXPECT_EQ(out.str(), (folder / "a0.docx").string() + "\n" + (folder / "a2.docx").string() + "\n");
    EXPECT_EQ(errors,
        "a1.md: The pandoc step took too long and was stopped. Try again, or convert a smaller file.\n"
        "a3.md: The pandoc step took too long and was stopped. Try again, or convert a smaller file.\n");
}

TEST_F(ConvertCommandTest, runsAsManyAtOnceAsItWasTold)
{
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    run(12, 3, [&](const fs::path &, const fs::path &output, ConversionPair, std::stop_token) {
        const int now = ++running;
        for (int seen = most; seen < now && !most.compare_exchange_weak(seen, now);) { }
        std::this_thread::sleep_for(10ms);
        --running;
        std::ofstream(output) << "x";
    });
    EXPECT_EQ(most, 3);
}

TEST_F(ConvertCommandTest, anInterruptionStartsNothingMoreAndSaysSoOnce)
{
    std::atomic<int> started = 0;
    const ExitStatus status
        = run(50, 2, [&](const fs::path &, const fs::path &output, ConversionPair, std::stop_token stop) {
              if (++started == 5)
                  source.request_stop();
              if (stop.stop_requested())
                  throw ConversionError::cancelled();
              std::ofstream(output) << "x";
          });
    EXPECT_EQ(status, ExitStatus::interrupted);
    EXPECT_LE(started, 7);
    EXPECT_TRUE(errors.starts_with("Interrupted: ") && errors.ends_with(" of 50 files were converted.\n")) << errors;
}

TEST_F(ConvertCommandTest, sentencesAreOneSafeLineEach)
{
    const ExitStatus status = run(1, 1, [](const fs::path &, const fs::path &, ConversionPair, std::stop_token) {
        throw ConversionError::engineFailure("two\nlines \x1B[31m");
    });
    EXPECT_EQ(status, ExitStatus::documentFailed);
    EXPECT_EQ(errors, "a0.md: The conversion failed. two?lines ?[31m\n");
}
