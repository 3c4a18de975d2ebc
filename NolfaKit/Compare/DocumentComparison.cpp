#include "Compare/DocumentComparison.h"

#include "Engine/FileName.h"
#include "Localization/NolfaFormat.h"
#include "Localization/NolfaL10n.h"

#include <set>

namespace nolfa {

std::optional<std::int64_t> ComparisonSection::page() const noexcept
{
    return rightPage ? rightPage : leftPage;
}

std::string ComparisonSection::title() const
{
    if (const std::optional<std::int64_t> number = page())
        return "Page " + std::to_string(*number);
    if (heading && !heading->empty())
        return *heading;
    return T("Document", "Document");
}

std::size_t ComparisonSection::wordsAdded() const
{
    std::size_t sum = 0;
    for (const Change &change : changes)
        sum += change.wordsAdded();
    return sum;
}

std::size_t ComparisonSection::wordsRemoved() const
{
    std::size_t sum = 0;
    for (const Change &change : changes)
        sum += change.wordsRemoved();
    return sum;
}

std::string ComparedFile::name() const
{
    return FileName::display(url);
}

std::string ComparedFile::sizeText() const
{
    return NolfaFormat::fileSize(byteSize);
}

std::string ComparedFile::modifiedText() const
{
    return NolfaFormat::longDate(modifiedAt);
}

std::vector<const Change *> DocumentComparison::changes() const
{
    std::vector<const Change *> all;
    for (const ComparisonSection &section : sections) {
        for (const Change &change : section.changes)
            all.push_back(&change);
    }
    return all;
}

std::size_t DocumentComparison::pageCount() const
{
    std::set<std::int64_t> pages;
    for (const ComparisonSection &section : sections) {
        if (const std::optional<std::int64_t> page = section.page())
            pages.insert(*page);
    }
    return pages.size();
}

} // namespace nolfa
