#include "Localization/NolfaL10n.h"

#include "Platform/Locale.h"

#include <mutex>

namespace nolfa {

namespace {

std::mutex currentMutex;
NolfaLanguage currentLanguage = NolfaLanguage::system;

} // namespace

std::string_view rawValue(NolfaLanguage language)
{
    switch (language) {
    case NolfaLanguage::system:
        return "system";
    case NolfaLanguage::en:
        return "en";
    case NolfaLanguage::fr:
        return "fr";
    }
    return {};
}

std::optional<NolfaLanguage> languageFromRawValue(std::string_view text)
{
    for (const NolfaLanguage language : NolfaLanguages::allCases) {
        if (rawValue(language) == text)
            return language;
    }
    return std::nullopt;
}

std::string title(NolfaLanguage language)
{
    switch (language) {
    case NolfaLanguage::system:
        return T("System", "Système");
    case NolfaLanguage::en:
        return "English";
    case NolfaLanguage::fr:
        return "Français";
    }
    return {};
}

std::string resolvedCode(NolfaLanguage language)
{
    if (language == NolfaLanguage::system)
        return Locale::current().language == "fr" ? "fr" : "en";
    return std::string(rawValue(language));
}

namespace NolfaL10n {

NolfaLanguage current()
{
    const std::scoped_lock lock(currentMutex);
    return currentLanguage;
}

void setCurrent(NolfaLanguage language)
{
    const std::scoped_lock lock(currentMutex);
    currentLanguage = language;
}

std::vector<std::string> ocrLanguages()
{
    if (resolvedCode(current()) == "fr")
        return {"fr-FR", "en-US"};
    return {"en-US", "fr-FR"};
}

} // namespace NolfaL10n

std::string T(std::string en, std::string fr)
{
    return resolvedCode(NolfaL10n::current()) == "fr" ? std::move(fr) : std::move(en);
}

} // namespace nolfa
