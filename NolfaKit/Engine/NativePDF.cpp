#include "Engine/NativePDF.h"

#include "Engine/ConversionError.h"
#include "Engine/PrintableHTML.h"
#include "Localization/NolfaFormat.h"
#include "Localization/NolfaL10n.h"
#include "Platform/Bundle.h"
#include "Platform/CancellationError.h"
#include "Platform/HTMLPrinter.h"
#include "Platform/PlatformError.h"
#include "Platform/UUID.h"
#include "Platform/Unicode.h"

namespace nolfa {

namespace {

constexpr double margin = 54;

/// A name beside the output, so that the last step is a rename. Whatever is left at it goes.
class Interim {
public:
    explicit Interim(const std::filesystem::path &output)
        : path(output.parent_path() / (".nolfa-" + newUUID() + ".pdf"))
    {
    }
    Interim(const Interim &) = delete;
    Interim &operator=(const Interim &) = delete;
    ~Interim()
    {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    const std::filesystem::path path;
};

} // namespace

void NativePDF::render(std::string_view html, const std::filesystem::path &output, const std::stop_token &stop)
{
    if (!Unicode::isValidUTF8(html))
        throw ConversionError::engineFailure(T("Couldn't encode the HTML.", "Le HTML n’a pas pu être encodé."));
    const NolfaFormat::PaperSize paper = sizePoints(NolfaFormat::paper());
    const Interim interim(output);
    try {
        throwIfStopped(stop);
        const PrintableHTML printable = PrintableHTML::from(html);
        HTMLPrinter::print({.html = printable.html,
                               .pictures = printable.pictures,
                               .page = {static_cast<double>(paper.width), static_cast<double>(paper.height)},
                               .margin = margin,
                               .fonts = {Bundle::main().root() / "Fonts", Bundle::main().root() / "Italics"},
                               .output = interim.path},
            stop);
        throwIfStopped(stop);
    } catch (const CancellationError &) {
        throw ConversionError::cancelled();
    } catch (const PlatformError &) {
        throw ConversionError::engineFailure(T("The PDF couldn't be rendered.", "Le PDF n’a pas pu être produit."));
    }
    std::filesystem::rename(interim.path, output);
}

} // namespace nolfa
