#include "Engine/TypesettingFolder.h"

#include "Localization/NolfaFormat.h"
#include "Platform/File.h"

#include <string_view>

namespace nolfa {

namespace {

/// A text as a literal of typst within a template of pandoc.
std::string literal(std::string_view text)
{
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        if (c == '$')
            result += '$';
        if (c == '\n')
            result += "\\n";
        else
            result += c;
    }
    return result + '"';
}

std::string definition(std::string_view name, std::string_view value)
{
    return std::string("#let ").append(name).append(" = ").append(value).append("\n");
}

std::string pageTemplate(const std::string &common, const std::filesystem::path &text)
{
    const NolfaFormat::PaperSize paper = sizePoints(NolfaFormat::paper());
    return definition("nolfa-folder", literal((text / "").native()))
        + definition("nolfa-width", std::to_string(paper.width) + "pt")
        + definition("nolfa-height", std::to_string(paper.height) + "pt") + common;
}

} // namespace

std::vector<std::string> TypesettingFolder::prepare(
    const std::filesystem::path &folder, const std::filesystem::path &text, const Bundle &bundle)
{
    // Pictures may lie anywhere. Temporary files go where they end with the run, even when it is killed.
    std::vector<std::string> environment{"TYPST_ROOT=/", "TMPDIR=" + folder.native(),
        "TYPST_FONT_PATHS=" + (bundle.root() / "Fonts").native() + ":" + (bundle.root() / "Italics").native()};
    const std::optional<std::filesystem::path> source = bundle.resource("print", "typst", "typst");
    const std::optional<std::string> common = source ? File::contents(*source) : std::nullopt;
    if (common) {
        const std::filesystem::path data = folder / "data";
        File::makePrivateFolder(data / "templates");
        File::write(data / "templates" / "default.typst", pageTemplate(*common, text));
        environment.push_back("NOLFA_PANDOC_DATA=" + data.native());
    }
    return environment;
}

} // namespace nolfa
