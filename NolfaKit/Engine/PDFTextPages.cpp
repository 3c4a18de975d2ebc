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

/// Pages that make a further thread worth while.
constexpr std::size_t leastBatch = 16;

/// The part of what is left that a thread takes at a time. Neighbouring pages share packed objects, which each thread
/// unpacks for itself, so runs begin long; they become short, so that all threads end together.
constexpr std::size_t shareOfThread = 2;

/// More threads would wait for the memory rather than work.
constexpr std::size_t mostThreads = 8;

/// The work that all threads share.
class Reading {
public:
    Reading(std::size_t pageCount, std::size_t threads, const std::stop_token &stop)
        : m_pages(pageCount)
        , m_threads(threads)
        , m_stop(stop)
    {
    }

    /// Reads pages until none is left, or anyone failed.
    void run(const PDFDocument &document) noexcept
    {
        try {
            for (Run run = nextRun(); run.first < run.end && !m_hasFailed; run = nextRun()) {
                for (std::size_t page = run.first; page < run.end; ++page)
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
    struct Run {
        std::size_t first;
        std::size_t end;
    };

    /// Pages that no thread has taken yet; none when there are none left.
    Run nextRun()
    {
        const std::scoped_lock lock(m_mutex);
        const std::size_t left = m_pages.size() - m_next;
        const Run run{m_next, m_next + std::min(left, std::max(leastBatch, left / (m_threads * shareOfThread)))};
        m_next = run.end;
        return run;
    }

    void read(const PDFDocument &document, std::size_t page)
    {
        if (m_stop.stop_requested())
            throw CancellationError();
        try {
            // A copy, made once the page's own memory is free again: what stays would otherwise lie between what
            // goes, and the heap grow twice as large.
            const std::vector<PDFTextLine> lines = document.textLines(page, m_stop);
            m_pages[page].assign(lines.begin(), lines.end());
        } catch (const PlatformError &) {
            return;
        }
        std::size_t size = 0;
        for (const PDFTextLine &line : m_pages[page])
            size += sizeof line + line.text.size();
        ReadingLimits::require(m_size += size, ReadingLimits::keptText);
    }

    std::vector<std::vector<PDFTextLine>> m_pages;
    std::size_t m_threads;
    const std::stop_token &m_stop;
    std::size_t m_next = 0; ///< guarded
    std::atomic<std::size_t> m_size = 0;
    std::atomic<bool> m_hasFailed = false;
    std::mutex m_mutex;
    std::exception_ptr m_failure;
};

} // namespace

std::vector<std::vector<PDFTextLine>> read(const PDFDocument &document, const std::stop_token &stop)
{
    const std::size_t batches = document.pageCount() / leastBatch + 1;
    const std::size_t threads
        = std::min({batches, mostThreads, std::size_t{std::max(1U, std::thread::hardware_concurrency())}});
    Reading reading(document.pageCount(), threads, stop);
    {
        std::vector<std::jthread> helpers;
        for (std::size_t i = 1; i < threads; ++i) {
            helpers.emplace_back([&document, &reading] {
                // Without an opening of its own a thread leaves its pages to the others.
                if (const std::optional<PDFDocument> own = document.openedAgain())
                    reading.run(*own);
            });
        }
        reading.run(document);
    }
    return reading.result();
}

} // namespace nolfa::PDFTextPages
