#pragma once

#include "Engine/DocumentFormat.h"

#include <exception>
#include <filesystem>
#include <string>
#include <variant>

namespace nolfa {

/// Why Google refused a document.
enum class GoogleDenial { privateDocument, notFound, signInRequired, rateLimited };

/// The one failure of conversions that reaches the user. A plain value: equal when case and payloads are.
class ConversionError : public std::exception {
public:
    struct UnreadableInput {
        std::filesystem::path input;
        bool operator==(const UnreadableInput &) const = default;
    };
    struct UnsupportedPair {
        DocumentFormat from;
        DocumentFormat to;
        bool operator==(const UnsupportedPair &) const = default;
    };
    struct AppNotInstalled {
        std::string app;
        bool operator==(const AppNotInstalled &) const = default;
    };
    struct PermissionDenied {
        std::string app;
        bool operator==(const PermissionDenied &) const = default;
    };
    struct EngineFailure {
        std::string sentence;
        bool operator==(const EngineFailure &) const = default;
    };
    struct PasswordProtected {
        std::filesystem::path input;
        bool operator==(const PasswordProtected &) const = default;
    };
    struct TimedOut {
        std::string step;
        bool operator==(const TimedOut &) const = default;
    };
    struct EmptyResult {
        DocumentFormat from;
        DocumentFormat to;
        bool operator==(const EmptyResult &) const = default;
    };
    struct ToolFailure {
        std::string tool;
        std::string summary; ///< a sentence for the user; the other two are never shown
        std::string detail; ///< the raw diagnostics
        bool operator==(const ToolFailure &) const = default;
    };
    struct Network {
        std::string description; ///< technical, never shown
        bool operator==(const Network &) const = default;
    };
    struct GoogleAccessDenied {
        GoogleDenial denial;
        bool operator==(const GoogleAccessDenied &) const = default;
    };
    struct Cancelled {
        bool operator==(const Cancelled &) const = default;
    };

    using Case = std::variant<UnreadableInput, UnsupportedPair, AppNotInstalled, PermissionDenied, EngineFailure,
        PasswordProtected, TimedOut, EmptyResult, ToolFailure, Network, GoogleAccessDenied, Cancelled>;

    static ConversionError unreadableInput(std::filesystem::path input);
    static ConversionError unsupportedPair(DocumentFormat from, DocumentFormat to);
    static ConversionError appNotInstalled(std::string app);
    static ConversionError permissionDenied(std::string app);
    static ConversionError engineFailure(std::string sentence);
    static ConversionError passwordProtected(std::filesystem::path input);
    static ConversionError timedOut(std::string step);
    static ConversionError emptyResult(DocumentFormat from, DocumentFormat to);
    static ConversionError toolFailure(std::string tool, std::string summary, std::string detail);
    static ConversionError network(std::string description);
    static ConversionError googleAccessDenied(GoogleDenial denial);
    static ConversionError cancelled();

    /// The sentence for the user, in the language in force at the moment of the call.
    [[nodiscard]] std::string errorDescription() const;

    [[nodiscard]] const Case &value() const noexcept { return m_value; }

    /// The payload when this is that case, or null.
    template <typename Alternative> [[nodiscard]] const Alternative *as() const noexcept
    {
        return std::get_if<Alternative>(&m_value);
    }

    /// For debuggers; users get errorDescription().
    [[nodiscard]] const char *what() const noexcept override { return "ConversionError"; }

    bool operator==(const ConversionError &other) const { return m_value == other.m_value; }

private:
    explicit ConversionError(Case value);

    Case m_value;
};

} // namespace nolfa
