#include "Engine/Converters/PDFToMarkdownConverter.h"

#include "Engine/ConversionError.h"
#include "Engine/PDFPageMarkdown.h"
#include "Engine/PDFTextExtraction.h"
#include "Engine/PDFTextPages.h"
#include "Engine/PageImageSource.h"
#include "Engine/ProducedOutput.h"
#include "Engine/TimeLimit.h"
#include "Localization/NolfaL10n.h"
#include "Platform/File.h"
#include "Platform/Unicode.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

namespace nolfa {

namespace {

/// Pixels a point: 216 dots per inch.
constexpr double recognitionScale = 3.0;

std::string unreadablePage(std::size_t index)
{
    const std::string number = std::to_string(index + 1);
    return T("_(page " + number + " could not be read)_", "_(page " + number + " illisible)_");
}

/// Recognises the pages of one document. Shared by the threads that do so.
class PageRecognition {
public:
    PageRecognition(const PDFToMarkdownConverter::Options &options, const TextRecognizing &recognizer,
        PDFDocument document, const std::vector<std::size_t> &pages, std::vector<std::string> &contents,
        const std::stop_token &stop)
        : m_timeout(options.perPageOCRTimeout)
        , m_languages(options.recognitionLanguages.value_or(NolfaL10n::ocrLanguages()))
        , m_recognizer(recognizer)
        , m_source(std::move(document))
        , m_pages(pages)
        , m_contents(contents)
        , m_stop(stop)
    {
    }

    /// Works on one page after the other, in their order, until none is left.
    void run() noexcept
    {
        try {
            for (std::size_t next = m_next++; next < m_pages.size(); next = m_next++)
                m_contents[m_pages[next]] = text(m_pages[next]);
        } catch (...) {
            const std::scoped_lock lock(m_mutex);
            m_failure = std::current_exception();
        }
    }

    /// @throws what ended the work early
    void requireDone() const
    {
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    std::string text(std::size_t page)
    {
        try {
            return withTimeout(m_timeout, T("text recognition", "reconnaissance de texte"), m_stop,
                [this, page](const std::stop_token &stop) {
                    const std::optional<Bitmap> image = m_source.image(page, recognitionScale, stop);
                    return image ? PDFTextExtraction::markdown(m_recognizer.recognize(*image, m_languages, stop))
                                 : std::string();
                });
        } catch (...) {
            if (m_stop.stop_requested())
                throw;
            return unreadablePage(page);
        }
    }

    double m_timeout;
    std::vector<std::string> m_languages;
    const TextRecognizing &m_recognizer;
    PageImageSource m_source;
    const std::vector<std::size_t> &m_pages;
    std::vector<std::string> &m_contents;
    const std::stop_token &m_stop;
    std::atomic<std::size_t> m_next = 0;
    std::mutex m_mutex;
    std::exception_ptr m_failure;
};

} // namespace

PDFToMarkdownConverter::PDFToMarkdownConverter(Options options, std::shared_ptr<const TextRecognizing> recognizer)
    : m_options(std::move(options))
    , m_recognizer(std::move(recognizer))
{
}

std::vector<ConversionPair> PDFToMarkdownConverter::pairs() const
{
    return {{DocumentFormat::pdf, DocumentFormat::markdown}};
}

void PDFToMarkdownConverter::convert(const std::filesystem::path &input, const std::filesystem::path &output,
    ConversionPair /*pair*/, std::stop_token stop) const
{
    std::optional<PDFDocument> document = PDFDocument::open(input);
    if (!document)
        throw ConversionError::unreadableInput(input);
    if (document->isLocked())
        throw ConversionError::passwordProtected(input);
    const std::vector<std::string> pages = pageContents(std::move(*document), stop);
    if (std::ranges::all_of(pages, [](const std::string &page) { return Unicode::trimmed(page).empty(); }))
        throw ConversionError::emptyResult(DocumentFormat::pdf, DocumentFormat::markdown);
    using PDFPageMarkdown::PageMarkers;
    UnfinishedOutput unfinished({output});
    File::write(
        output, PDFPageMarkdown::assemble(pages, m_options.emitPageMarkers ? PageMarkers::yes : PageMarkers::no));
    unfinished.keep();
}

std::string PDFToMarkdownConverter::pageMarker(std::size_t number)
{
    return PDFPageMarkdown::pageMarker(number);
}

std::vector<std::string> PDFToMarkdownConverter::pageContents(PDFDocument document, const std::stop_token &stop) const
{
    const std::vector<std::vector<PDFTextLine>> pages = PDFTextPages::read(document, stop);
    std::vector<std::size_t> counts;
    counts.reserve(pages.size());
    for (const std::vector<PDFTextLine> &lines : pages)
        counts.push_back(PDFPageMarkdown::characters(lines));
    const std::size_t median = PDFPageMarkdown::medianCharacters(counts);

    std::vector<std::size_t> scanned;
    std::vector<const std::vector<PDFTextLine> *> readable(pages.size());
    for (std::size_t page = 0; page < pages.size(); ++page) {
        if (PDFPageMarkdown::needsRecognition(
                counts[page], median, {m_options.minCharactersPerPage, m_options.thinPageRatio}))
            scanned.push_back(page);
        else
            readable[page] = &pages[page];
    }
    std::vector<const std::vector<PDFTextLine> *> texts = readable;
    std::erase(texts, nullptr);
    const double bodySize = PDFPageMarkdown::bodySize(texts);

    std::vector<std::string> contents(pages.size());
    for (std::size_t page = 0; page < pages.size(); ++page) {
        if (readable[page] != nullptr)
            contents[page] = PDFPageMarkdown::markdown(*readable[page], bodySize);
    }
    if (!scanned.empty())
        recognize(std::move(document), scanned, contents, stop);
    return contents;
}

void PDFToMarkdownConverter::recognize(PDFDocument document, const std::vector<std::size_t> &scanned,
    std::vector<std::string> &contents, const std::stop_token &stop) const
{
    PageRecognition recognition(m_options, *m_recognizer, std::move(document), scanned, contents, stop);
    const auto width = static_cast<std::size_t>(std::max(m_options.maxConcurrentOCRPages, 1));
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < std::min(width, scanned.size()); ++i)
            threads.emplace_back([&recognition] { recognition.run(); });
    }
    recognition.requireDone();
}

} // namespace nolfa
