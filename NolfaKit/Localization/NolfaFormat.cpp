#include "Localization/NolfaFormat.h"

#include "Platform/LocaleFormat.h"

#include <algorithm>
#include <mutex>

namespace nolfa::NolfaFormat {

namespace {

std::mutex localeMutex;
std::mutex paperMutex;
std::optional<Paper> chosenPaper;

/// Guarded by localeMutex; a function, so that it is there whichever file is initialised first.
Locale &currentLocale()
{
    static Locale locale = Locale::current();
    return locale;
}

constexpr std::array<std::string_view, 6> letterRegions{"US", "CA", "MX", "PH", "CL", "PR"};

Paper regionPaper()
{
    std::string region = locale().region;
    if (region.empty())
        region = Locale::current().region;
    return std::ranges::find(letterRegions, region) != letterRegions.end() ? Paper::usLetter : Paper::a4;
}

} // namespace

std::string_view rawValue(Paper paper)
{
    return paper == Paper::usLetter ? "usLetter" : "a4";
}

std::optional<Paper> paperFromRawValue(std::string_view text)
{
    for (const Paper paper : allPapers) {
        if (rawValue(paper) == text)
            return paper;
    }
    return std::nullopt;
}

PaperSize sizePoints(Paper paper)
{
    return paper == Paper::usLetter ? PaperSize{612, 792} : PaperSize{595, 842};
}

Locale locale()
{
    const std::scoped_lock lock(localeMutex);
    return currentLocale();
}

void setLocale(Locale locale)
{
    const std::scoped_lock lock(localeMutex);
    currentLocale() = std::move(locale);
}

Paper paper()
{
    {
        const std::scoped_lock lock(paperMutex);
        if (chosenPaper)
            return *chosenPaper;
    }
    return regionPaper();
}

void setPaper(Paper paper)
{
    const std::scoped_lock lock(paperMutex);
    chosenPaper = paper;
}

void resetPaper()
{
    const std::scoped_lock lock(paperMutex);
    chosenPaper.reset();
}

std::string fileSize(std::int64_t bytes)
{
    return LocaleFormat::byteCount(bytes, locale());
}

std::string longDate(std::chrono::system_clock::time_point date)
{
    return LocaleFormat::longDate(date, locale());
}

} // namespace nolfa::NolfaFormat
