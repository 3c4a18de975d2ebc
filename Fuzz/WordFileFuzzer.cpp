#include "Check.h"

#include "Engine/ConversionError.h"
#include "Engine/Scratch.h"
#include "Engine/WordFile.h"
#include "Platform/File.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const nolfa::Scratch scratch;
    const std::filesystem::path file = scratch.file("word.docx");
    nolfa::File::write(file, textOf(data, size));
    try {
        nolfa::WordFile::requireContainer(file);
        check(textOf(data, size).starts_with("PK"));
    } catch (const nolfa::ConversionError &error) {
        check(error == nolfa::ConversionError::unreadableInput(file)
            || error == nolfa::ConversionError::passwordProtected(file));
    }
    return 0;
}
