#include "Engine/PandocDiagnostics.h"

#include "Localization/NolfaL10n.h"
#include "Platform/Unicode.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace nolfa::PandocDiagnostics {

namespace {

constexpr std::int32_t statusNotFound = 127;

bool containsAny(std::string_view text, std::initializer_list<std::string_view> patterns)
{
    return std::ranges::any_of(
        patterns, [text](std::string_view pattern) { return text.find(pattern) != std::string_view::npos; });
}

/// The length of the newline at the start of the text, or 0.
std::size_t newlineLength(std::string_view text)
{
    if (text.front() >= '\x0A' && text.front() <= '\x0D')
        return 1;
    for (const std::string_view newline : {"\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
        if (text.starts_with(newline))
            return newline.size();
    }
    return 0;
}

/// The first @p count lines that hold something, without the blanks around them.
std::vector<std::string> firstLines(std::string_view text, std::size_t count)
{
    std::vector<std::string> lines;
    const auto add = [&lines](std::string_view line) {
        if (const std::string_view trimmed = Unicode::trimmedOfBlanks(line); !trimmed.empty())
            lines.emplace_back(trimmed);
    };
    std::size_t start = 0;
    for (std::size_t index = 0; index < text.size() && lines.size() < count;) {
        const std::size_t length = newlineLength(text.substr(index));
        if (length > 0)
            add(text.substr(start, index - start));
        index += std::max<std::size_t>(length, 1);
        if (length > 0)
            start = index;
    }
    if (lines.size() < count)
        add(text.substr(start));
    return lines;
}

} // namespace

std::string summarize(std::string_view errorText, std::int32_t status)
{
    const std::string lowered = Unicode::lowercased(errorText);
    if (status == statusNotFound || containsAny(lowered, {"dyld", "command not found"}))
        return T("A bundled tool failed to start. Reinstall Nolfa.",
            "Un outil intégré n’a pas pu démarrer. Réinstallez Nolfa.");
    if (containsAny(lowered, {"unknown input format", "unknown output format"}))
        return T("Nolfa asked for an unsupported format. Please report this.",
            "Nolfa a demandé un format non pris en charge. Merci de le signaler.");
    if (containsAny(lowered, {"cannot decode byte"}))
        return T("The file is not valid UTF-8 text.", "Le fichier n’est pas un texte UTF-8 valide.");
    if (containsAny(lowered, {"could not unzip", "docx parse error", "error parsing docx", "couldn't parse docx"}))
        return T("The Word file looks damaged.", "Le fichier Word semble endommagé.");

    const std::vector<std::string> lines = firstLines(errorText, 2);
    if (lines.empty())
        return T("The conversion tool stopped without saying why.",
            "L’outil de conversion s’est arrêté sans dire pourquoi.");
    return lines.size() == 1 ? lines[0] : lines[0] + " " + lines[1];
}

} // namespace nolfa::PandocDiagnostics
