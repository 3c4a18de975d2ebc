#pragma once

#include "Engine/TextRecognizing.h"

#include <algorithm>
#include <functional>
#include <mutex>

namespace nolfa::testing {

/// A recogniser that says what the test wants, and remembers how it was asked. Thread-safe as long as its answer is.
class StubRecognizer : public TextRecognizing {
public:
    using Answer = std::function<std::vector<RecognizedFragment>(
        const Bitmap &image, const std::vector<std::string> &languages, std::stop_token stop)>;

    explicit StubRecognizer(Answer answer)
        : m_answer(std::move(answer))
    {
    }

    /// Reads the same lines, from top to bottom, in every picture.
    explicit StubRecognizer(const std::vector<std::string> &lines)
        : m_answer([lines](const Bitmap &, const std::vector<std::string> &, const std::stop_token &) {
            return stacked(lines);
        })
    {
    }

    [[nodiscard]] std::vector<RecognizedFragment> recognize(
        const Bitmap &image, const std::vector<std::string> &languages, std::stop_token stop) const override
    {
        const Visit visit(*this, image, languages);
        return m_answer(image, languages, std::move(stop));
    }

    /// One fragment a line, evenly spread from the top of the picture to its foot.
    [[nodiscard]] static std::vector<RecognizedFragment> stacked(const std::vector<std::string> &lines)
    {
        constexpr double spacing = 2;
        std::vector<RecognizedFragment> fragments;
        const double step = 1.0 / static_cast<double>(lines.size());
        double y = 1;
        for (const std::string &line : lines) {
            y -= step;
            fragments.push_back({line, {0.1, y, 0.8, step / spacing}});
        }
        return fragments;
    }

    /// What a call brought.
    struct Call {
        int width;
        int height;
        std::vector<std::string> languages;
        bool operator==(const Call &) const = default;
    };

    /// All calls so far, in the order in which they began.
    [[nodiscard]] std::vector<Call> calls() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_calls;
    }

    /// The most calls that were under way at one time.
    [[nodiscard]] int mostAtOnce() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_most;
    }

private:
    /// Counts a call for as long as it lasts.
    class Visit {
    public:
        Visit(const StubRecognizer &owner, const Bitmap &image, const std::vector<std::string> &languages)
            : m_owner(owner)
        {
            const std::scoped_lock lock(m_owner.m_mutex);
            m_owner.m_calls.push_back({image.width, image.height, languages});
            m_owner.m_most = std::max(m_owner.m_most, ++m_owner.m_now);
        }
        Visit(const Visit &) = delete;
        Visit &operator=(const Visit &) = delete;
        ~Visit()
        {
            const std::scoped_lock lock(m_owner.m_mutex);
            --m_owner.m_now;
        }

    private:
        const StubRecognizer &m_owner;
    };

    Answer m_answer;
    mutable std::mutex m_mutex;
    mutable std::vector<Call> m_calls;
    mutable int m_now = 0;
    mutable int m_most = 0;
};

} // namespace nolfa::testing
