#include "Arguments.h"

#include "Help.h"
#include "Platform/Bundle.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <charconv>
#include <thread>

namespace nolfa::CommandLine {

namespace {

/// The words as they were typed; what they mean is decided after parsing, with sentences of our own.
struct Words {
    std::string lang;
    std::string paper;
    bool isQuiet = false;
    bool wantsHelp = false;
    bool wantsVersion = false;
    std::vector<std::string> inputs;
    std::string to;
    std::string into;
    std::string jobs;
    std::string report;
    bool asJSON = false;
    WatermarkWords watermark;
};

void addCommonOptions(CLI::App &app, Words &words)
{
    app.set_help_flag();
    app.add_flag("-h,--help", words.wantsHelp);
    app.add_option("--lang", words.lang);
    app.add_option("--paper", words.paper);
    app.add_flag("--quiet", words.isQuiet);
}

std::string unusedWord(const CLI::App &app)
{
    const std::vector<std::string> extras = app.remaining(true);
    return extras.empty() ? std::string() : extras.front();
}

void parseWords(CLI::App &app, std::vector<std::string> arguments)
{
    // CLI11 takes them from the back.
    std::ranges::reverse(arguments);
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ExtrasError &) {
        const std::string word = unusedWord(app);
        failUsage("“" + word + "” means nothing here.", "« " + word + " » ne veut rien dire ici.");
    } catch (const CLI::ArgumentMismatch &) {
        failUsage(
            "An option lacks its value, or has too many.", "Il manque une valeur à une option, ou elle en a trop.");
    } catch (const CLI::ParseError &error) {
        failUsage(
            std::string("Wrong usage: ") + error.what() + ".", std::string("Mauvais usage : ") + error.what() + ".");
    }
}

void addWatermarkOptions(CLI::App &app, WatermarkWords &words)
{
    app.add_option("input", words.inputs);
    app.add_option("--text", words.text);
    app.add_option("--output", words.output);
    app.add_option("--font", words.font);
    app.add_option("--size", words.size);
    app.add_option("--color", words.color);
    app.add_option("--opacity", words.opacity);
    app.add_option("--angle", words.angle);
    app.add_option("--placement", words.placement);
    app.add_option("--pages", words.pages);
    app.add_option("--spacing", words.spacing);
}

unsigned defaultJobs()
{
    const unsigned processors = std::thread::hardware_concurrency();
    return std::max(2U, processors / 2);
}

unsigned jobsFrom(const std::string &word)
{
    if (word.empty())
        return defaultJobs();
    unsigned jobs = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), jobs);
    constexpr unsigned most = 256;
    if (failure != std::errc() || end != word.data() + word.size() || jobs == 0 || jobs > most)
        failUsage("--jobs takes a number from 1 to 256.", "--jobs demande un nombre de 1 à 256.");
    return jobs;
}

ConvertArguments convertFrom(const Words &words)
{
    if (words.inputs.empty())
        failUsage("No file to convert was given.", "Aucun fichier à convertir n’a été indiqué.");
    if (words.to.empty())
        failUsage("--to FORMAT is missing.", "Il manque --to FORMAT.");
    const std::optional<DocumentFormat> target = DocumentFormats::fromRawValue(words.to);
    if (!target)
        failUsage("There is no format “" + words.to + "”.", "Il n’y a pas de format « " + words.to + " ».");
    ConvertArguments result{.target = *target, .jobs = jobsFrom(words.jobs)};
    result.inputs.assign(words.inputs.begin(), words.inputs.end());
    if (!words.into.empty()) {
        std::error_code ignored;
        if (!std::filesystem::is_directory(words.into, ignored))
            failUsage("“" + words.into + "” is not an existing folder.",
                "« " + words.into + " » n’est pas un dossier existant.");
        result.outputDirectory = words.into;
    }
    return result;
}

ReportFormat reportFormatOf(const std::filesystem::path &file)
{
    const std::optional<DocumentFormat> format = DocumentFormats::fromURL(file);
    if (format == DocumentFormat::pdf)
        return ReportFormat::pdf;
    if (!format || !isMarkdown(*format))
        failUsage("--report takes a file that ends in .md or .pdf.", "--report demande un fichier en .md ou .pdf.");
    return ReportFormat::markdown;
}

