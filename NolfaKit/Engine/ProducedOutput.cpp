#include "Engine/ProducedOutput.h"

#include "Engine/ConversionError.h"
#include "Platform/File.h"

namespace nolfa {

namespace fs = std::filesystem;

namespace ProducedOutput {

bool isUsable(const fs::path &output)
{
    std::error_code failure;
    if (fs::is_directory(output, failure)) {
        const fs::directory_iterator entries(output, failure);
        return !failure && entries != fs::directory_iterator();
    }
    const std::uintmax_t size = fs::file_size(output, failure);
    return !failure && size > 0;
}

void require(const fs::path &output, DocumentFormat from, DocumentFormat to)
{
    if (!isUsable(output))
        throw ConversionError::emptyResult(from, to);
}

} // namespace ProducedOutput

UnfinishedOutput::UnfinishedOutput(std::initializer_list<fs::path> paths)
{
    for (const fs::path &path : paths) {
        if (!File::isNameTaken(path))
            m_paths.push_back(path);
    }
}

UnfinishedOutput::~UnfinishedOutput()
{
    for (const fs::path &path : m_paths)
        File::removeFolder(path);
}

} // namespace nolfa
