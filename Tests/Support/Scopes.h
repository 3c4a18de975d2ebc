#pragma once

#include "Localization/NolfaFormat.h"
#include "Localization/NolfaL10n.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace nolfa::testing {

/// Sets the language in force until the end of the block.
class LanguageScope {
public:
    explicit LanguageScope(NolfaLanguage language)
        : m_before(NolfaL10n::current())
    {
        NolfaL10n::setCurrent(language);
    }
    LanguageScope(const LanguageScope &) = delete;
    LanguageScope &operator=(const LanguageScope &) = delete;
    ~LanguageScope() { NolfaL10n::setCurrent(m_before); }

private:
    NolfaLanguage m_before;
};

/// Sets the locale of formats, and takes any chosen paper away, until the end of the block.
class LocaleScope {
public:
    explicit LocaleScope(Locale locale)
        : m_before(NolfaFormat::locale())
    {
        NolfaFormat::setLocale(std::move(locale));
        NolfaFormat::resetPaper();
    }
    LocaleScope(const LocaleScope &) = delete;
    LocaleScope &operator=(const LocaleScope &) = delete;
    ~LocaleScope()
    {
        NolfaFormat::setLocale(m_before);
        NolfaFormat::resetPaper();
    }

private:
    Locale m_before;
};

/// Sets an environment variable, or takes it away, until the end of the block.
class EnvironmentScope {
public:
    EnvironmentScope(std::string name, std::optional<std::string> value)
        : m_name(std::move(name))
    {
        if (const char *before = std::getenv(m_name.c_str()))
            m_before = before;
        assign(value);
    }
    EnvironmentScope(const EnvironmentScope &) = delete;
    EnvironmentScope &operator=(const EnvironmentScope &) = delete;
    ~EnvironmentScope() { assign(m_before); }

private:
    void assign(const std::optional<std::string> &value)
    {
        if (value)
            ::setenv(m_name.c_str(), value->c_str(), 1);
        else
            ::unsetenv(m_name.c_str());
    }

    std::string m_name;
    std::optional<std::string> m_before;
};

/// The machine's locale until the end of the block; empty stands for none.
struct SystemLocaleScope {
    explicit SystemLocaleScope(const std::string &name)
        : all("LC_ALL", name.empty() ? std::nullopt : std::optional(name))
    {
    }

    EnvironmentScope all;
    EnvironmentScope messages{"LC_MESSAGES", std::nullopt};
    EnvironmentScope lang{"LANG", std::nullopt};
};

} // namespace nolfa::testing
