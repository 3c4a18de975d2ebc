#include "Platform/PDFStamper.h"

#include "Platform/CancellationError.h"
#include "Platform/MuPDF/PageSource.h"
#include "Platform/PDFNumber.h"

#include <cmath>
#include <vector>

namespace nolfa {

namespace {

using mupdf::Document;
using mupdf::PageFrame;
using mupdf::PageSource;

/// The leaves of one node of the new tree of pages.
constexpr std::size_t pagesPerNode = 100;

std::string numbers(std::initializer_list<double> values)
{
    std::string result;
    for (const double value : values) {
        PDFNumber::append(result, value);
        result += ' ';
    }
    return result;
}

/// The operator that puts a map in force.
std::string enter(const Transform &map)
{
    return numbers({map.a, map.b, map.c, map.d, map.e, map.f}) + "cm ";
}

std::string draw(const Transform &place, std::string_view form)
{
    return "q " + enter(place) + "/" + std::string(form) + " Do Q\n";
}

/// Everything that a line can paint around its start, at any angle.
double reach(const Rectangle &bounds)
{
    return std::hypot(std::abs(bounds.x) + bounds.width, std::abs(bounds.y) + bounds.height);
}

} // namespace

/// The new file in the making.
struct PDFStamper::Implementation {
    Document source;
    std::unique_ptr<PDFWriter> writer;
    std::unique_ptr<PageSource> pages;
    Rectangle lineBounds;
    int line = 0; ///< the form of the line to stamp
    int root = 0;
    std::vector<int> nodes;
    std::vector<int> leaves; ///< of the last node
    std::size_t count = 0;
    std::map<std::string, int> contents; ///< of pages, by what they say
    std::map<std::string, int> rowForms; ///< rows of the line, by what they say

    // Streams are held as they are stored, one at a time, in a buffer that doubles as it grows: none that is really in
    // the file may fail for want of room.
    Implementation(const std::filesystem::path &file, std::uintmax_t fileSize)
        : source(file, 2 * static_cast<std::size_t>(fileSize))
    {
    }

    /// Brings over the page that shows the line, with the start of the baseline as its origin and the size as unit.
    void takeLine(const TypesetLine &typeset)
    {
        Document document{std::string_view(typeset.pdf)};
        document.listPages();
        const std::optional<PageFrame> frame
            = document.pageCount() == 1 ? PageSource::frame(document, 0) : std::nullopt;
        if (!frame)
            throw PlatformError("The line can't be taken over.");
        const double scale = typeset.bounds.width / frame->box.width;
        const std::string matrix = "/Matrix[" + numbers({scale, 0, 0, scale, typeset.bounds.x, typeset.bounds.y}) + "]";
        PageSource copied(document, *writer);
        line = copied.copy(0, frame->box, matrix, {}).number;
        lineBounds = typeset.bounds;
    }

    /// The stream that says this; made at its first use.
    int contentStream(const std::string &text)
    {
        int &number = contents[text];
        if (number == 0) {
            number = writer->newNumber();
            writer->packedStream(number, "", text);
        }
        return number;
    }

    /// One row of the line's places, around the start of the first.
    int rowForm(const StampPlaces &places)
    {
        Transform place = places.first;
        place.e = place.f = 0;
        std::string text;
        for (int column = 0; column < places.columns; ++column) {
            text += draw(place, "Line");
            place.e += places.stepX;
        }
        const double margin = reach(lineBounds) * std::hypot(place.a, place.b);
        const std::string entries = "/Type/XObject/Subtype/Form/BBox["
            + numbers({-margin, -margin, place.e + margin, margin}) + "]/Resources<</XObject<</Line "
            + PDFWriter::reference(line) + ">>>>";
        int &number = rowForms[entries + text];
        if (number == 0) {
            number = writer->newNumber();
            writer->packedStream(number, entries, text);
        }
        return number;
    }

    /// Draws the line at its places, and names the form that it takes for that.
    std::string stamp(const StampPlaces &places, const Size &size, std::string &forms)
    {
        std::string text = places.isClipped ? "q 0 0 " + numbers({size.width, size.height}) + "re W n\n" : "";
        if (places.columns == 1 && places.rows == 1) {
            text += draw(places.first, "Line");
            forms += "/Line " + PDFWriter::reference(line);
        } else {
            for (int row = 0; row < places.rows; ++row)
                text += draw({.e = places.first.e, .f = places.first.f + places.stepY * row}, "Row");
            forms += "/Row " + PDFWriter::reference(rowForm(places));
        }
        return places.isClipped ? text + "Q\n" : text;
    }

