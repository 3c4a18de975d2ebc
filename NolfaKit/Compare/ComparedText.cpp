#include "Compare/ComparedText.h"

#include "Engine/ConversionError.h"
#include "Engine/Converters/PDFToMarkdownConverter.h"
#include "Engine/FileName.h"
#include "Engine/MediaLinks.h"
#include "Engine/TextFile.h"
#include "Engine/VisionTextRecognizer.h"

namespace nolfa {

namespace fs = std::filesystem;

namespace {

std::int64_t sizeBelow(const fs::path &folder)
{
    std::int64_t sum = 0;
    std::error_code failure;
    for (fs::recursive_directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code unknown;
        if (entry->is_symlink(unknown) || !entry->is_regular_file(unknown))
            continue;
        const std::uintmax_t size = entry->file_size(unknown);
        sum += unknown ? 0 : static_cast<std::int64_t>(size);
    }
    return sum;
}

std::string readPDF(const fs::path &url, const fs::path &folder, const std::stop_token &stop)
{
    const PDFToMarkdownConverter converter({.emitPageMarkers = true}, std::make_shared<const VisionTextRecognizer>());
    const fs::path pages = folder / "pages.md";
    converter.convert(url, pages, {DocumentFormat::pdf, DocumentFormat::markdown}, stop);
    return TextFile::read(pages, stop);
}

/// Without a path that leads to extracted pictures: what is left is its end inside their folder.
std::string withoutPath(std::string text, const std::string &path)
{
    for (std::size_t at = text.find(path); at != std::string::npos; at = text.find(path, at))
        text.erase(at, path.size());
    return text;
}

std::string convert(
    const fs::path &url, const ConversionService &service, const fs::path &folder, const std::stop_token &stop)
{
    const fs::path output = service.convert(url, DocumentFormat::markdown, folder, stop);
    const fs::path media = output.parent_path() / (FileName::stem(output) + "-media/");
    return withoutPath(TextFile::read(output, stop), MediaLinks::destination(media.native()));
}

std::string markdownOf(
    const ComparedFile &file, const ConversionService &service, const fs::path &folder, const std::stop_token &stop)
{
    if (isMarkdown(file.format))
        return TextFile::read(file.url, stop);
    if (file.format == DocumentFormat::pdf)
        return readPDF(file.url, folder, stop);
    return convert(file.url, service, folder, stop);
}

} // namespace

ComparedText ComparedText::load(
    const fs::path &url, const ConversionService &service, const fs::path &folder, const std::stop_token &stop)
{
    const std::optional<DocumentFormat> format = DocumentFormats::fromURL(url);
    if (!format)
        throw ConversionError::unreadableInput(url);
    const std::optional<ConversionCapability> capability = Fidelity::capability(*format, DocumentFormat::markdown);
    ComparedFile file{
        url, *format, byteSize(url), modificationDate(url), capability ? capability->tier : FidelityTier::excellent};
    std::string markdown = markdownOf(file, service, folder, stop);
    return {std::move(file), std::move(markdown)};
}

std::int64_t ComparedText::byteSize(const fs::path &url)
{
    std::error_code failure;
    const fs::file_status status = fs::status(url, failure);
    if (fs::is_directory(status))
        return sizeBelow(url);
    const std::uintmax_t size = fs::file_size(url, failure);
    return failure ? 0 : static_cast<std::int64_t>(size);
}

std::chrono::system_clock::time_point ComparedText::modificationDate(const fs::path &url)
{
    std::error_code failure;
    const fs::file_time_type date = fs::last_write_time(url, failure);
    if (failure)
        return std::chrono::system_clock::now();
    return std::chrono::time_point_cast<std::chrono::system_clock::duration>(std::chrono::file_clock::to_sys(date));
}

} // namespace nolfa
