#include "WatermarkCommand.h"

#include "Engine/ErrorMessage.h"
#include "Engine/FileName.h"
#include "Platform/Unicode.h"
#include "Watermark/WatermarkRenderer.h"

#include <iostream>

namespace nolfa::CommandLine {

ExitStatus runWatermark(const WatermarkArguments &arguments, std::ostream &out, const std::stop_token &stop)
{
    try {
        WatermarkRenderer::render(arguments.input, arguments.output, arguments.spec, stop);
    } catch (const std::exception &error) {
        const std::string sentence = FileName::display(arguments.input) + ": " + ErrorMessage::sentence(error);
        std::cerr << Unicode::printable(sentence) << '\n';
        return stop.stop_requested() ? ExitStatus::interrupted : ExitStatus::documentFailed;
    }
    out << arguments.output.native() << std::endl;
    return out.good() ? ExitStatus::success : ExitStatus::documentFailed;
}

} // namespace nolfa::CommandLine