    void add(std::size_t index, const std::optional<StampPlaces> &places, const std::stop_token &stop)
    {
        const std::optional<PageFrame> frame = PageSource::frame(source, index);
        if (!frame)
            return;
        const PageSource::Form form = pages->copy(index, frame->box, "", stop);
        std::string forms;
        std::string text;
        if (form.number != 0) {
            forms = "/Page " + PDFWriter::reference(form.number);
            text = draw(frame->upright(), "Page");
        }
        const Size size = frame->uprightSize();
        if (places && line != 0) {
            const double unit = 1 / frame->unit;
            const std::string stamped = stamp(*places, {size.width * frame->unit, size.height * frame->unit}, forms);
            text += frame->unit == 1.0 ? stamped : "q " + enter({unit, 0, 0, unit, 0, 0}) + stamped + "Q\n";
        }
        std::string page = "/MediaBox[0 0 " + numbers({size.width, size.height}) + "]" + form.group + "/Resources<<"
            + (forms.empty() ? "" : "/XObject<<" + forms + ">>") + ">>/Contents "
            + PDFWriter::reference(contentStream(text));
        if (frame->unit != 1.0)
            page += "/UserUnit " + numbers({frame->unit});
        append(page);
    }

    void append(const std::string &page)
    {
        if (leaves.empty())
            nodes.push_back(writer->newNumber());
        leaves.push_back(writer->newNumber());
        ++count;
        writer->object(leaves.back(), "<</Type/Page/Parent " + PDFWriter::reference(nodes.back()) + page + ">>");
        if (leaves.size() == pagesPerNode)
            closeNode();
    }

    static std::string kids(const std::vector<int> &objects)
    {
        std::string result = "/Kids[";
        for (const int number : objects)
            result += PDFWriter::reference(number) + " ";
        return result + "]";
    }

    void closeNode()
    {
        if (leaves.empty())
            return;
        writer->object(nodes.back(),
            "<</Type/Pages/Parent " + PDFWriter::reference(root) + kids(leaves) + "/Count "
                + std::to_string(leaves.size()) + ">>");
        leaves.clear();
    }

    void finish(const std::stop_token &stop)
    {
        closeNode();
        writer->object(root, "<</Type/Pages" + kids(nodes) + "/Count " + std::to_string(count) + ">>");
        const std::string entries = pages->catalogEntries(stop);
        const int catalog = writer->newNumber();
        writer->object(catalog, "<</Type/Catalog/Pages " + PDFWriter::reference(root) + entries + ">>");
        writer->finish(catalog);
    }
};

PDFStamper::PDFStamper(std::unique_ptr<Implementation> implementation)
    : m_implementation(std::move(implementation))
{
}

PDFStamper::PDFStamper(PDFStamper &&) noexcept = default;
PDFStamper &PDFStamper::operator=(PDFStamper &&) noexcept = default;
PDFStamper::~PDFStamper() = default;

std::optional<PDFStamper> PDFStamper::open(const std::filesystem::path &file)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || !std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    try {
        auto implementation = std::make_unique<Implementation>(file, size);
        if (!implementation->source.isLocked())
            implementation->source.listPages();
        return PDFStamper(std::move(implementation));
    } catch (const PlatformError &) {
        return std::nullopt;
    }
}

bool PDFStamper::isLocked() const noexcept
{
    return m_implementation->source.isLocked();
}

std::size_t PDFStamper::pageCount() const noexcept
{
    return m_implementation->source.pageCount();
}

std::optional<Size> PDFStamper::pageSize(std::size_t page) const
{
    if (page >= pageCount())
        return std::nullopt;
    const std::optional<PageFrame> frame = PageSource::frame(m_implementation->source, page);
    if (!frame)
        return std::nullopt;
    const Size size = frame->uprightSize();
    return Size{size.width * frame->unit, size.height * frame->unit};
}

void PDFStamper::begin(ByteSink &sink, const std::optional<TypesetLine> &line)
{
    Implementation &self = *m_implementation;
    self.writer = std::make_unique<PDFWriter>(sink);
    self.pages = std::make_unique<PageSource>(self.source, *self.writer);
    self.root = self.writer->newNumber();
    if (line)
        self.takeLine(*line);
}

void PDFStamper::add(std::size_t page, const std::optional<StampPlaces> &places, const std::stop_token &stop)
{
    throwIfStopped(stop);
    if (page < pageCount())
        m_implementation->add(page, places, stop);
}

void PDFStamper::finish(const std::stop_token &stop)
{
    m_implementation->finish(stop);
}

} // namespace nolfa
