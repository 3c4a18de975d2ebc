#include "Platform/TextRecognitionEngine.h"

#include "Platform/EnginePool.h"
#include "Platform/Module.h"
#include "Platform/PlatformError.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <thread>
#include <utility>

namespace nolfa::TextRecognitionEngine {

namespace fs = std::filesystem;

namespace {

using MakeReader = TextLineReader *(const char *folder, const char *languages);

/// Language tags (BCP 47; the region doesn't count) and the names of the engine's data (ISO 639-2).
constexpr std::array<std::pair<std::string_view, std::string_view>, 40> names{{
    {"ar", "ara"},
    {"bg", "bul"},
    {"ca", "cat"},
    {"cs", "ces"},
    {"cy", "cym"},
    {"da", "dan"},
    {"de", "deu"},
    {"el", "ell"},
    {"en", "eng"},
    {"es", "spa"},
    {"et", "est"},
    {"eu", "eus"},
    {"fa", "fas"},
    {"fi", "fin"},
    {"fr", "fra"},
    {"ga", "gle"},
    {"he", "heb"},
    {"hi", "hin"},
    {"hr", "hrv"},
    {"hu", "hun"},
    {"id", "ind"},
    {"is", "isl"},
    {"it", "ita"},
    {"ja", "jpn"},
    {"ko", "kor"},
    {"lt", "lit"},
    {"lv", "lav"},
    {"nb", "nor"},
    {"nl", "nld"},
    {"no", "nor"},
    {"pl", "pol"},
    {"pt", "por"},
    {"ro", "ron"},
    {"ru", "rus"},
    {"sk", "slk"},
    {"sl", "slv"},
    {"sv", "swe"},
    {"tr", "tur"},
    {"uk", "ukr"},
    {"vi", "vie"},
}};

std::string lowerCase(std::string text)
{
    std::ranges::transform(
        text, text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/// Empty for a language that has no data anywhere.
std::string_view engineLanguage(const std::string &tag)
{
    const std::string whole = lowerCase(tag);
    if (whole.starts_with("zh"))
        return whole.find("hant") != std::string::npos || whole == "zh-tw" || whole == "zh-hk" ? "chi_tra" : "chi_sim";
    const std::string language = whole.substr(0, whole.find_first_of("-_"));
    const auto *const found = std::ranges::find(names, std::string_view(language), &decltype(names)::value_type::first);
    return found == names.end() ? std::string_view() : found->second;
}

bool holdsData(const fs::path &folder)
{
    std::error_code failure;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder, failure)) {
        if (entry.path().extension() == ".traineddata")
            return true;
    }
    return false;
}

/// An engine keeps a core busy and 50 to 100 MB: as many as there are cores, within reason.
std::size_t mostEngines()
{
    constexpr unsigned int least = 2;
    constexpr unsigned int most = 8;
    return std::clamp(std::thread::hardware_concurrency(), least, most);
}

/// Starting an engine takes as long as reading a quarter of a page. Who has less to read waits for an engine at work.
std::chrono::milliseconds patienceFor(const Bitmap &image)
{
    constexpr std::size_t quarterPage = 1'200'000;
    const std::size_t pixels = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    return pixels < quarterPage ? std::chrono::seconds(5) : std::chrono::seconds(0);
}

EnginePool<TextLineReader> &pool()
{
    // Never destroyed: at exit a thread may still be reading.
    static auto *const engines = new EnginePool<TextLineReader>(mostEngines());
    return *engines;
}

std::unique_ptr<TextLineReader> makeReader(const fs::path &folder, const std::string &languages)
{
    static MakeReader *const make
        = reinterpret_cast<MakeReader *>(Module::entry("NolfaKitTesseract", "nolfaMakeTextLineReader"));
    return std::unique_ptr<TextLineReader>(make(folder.c_str(), languages.c_str()));
}

} // namespace

fs::path dataFolder()
{
    std::vector<fs::path> candidates{
        "/usr/share/tesseract-ocr/5/tessdata", "/usr/share/tessdata", "/usr/local/share/tessdata"};
    if (const char *chosen = std::getenv("TESSDATA_PREFIX"); chosen != nullptr && *chosen != '\0')
        candidates = {chosen, fs::path(chosen) / "tessdata"};
    for (const fs::path &folder : candidates) {
        if (holdsData(folder))
            return folder;
    }
    throw PlatformError("no data for text recognition in " + candidates.front().string());
}

std::string engineLanguages(const std::vector<std::string> &languages, const fs::path &folder)
{
    std::vector<std::string_view> chosen;
    std::string joined;
    for (const std::string &tag : languages) {
        const std::string_view name = engineLanguage(tag);
        std::error_code ignored;
        const bool isKnown = !name.empty() && fs::exists(folder / (std::string(name) + ".traineddata"), ignored);
        if (!isKnown || std::ranges::find(chosen, name) != chosen.end())
            continue;
        chosen.push_back(name);
        joined.append(joined.empty() ? "" : "+").append(name);
    }
    if (joined.empty())
        throw PlatformError("no data for text recognition in any of the languages wanted, in " + folder.string());
    return joined;
}

std::vector<RecognizedLine> read(const Bitmap &image, const std::vector<std::string> &languages,
    const TextLineReader::Deadline &deadline, const std::stop_token &stop)
{
    throwIfStopped(stop);
    if (image.width < 1 || image.height < 1)
        return {};
    const fs::path folder = dataFolder();
    const std::string wanted = engineLanguages(languages, folder);
    const auto reader = pool().lease(
        folder.string() + "\n" + wanted, patienceFor(image), stop, [&] { return makeReader(folder, wanted); });
    return reader->read(image, deadline, stop);
}

} // namespace nolfa::TextRecognitionEngine
