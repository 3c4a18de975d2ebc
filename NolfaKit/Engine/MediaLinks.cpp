#include "Engine/MediaLinks.h"

#include "Platform/File.h"
#include "Platform/Unicode.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace nolfa::MediaLinks {

namespace fs = std::filesystem;

namespace {

bool needsEncoding(char c)
{
    constexpr std::string_view special = "\"#%&()<>?[\\]^`{|}";
    const auto byte = static_cast<unsigned char>(c);
    return byte <= 0x20 || byte == 0x7F || special.find(c) != std::string_view::npos;
}

void appendEncoded(std::string &result, std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        result += '%';
        result += digits[byte >> 4U];
        result += digits[byte & 0x0FU];
    }
}

struct Link {
    std::string written; ///< as pandoc wrote it
    std::string right;
};

/// The files of the folder whose links are wrong; longer ones first, so that none hides behind the start of another.
std::vector<Link> wrongLinks(const fs::path &folder)
{
    std::vector<Link> links;
    std::error_code failure;
    for (fs::recursive_directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        const std::string &path = entry->path().native();
        Link link{Unicode::repaired(path), destination(path)};
        if (!entry->is_directory() && link.written != link.right)
            links.push_back(std::move(link));
    }
    std::ranges::sort(links, std::ranges::greater(), [](const Link &link) { return link.written.size(); });
    return links;
}

bool endsDestination(std::string_view rest)
{
    return rest.starts_with(')') || rest.starts_with(" \"");
}

/// The link whose destination begins the text, if any.
const Link *linkAt(std::string_view text, const std::vector<Link> &links)
{
    const auto found = std::ranges::find_if(links, [text](const Link &link) {
        return text.starts_with(link.written) && endsDestination(text.substr(link.written.size()));
    });
    return found == links.end() ? nullptr : &*found;
}

std::string repaired(std::string_view text, const std::vector<Link> &links)
{
    constexpr std::string_view opening = "](";
    std::string result;
    while (!text.empty()) {
        const std::size_t start = text.find(opening);
        const std::size_t kept = start == std::string_view::npos ? text.size() : start + opening.size();
        result += text.substr(0, kept);
        text.remove_prefix(kept);
        if (const Link *link = linkAt(text, links)) {
            result += link->right;
            text.remove_prefix(link->written.size());
        }
    }
    return result;
}

} // namespace

std::string destination(std::string_view path)
{
    std::string result;
    while (!path.empty()) {
        const std::size_t length = Unicode::firstLength(path);
        const std::string_view character = path.substr(0, std::max<std::size_t>(length, 1));
        if (length == 0 || needsEncoding(character.front()))
            appendEncoded(result, character);
        else
            result += character;
        path.remove_prefix(character.size());
    }
    return result;
}

void repair(const fs::path &text, const fs::path &folder)
{
    const std::vector<Link> links = wrongLinks(folder);
    const std::optional<std::string> content = links.empty() ? std::nullopt : File::contents(text);
    if (content)
        File::write(text, repaired(*content, links));
}

} // namespace nolfa::MediaLinks
