#pragma once

#include "Engine/DocumentFormat.h"

#include <QUuid>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace nolfa {

/// How far a row is.
class ConvertItemState {
public:
    enum class Case { idle, running, done, failed };

    static ConvertItemState idle() { return ConvertItemState(Case::idle); }
    static ConvertItemState running() { return ConvertItemState(Case::running); }
    static ConvertItemState done() { return ConvertItemState(Case::done); }
    /// @param failure  derived from std::exception
    static ConvertItemState failed(std::exception_ptr failure)
    {
        return ConvertItemState(Case::failed, std::move(failure));
    }

    [[nodiscard]] Case value() const { return m_value; }

    /// The sentence for the user when the state is failed, made anew in the language in force; else empty.
    [[nodiscard]] std::string message() const;

    /// "idle", "running", "done" or "failed".
    [[nodiscard]] const char *name() const;

private:
    explicit ConvertItemState(Case value, std::exception_ptr failure = nullptr)
        : m_value(value)
        , m_failure(std::move(failure))
    {
    }

    Case m_value;
    std::exception_ptr m_failure;
};

/// One row of the convert tool.
struct ConvertItem {
    using State = ConvertItemState;

    QUuid id; ///< made fresh for each row
    std::filesystem::path url; ///< the input, as it came in
    DocumentFormat source;
    DocumentFormat target;
    State state = State::idle();
    std::optional<std::filesystem::path> output; ///< of the last successful run

    [[nodiscard]] bool is(State::Case value) const { return state.value() == value; }
    /// Whether the next batch takes it in.
    [[nodiscard]] bool isPending() const { return is(State::Case::idle) || is(State::Case::failed); }
    [[nodiscard]] bool isSettled() const { return is(State::Case::done) || is(State::Case::failed); }
};

} // namespace nolfa
