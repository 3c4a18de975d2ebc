#pragma once

#include "Nolfa/Features/Convert/DocumentConverting.h"
#include "Platform/CancellationError.h"

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace nolfa::testing {

/// A service whose conversions end when, and as, the test says. Thread-safe.
class HeldService : public DocumentConverting {
public:
    struct Call {
        std::filesystem::path input;
        DocumentFormat target;
        std::optional<std::filesystem::path> folder;
        bool operator==(const Call &) const = default;
    };

    [[nodiscard]] std::vector<DocumentFormat> supportedTargets(DocumentFormat source) const override
    {
        return {source == DocumentFormat::markdown ? DocumentFormat::pdf : DocumentFormat::markdown};
    }

    [[nodiscard]] std::filesystem::path convert(const std::filesystem::path &input, DocumentFormat target,
        const std::optional<std::filesystem::path> &folder, std::stop_token stop) const override
    {
        std::unique_lock lock(m_mutex);
        m_calls.push_back({input, target, folder});
        const Leaving leaving{m_inside};
        m_most = std::max(m_most, ++m_inside);
        Script &script = m_scripts[input.filename()];
        const std::size_t turn = script.calls++;
        const auto isAnswered = [&script, turn] { return script.answers.size() > turn; };
        if (m_heedsStops)
            m_changed.wait(lock, stop, isAnswered);
        else
            m_changed.wait(lock, isAnswered);
        if (!isAnswered())
            throw CancellationError();
        const Answer answer = script.answers[turn];
        if (answer.fail)
            answer.fail();
        return answer.output;
    }

    /// Lets a conversion of that file name succeed. The first answer is for the first call, and so on.
    void succeed(const std::string &name, std::filesystem::path output) { answer(name, {std::move(output), nullptr}); }

    /// Lets it fail with that.
    template <typename Error> void fail(const std::string &name, Error error)
    {
        answer(name, {{}, [error = std::move(error)] { throw error; }});
    }

    void ignoreStops()
    {
        const std::scoped_lock lock(m_mutex);
        m_heedsStops = false;
    }

    [[nodiscard]] std::vector<Call> calls() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_calls;
    }
    [[nodiscard]] int inside() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_inside;
    }
    /// The most conversions that ever ran at the same time.
    [[nodiscard]] int most() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_most;
    }

private:
    struct Answer {
        std::filesystem::path output;
        std::function<void()> fail;
    };
    struct Script {
        std::size_t calls = 0;
        std::vector<Answer> answers;
    };
    struct Leaving {
        int &inside;
        ~Leaving() { --inside; }
    };

    void answer(const std::string &name, Answer answer)
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_scripts[name].answers.push_back(std::move(answer));
        }
        m_changed.notify_all();
    }

    mutable std::mutex m_mutex; ///< guards all that follows
    mutable std::condition_variable_any m_changed;
    mutable std::vector<Call> m_calls;
    mutable std::map<std::string, Script> m_scripts;
    mutable int m_inside = 0;
    mutable int m_most = 0;
    bool m_heedsStops = true;
};

} // namespace nolfa::testing
