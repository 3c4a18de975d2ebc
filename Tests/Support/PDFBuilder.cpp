#include "Support/PDFBuilder.h"

#include <cstdio>
#include <fstream>

namespace nolfa::testing {

namespace {

std::string reference(int object)
{
    return std::to_string(object) + " 0 R";
}

std::string escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        if (c == '(' || c == ')' || c == '\\')
            result += '\\';
        result += c;
    }
    return result;
}

} // namespace

PDFBuilder &PDFBuilder::page(std::string_view content, std::string_view entries)
{
    const int contents = addStream(content);
    m_pages.push_back(add("<< /Type /Page /Parent 2 0 R /Contents " + reference(contents) + " " + std::string(entries)
        + " /Resources << @RESOURCES@ >> >>"));
    return *this;
}

PDFBuilder &PDFBuilder::textPage(const std::vector<std::string> &lines, double size)
{
    std::string content;
    double y = 800;
    for (const std::string &line : lines) {
        content += show(line, 72, y, size);
        y -= size * 1.5;
    }
    return page(content);
}

int PDFBuilder::add(std::string body)
{
    m_objects.push_back(std::move(body));
    return static_cast<int>(m_objects.size());
}

int PDFBuilder::addStream(std::string_view data, std::string_view entries)
{
    return add("<< " + std::string(entries) + " /Length " + std::to_string(data.size()) + " >>\nstream\n"
        + std::string(data) + "\nendstream");
}

PDFBuilder &PDFBuilder::font(std::string_view name, int object)
{
    m_fonts += "/" + std::string(name) + " " + reference(object) + " ";
    return *this;
}

PDFBuilder &PDFBuilder::resources(std::string_view entries)
{
    m_resources = entries;
    return *this;
}

std::string PDFBuilder::bytes() const
{
    std::vector<std::string> objects = m_objects;
    objects[0] = "<< /Type /Catalog /Pages 2 0 R >>";
    objects[1] = "<< /Type /Pages /Count " + std::to_string(m_pages.size()) + " /Kids [";
    for (const int page : m_pages)
        objects[1] += " " + reference(page);
    objects[1] += " ] >>";

    std::string bytes = "%PDF-1.7\n";
    std::string table;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        constexpr std::string_view mark = "@RESOURCES@";
        if (const std::size_t at = objects[i].rfind(mark); at != std::string::npos)
            objects[i].replace(at, mark.size(), "/Font << /F1 3 0 R " + m_fonts + " >> " + m_resources);
        char entry[21];
        std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", bytes.size());
        table += entry;
        bytes += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string size = std::to_string(objects.size() + 1);
    const std::string start = std::to_string(bytes.size());
    bytes += "xref\n0 " + size + "\n0000000000 65535 f \n" + table;
    bytes += "trailer\n<< /Root 1 0 R /Size " + size + " >>\nstartxref\n" + start + "\n%%EOF\n";
    return bytes;
}

std::filesystem::path PDFBuilder::write(const std::filesystem::path &file) const
{
    std::ofstream(file, std::ios::binary) << bytes();
    return file;
}

std::string PDFBuilder::show(std::string_view text, double x, double y, double size)
{
    return "BT /F1 " + std::to_string(size) + " Tf 1 0 0 1 " + std::to_string(x) + " " + std::to_string(y) + " Tm ("
        + escaped(text) + ") Tj ET\n";
}

} // namespace nolfa::testing
