#include "Engine/PDFTextPages.h"

#include "Engine/ReadingLimits.h"
#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

namespace nolfa::PDFTextPages {

namespace {

/// Pages that a thread takes at a time: neighbours share what the library keeps.
constexpr std::size_t batch = 16;

/// More threads would wait for the memory rather than work.
constexpr std::size_t mostThreads = 8;

/// The work that all threads share.
class Reading {
public:
    Reading(std::size_t pageCount, const std::stop_token &stop)
        : m_pages(pageCount)
        , m_stop(stop)
    {
    }

    /// Reads pages until none is left, or anyone failed.
    void run(const PDFDocument &document) noexcept
    {
        try {
            for (std::size_t first = m_next.fetch_add(batch); first < m_pages.size() && !m_hasFailed;
                 first = m_next.fetch_add(batch)) {
                for (std::size_t page = first; page < std::min(first + batch, m_pages.size()); ++page)
                    read(document, page);
            }
        } catch (...) {
            const std::scoped_lock lock(m_mutex);
            m_failure = std::current_exception();
            m_hasFailed = true;
        }
    }

    std::vector<std::vector<PDFTextLine>> result()
    {
        if (m_failure)
            std::rethrow_exception(m_failure);
        return std::move(m_pages);
    }

private:
    void read(const PDFDocument &document, std::size_t page)
    {
        if (m_stop.stop_requested())
            throw CancellationError();
        try {
            m_pages[page] = document.textLines(page, m_stop);
        } catch (const PlatformError &) {
            return;
        }
        std::size_t size = 0;
        for (const PDFTextLine &line : m_pages[page])
            size += sizeof line + line.text.size();
        ReadingLimits::require(m_size += size, ReadingLimits::keptText);
    }

    std::vector<std::vector<PDFTextLine>> m_pages;
    const std::stop_token &m_stop;
    std::atomic<std::size_t> m_next = 0;
    std::atomic<std::size_t> m_size = 0;
    std::atomic<bool> m_hasFailed = false;
    std::mutex m_mutex;
    std::exception_ptr m_failure;
};

} // namespace

std::vector<std::vector<PDFTextLine>> read(
    const std::filesystem::path &file, const PDFDocument &document, const std::stop_token &stop)
{
    Reading reading(document.pageCount(), stop);
    const std::size_t batches = (document.pageCount() + batch - 1) / batch;
    const std::size_t threads
        = std::min({batches, mostThreads, std::size_t{std::max(1U, std::thread::hardware_concurrency())}});
    {
        std::vector<std::jthread> helpers;
        for (std::size_t i = 1; i < threads; ++i) {
            helpers.emplace_back([&file, &reading] {
                // Without an opening of its own a thread leaves its pages to the others.
                if (const std::optional<PDFDocument> own = PDFDocument::open(file); own && !own->isLocked())
                    reading.run(*own);
            });
        }
        reading.run(document);
    }
    return reading.result();
}

} // namespace nolfa::PDFTextPages
