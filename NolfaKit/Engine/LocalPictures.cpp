#include "Engine/LocalPictures.h"

#include "Engine/DataURI.h"
#include "Engine/HTMLToken.h"
#include "Platform/File.h"

#include <algorithm>

namespace nolfa::LocalPictures {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t mebibyte = 1U << 20U;
constexpr std::uintmax_t largestPicture = 64 * mebibyte;
constexpr std::uintmax_t largestTotal = 96 * mebibyte;

/// "http:", "data:"; a colon behind a slash is part of a name.
bool hasScheme(std::string_view address)
{
    const std::size_t colon = address.find(':');
    return address.starts_with("//") || (colon != std::string_view::npos && address.find('/') > colon);
}

fs::path fileOf(std::string_view address, const fs::path &folder)
{
    constexpr std::string_view scheme = "file://";
    if (address.starts_with(scheme))
        return DataURI::percentDecoded(address.substr(scheme.size()));
    if (address.empty() || hasScheme(address))
        return {};
    return folder / DataURI::percentDecoded(address);
}

class Embedder {
public:
    explicit Embedder(const fs::path &folder)
        : m_folder(folder)
    {
    }

    void append(const HTMLToken &token, std::string &html)
    {
        const bool isPicture = token.kind == HTMLToken::Kind::opening && token.name == "img";
        const std::string address = isPicture ? token.attribute("src").value_or("") : std::string();
        const std::optional<std::string> bytes = isPicture ? read(fileOf(address, m_folder)) : std::nullopt;
        if (!bytes) {
            html += token.source;
            return;
        }
        // The first of two attributes of a name counts.
        html.append("<img src=\"").append(DataURI::encoded(*bytes)).append("\" ").append(token.attributes).append(">");
    }

private:
    std::optional<std::string> read(const fs::path &file)
    {
        std::error_code failure;
        if (file.empty() || !fs::is_regular_file(file, failure))
            return std::nullopt;
        const std::uintmax_t size = fs::file_size(file, failure);
        if (failure || size > largestPicture || m_total + size > largestTotal)
            return std::nullopt;
        m_total += size;
        return File::contents(file);
    }

    const fs::path &m_folder;
    std::uintmax_t m_total = 0;
};

} // namespace

std::string embedded(std::string_view html, const fs::path &folder)
{
    std::string result;
    result.reserve(html.size());
    Embedder embedder(folder);
    while (!html.empty())
        embedder.append(HTMLToken::next(html), result);
    return result;
}

} // namespace nolfa::LocalPictures