CompareArguments compareFrom(const Words &words)
{
    if (words.inputs.size() != 2)
        failUsage("compare takes two files: the original, then the revised one.",
            "compare demande deux fichiers : l’original, puis la version révisée.");
    CompareArguments result{.original = words.inputs[0], .revised = words.inputs[1], .asJSON = words.asJSON};
    if (!words.report.empty()) {
        const std::filesystem::path file = words.report;
        result.report = {file, reportFormatOf(file)};
        std::error_code ignored;
        if (!std::filesystem::is_directory(std::filesystem::absolute(file).parent_path(), ignored))
            failUsage("There is no folder for “" + words.report + "”.",
                "Il n’y a pas de dossier pour « " + words.report + " ».");
    }
    return result;
}

std::string version()
{
    return "Nolfa " + Bundle::main().value("CFBundleShortVersionString").value_or("") + "\n";
}

std::optional<NolfaFormat::Paper> paperFrom(const std::string &word)
{
    if (word.empty())
        return std::nullopt;
    const std::optional<NolfaFormat::Paper> paper = NolfaFormat::paperFromRawValue(word);
    if (!paper)
        failUsage("--paper is a4 or usLetter.", "--paper vaut a4 ou usLetter.");
    return paper;
}

} // namespace

NolfaLanguage languageIn(const std::vector<std::string> &arguments)
{
    constexpr std::string_view option = "--lang";
    std::string_view value;
    for (std::size_t index = 0; index < arguments.size() && arguments[index] != "--"; ++index) {
        const std::string_view word = arguments[index];
        if (word == option && index + 1 < arguments.size())
            value = arguments[index + 1];
        else if (word.starts_with(option) && word.substr(option.size()).starts_with('='))
            value = word.substr(option.size() + 1);
    }
    return languageFromRawValue(value).value_or(NolfaLanguage::system);
}

Arguments parse(const std::vector<std::string> &arguments)
{
    Words words;
    // What follows "--" is a file, whatever it looks like.
    const auto mark = std::ranges::find(arguments, "--");
    CLI::App app;
    addCommonOptions(app, words);
    app.add_flag("--version", words.wantsVersion);

    CLI::App *convert = app.add_subcommand("convert");
    addCommonOptions(*convert, words);
    convert->add_option("input", words.inputs);
    convert->add_option("--to", words.to);
    convert->add_option("--into", words.into);
    convert->add_option("--jobs", words.jobs);

    CLI::App *compare = app.add_subcommand("compare");
    addCommonOptions(*compare, words);
    compare->add_option("input", words.inputs);
    compare->add_option("--report", words.report);
    compare->add_flag("--json", words.asJSON);

    CLI::App *formats = app.add_subcommand("formats");
    addCommonOptions(*formats, words);
    formats->add_flag("--json", words.asJSON);

    CLI::App *watermark = app.add_subcommand("watermark");
    addCommonOptions(*watermark, words);
    addWatermarkOptions(*watermark, words.watermark);

    parseWords(app, {arguments.begin(), mark});
    if (mark != arguments.end()) {
        std::vector<std::string> &inputs = watermark->parsed() ? words.watermark.inputs : words.inputs;
        inputs.insert(inputs.end(), mark + 1, arguments.end());
    }
    if (!words.lang.empty() && !languageFromRawValue(words.lang))
        failUsage("--lang is system, en or fr.", "--lang vaut system, en ou fr.");
    const std::optional<NolfaFormat::Paper> paper = paperFrom(words.paper);

    if (words.wantsVersion)
        return {PrintArguments{version()}};
    if (words.wantsHelp)
        return {PrintArguments{convert->parsed() ? Help::convert()
                : compare->parsed()              ? Help::compare()
                : formats->parsed()              ? Help::formats()
                : watermark->parsed()            ? Help::watermark()
                                                 : Help::overview()}};
    if (convert->parsed())
        return {convertFrom(words), words.isQuiet, paper};
    if (compare->parsed())
        return {compareFrom(words), words.isQuiet, paper};
    if (formats->parsed())
        return {FormatsArguments{words.asJSON}, words.isQuiet, paper};
    if (watermark->parsed())
        return {watermarkFrom(words.watermark), words.isQuiet, paper};
    failUsage("What shall be done? Give a verb: convert, compare, watermark or formats.",
        "Que faire ? Donnez un verbe : convert, compare, watermark ou formats.");
}

} // namespace nolfa::CommandLine
