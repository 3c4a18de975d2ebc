#include "Check.h"

#include "Engine/PandocDiagnostics.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string sentence = nolfa::PandocDiagnostics::summarize(textOf(data, size), 1);
    check(!sentence.empty());
    check(sentence.find('\n') == std::string::npos);
    return 0;
}
