#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace nolfa::testing {

/// A PDF made object by object, crafted ones included. Object 1 is the catalogue, 2 the page tree, 3 the font /F1
/// (Helvetica) that every page knows.
class PDFBuilder {
public:
    /// @param content  operators; text of font /F1
    /// @param entries  further entries of the page's dictionary, its boxes among them
    PDFBuilder &page(std::string_view content, std::string_view entries = "/MediaBox [0 0 595 842]");

    /// A page that shows these lines, from the top, at this size in points.
    PDFBuilder &textPage(const std::vector<std::string> &lines, double size = 12);

    /// @param body  what stands between "obj" and "endobj"
    /// @return the object's number
    int add(std::string body);

    /// @param entries  of the stream's dictionary, /Length left out
    int addStream(std::string_view data, std::string_view entries = "");

    /// A further font of every page.
    PDFBuilder &font(std::string_view name, int object);

    /// Further resources of every page, such as "/XObject << /X0 5 0 R >>".
    PDFBuilder &resources(std::string_view entries);

    /// The number of the object that add() makes next.
    [[nodiscard]] int next() const { return static_cast<int>(m_objects.size()) + 1; }

    [[nodiscard]] std::string bytes() const;
    std::filesystem::path write(const std::filesystem::path &file) const; // NOLINT(modernize-use-nodiscard)

    /// Operators that show one line at a place.
    [[nodiscard]] static std::string show(std::string_view text, double x, double y, double size = 12);

private:
    std::vector<std::string> m_objects{{}, {}, "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    std::vector<int> m_pages;
    std::string m_fonts;
    std::string m_resources;
};

} // namespace nolfa::testing
