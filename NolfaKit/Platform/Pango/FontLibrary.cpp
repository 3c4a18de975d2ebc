#include "Platform/Pango/FontLibrary.h"

#include "Platform/PlatformError.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <mutex>
#include <tuple>

namespace nolfa::FontLibrary {

namespace {

using FontSet = std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)>;

std::mutex mutex;
Fonts known; ///< guarded
std::filesystem::path bundleFolder; ///< guarded

/// Coloured fonts are pictures: they take no colour of ours, and weigh megabytes. Bitmaps have one size.
constexpr const char *rules = R"(<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig><selectfont>
<rejectfont><pattern><patelt name="color"><bool>true</bool></patelt></pattern></rejectfont>
<rejectfont><pattern><patelt name="outline"><bool>false</bool></patelt></pattern></rejectfont>
</selectfont></fontconfig>)";

const FcChar8 *bytes(const char *text)
{
    return reinterpret_cast<const FcChar8 *>(text);
}

std::string textOf(const FcPattern *pattern, const char *object)
{
    FcChar8 *value = nullptr;
    const bool isThere = FcPatternGetString(pattern, object, 0, &value) == FcResultMatch;
    return isThere ? reinterpret_cast<const char *>(value) : "";
}

int numberOf(const FcPattern *pattern, const char *object, int absent)
{
    int value = 0;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : absent;
}

/// What can be set and embedded. Type 1 fonts can't be set by HarfBuzz; a variable font stands in the list with each of
/// its named instances too, and those are what counts.
bool isUsable(const FcPattern *pattern)
{
    FcBool isVariable = FcFalse;
    FcPatternGetBool(pattern, FC_VARIABLE, 0, &isVariable);
    const std::string format = textOf(pattern, FC_FONTFORMAT);
    return isVariable == FcFalse && (format == "TrueType" || format == "CFF");
}

Fonts load()
{
    Fonts fonts(FcInitLoadConfig(), [](FcConfig *config) {
        if (config != nullptr)
            FcConfigDestroy(config);
    });
    if (!fonts || FcConfigParseAndLoadFromMemory(fonts.get(), bytes(rules), FcTrue) == FcFalse
        || FcConfigBuildFonts(fonts.get()) == FcFalse)
        throw PlatformError("The machine's fonts can't be listed.");
    // A bundle without fonts is no reason to fail: Helvetica takes their place.
    FcConfigAppFontAddDir(fonts.get(), bytes(bundleFolder.c_str()));
    return fonts;
}

/// How far a face is from its family's regular one. Compared member by member.
using Distance = std::tuple<int, int, int, std::string>;

Distance distanceFromRegular(const FcPattern *pattern)
{
    return {numberOf(pattern, FC_SLANT, FC_SLANT_ROMAN),
        std::abs(numberOf(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR) - FC_WEIGHT_REGULAR),
        std::abs(numberOf(pattern, FC_WIDTH, FC_WIDTH_NORMAL) - FC_WIDTH_NORMAL), textOf(pattern, FC_POSTSCRIPT_NAME)};
}

} // namespace

void useFolder(const std::filesystem::path &folder)
{
    const std::scoped_lock lock(mutex);
    if (bundleFolder.empty())
        bundleFolder = folder;
}

Fonts current()
{
    const std::scoped_lock lock(mutex);
    if (!known || FcConfigUptoDate(known.get()) == FcFalse)
        known = load();
    return known;
}

Pattern find(const Fonts &fonts, std::string_view postScriptName)
{
    for (const FcSetName name : {FcSetApplication, FcSetSystem}) {
        const FcFontSet *const set = FcConfigGetFonts(fonts.get(), name);
        for (int index = 0; set != nullptr && index < set->nfont; ++index) {
            FcPattern *const font = set->fonts[index];
            if (isUsable(font) && textOf(font, FC_POSTSCRIPT_NAME) == postScriptName)
                return {FcPatternDuplicate(font), FcPatternDestroy};
        }
    }
    return {nullptr, FcPatternDestroy};
}

bool hasFont(std::string_view postScriptName)
{
    return !postScriptName.empty() && find(current(), postScriptName) != nullptr;
}

std::optional<std::string> substitute(std::string_view family)
{
    const Fonts fonts = current();
    const Pattern wanted(FcPatternCreate(), FcPatternDestroy);
    FcPatternAddString(wanted.get(), FC_FAMILY, bytes(std::string(family).c_str()));
    FcConfigSubstitute(fonts.get(), wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultMatch;
    const FontSet sorted(FcFontSort(fonts.get(), wanted.get(), FcFalse, nullptr, &result), FcFontSetDestroy);
    for (int index = 0; sorted && index < sorted->nfont; ++index) {
        const FcPattern *const font = sorted->fonts[index];
        if (std::string name = textOf(font, FC_POSTSCRIPT_NAME); isUsable(font) && !name.empty())
            return name;
    }
    return std::nullopt;
}

std::vector<FontFamily> families()
{
    const Fonts fonts = current();
    std::map<std::string, std::map<Distance, std::string>> found;
    const FcFontSet *const set = FcConfigGetFonts(fonts.get(), FcSetSystem);
    for (int index = 0; set != nullptr && index < set->nfont; ++index) {
        const FcPattern *const font = set->fonts[index];
        const std::string family = textOf(font, FC_FAMILY);
        if (isUsable(font) && !family.empty())
            found[family].emplace(distanceFromRegular(font), textOf(font, FC_POSTSCRIPT_NAME));
    }
    std::vector<FontFamily> result;
    for (const auto &[family, members] : found) {
        FontFamily &entry = result.emplace_back(FontFamily{family, {}});
        for (const auto &[distance, name] : members) {
            if (!name.empty())
                entry.members.push_back(name);
        }
    }
    return result;
}

} // namespace nolfa::FontLibrary
