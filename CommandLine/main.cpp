#include "Arguments.h"
#include "CompareCommand.h"
#include "ConvertCommand.h"
#include "Engine/ErrorMessage.h"
#include "Engine/NolfaEngine.h"
#include "FormatsCommand.h"
#include "Platform/InterruptSignals.h"
#include "Platform/Terminal.h"
#include "Platform/Unicode.h"
#include "WatermarkCommand.h"

#include <csignal>
#include <iostream>

namespace {

using namespace nolfa;
using namespace nolfa::CommandLine;

/// As the window does it: the region stays the machine's, only the language changes.
void applyLanguage(NolfaLanguage language)
{
    NolfaL10n::setCurrent(language);
    Locale locale = Locale::current();
    if (language != NolfaLanguage::system)
        locale.language = resolvedCode(language);
    NolfaFormat::setLocale(std::move(locale));
}

ExitStatus run(const std::vector<std::string> &words, const InterruptSignals &signals)
{
    applyLanguage(languageIn(words));
    const Arguments arguments = parse(words);
    if (arguments.paper)
        NolfaFormat::setPaper(*arguments.paper);
    if (const auto *print = std::get_if<PrintArguments>(&arguments.verb)) {
        std::cout << print->text << std::flush;
        return ExitStatus::success;
    }
    if (const auto *watermark = std::get_if<WatermarkArguments>(&arguments.verb))
        return runWatermark(*watermark, std::cout, signals.token());
    const ConversionService service = NolfaEngine::makeService(Bundle::main());
    if (const auto *formats = std::get_if<FormatsArguments>(&arguments.verb))
        return runFormats(service, *formats, std::cout);
    if (const auto *compare = std::get_if<CompareArguments>(&arguments.verb))
        return runCompare(service, *compare, std::cout, signals.token());
    const bool showsProgress = !arguments.isQuiet && Terminal::isErrorTerminal();
    return runConvert(service, std::get<ConvertArguments>(arguments.verb), showsProgress, std::cout, signals.token());
}

void say(const std::string &sentence)
{
    std::cerr << Unicode::printable(sentence) << '\n';
}

} // namespace

int main(int argc, char **argv)
{
    // A reader of our output that goes away must not take the outputs and the scratch with it.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const InterruptSignals signals;
        return run(std::vector<std::string>(argv + 1, argv + argc), signals);
    } catch (const UsageError &error) {
        say(error.what());
        return ExitStatus::wrongUsage;
    } catch (const std::exception &error) {
        say(ErrorMessage::sentence(error));
        return ExitStatus::documentFailed;
    }
}
