#include "ConvertCommand.h"

#include "Engine/ErrorMessage.h"
#include "Engine/FileName.h"
#include "ProgressLine.h"

#include <algorithm>
#include <mutex>
#include <thread>

namespace nolfa::CommandLine {

namespace {

/// The work of one call, shared by its threads.
class Batch {
public:
    Batch(const ConversionService &service, const ConvertArguments &arguments, bool showsProgress, std::ostream &out,
        std::stop_token stop)
        : m_service(service)
        , m_arguments(arguments)
        , m_out(out)
        , m_stop(std::move(stop))
        , m_results(arguments.inputs.size())
        , m_progress(showsProgress)
    {
    }

    ExitStatus run()
    {
        {
            std::vector<std::jthread> workers;
            const std::size_t count = std::min<std::size_t>(m_arguments.jobs, m_arguments.inputs.size());
            for (std::size_t index = 0; index < count; ++index)
                workers.emplace_back([this] { work(); });
        }
        m_progress.clear();
        if (m_stop.stop_requested()) {
            sayInterrupted();
            return ExitStatus::interrupted;
        }
        return m_failures == 0 && m_out.good() ? ExitStatus::success : ExitStatus::documentFailed;
    }

private:
    struct Result {
        bool isFinished = false;
        std::optional<std::filesystem::path> output;
    };

    void work()
    {
        while (const std::optional<std::size_t> index = next()) {
            const std::filesystem::path &input = m_arguments.inputs[*index];
            try {
                succeed(*index, m_service.convert(input, m_arguments.target, m_arguments.outputDirectory, m_stop));
            } catch (const std::exception &error) {
                fail(*index, FileName::display(input) + ": " + ErrorMessage::sentence(error));
            }
        }
    }

    std::optional<std::size_t> next()
    {
        const std::scoped_lock lock(m_mutex);
        if (m_next == m_arguments.inputs.size() || m_stop.stop_requested())
            return std::nullopt;
        m_progress.show(m_finished, m_results.size(), FileName::display(m_arguments.inputs[m_next]));
        return m_next++;
    }

    void succeed(std::size_t index, std::filesystem::path output)
    {
        const std::scoped_lock lock(m_mutex);
        ++m_successes;
        finish(index, std::move(output));
    }

    void fail(std::size_t index, const std::string &sentence)
    {
        const std::scoped_lock lock(m_mutex);
        ++m_failures;
        // What an interruption ended is told in one sentence, not in hundreds.
        if (!m_stop.stop_requested())
            m_progress.say(sentence);
        finish(index, std::nullopt);
    }

    /// Prints what can be printed without leaving the order of the inputs.
    void finish(std::size_t index, std::optional<std::filesystem::path> output)
    {
        ++m_finished;
        m_results[index] = {true, std::move(output)};
        m_progress.clear();
        for (; m_printed < m_results.size() && m_results[m_printed].isFinished; ++m_printed) {
            if (m_results[m_printed].output)
                m_out << m_results[m_printed].output->native() << '\n';
        }
        m_out.flush();
        if (m_finished < m_results.size())
            m_progress.show(m_finished, m_results.size(), FileName::display(m_arguments.inputs[index]));
    }

    void sayInterrupted()
    {
        const std::string done = std::to_string(m_successes);
        const std::string all = std::to_string(m_results.size());
        m_progress.say(T("Interrupted: " + done + " of " + all + " files were converted.",
            "Interruption : " + done + " fichiers sur " + all + " ont été convertis."));
    }

    const ConversionService &m_service;
    const ConvertArguments &m_arguments;
    std::ostream &m_out;
    std::stop_token m_stop;
    std::mutex m_mutex; ///< guards all that follows
    std::vector<Result> m_results;
    ProgressLine m_progress;
    std::size_t m_next = 0;
    std::size_t m_finished = 0;
    std::size_t m_printed = 0;
    std::size_t m_successes = 0;
    std::size_t m_failures = 0;
};

} // namespace

ExitStatus runConvert(const ConversionService &service, const ConvertArguments &arguments, bool showsProgress,
    std::ostream &out, const std::stop_token &stop)
{
    return Batch(service, arguments, showsProgress, out, stop).run();
}

} // namespace nolfa::CommandLine
