#include "Check.h"

#include "Engine/Scratch.h"
#include "Engine/TextFile.h"
#include "Platform/File.h"
#include "Platform/Unicode.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const nolfa::Scratch scratch;
    const std::filesystem::path file = scratch.file("text.md");
    nolfa::File::write(file, textOf(data, size));
    const std::string text = nolfa::TextFile::read(file);
    check(nolfa::Unicode::isValidUTF8(text));
    check(nolfa::Unicode::trimmed(text).size() <= text.size());
    check(nolfa::Unicode::isValidUTF8(nolfa::Unicode::lowercased(text)));
    check(nolfa::Unicode::isValidUTF8(nolfa::Unicode::printable(textOf(data, size))));
    return 0;
}
