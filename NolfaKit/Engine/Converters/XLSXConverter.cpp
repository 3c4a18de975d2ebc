#include "Engine/Converters/XLSXConverter.h"

#include "Engine/ArchiveTool.h"
#include "Engine/ConversionError.h"
#include "Engine/ElementCollector.h"
#include "Engine/ProducedOutput.h"
#include "Engine/ReadingLimits.h"
#include "Engine/Scratch.h"
#include "Engine/SheetParser.h"
#include "Engine/TextFile.h"
#include "Engine/XLSXWriter.h"
#include "Platform/CancellationError.h"
#include "Platform/File.h"
#include "Platform/FileWriter.h"

namespace nolfa {

namespace fs = std::filesystem;

namespace {

constexpr ConversionPair xlsxToMarkdown{DocumentFormat::xlsx, DocumentFormat::markdown};
constexpr ConversionPair markdownToXlsx{DocumentFormat::markdown, DocumentFormat::xlsx};

/// Where a relationship of the workbook leads.
std::optional<fs::path> sheetPart(const UnpackedPackage &package, std::string target)
{
    if (target.starts_with('/'))
        target.erase(0, 1);
    const bool isFromRoot = target.starts_with("xl/");
    // Joined as it stands: the operator of paths would take a second slash for the disc's root.
    const fs::path base = isFromRoot ? package.root() : package.root() / "xl";
    return package.part(base.native() + "/" + target);
}

std::vector<XLSXConverter::Sheet> sheetsOfWorkbook(const UnpackedPackage &package, const std::stop_token &stop)
{
    using namespace ElementCollector;
    const auto targets = relationshipTargets(package.part(package.root() / "xl/_rels/workbook.xml.rels"), stop);
    std::vector<XLSXConverter::Sheet> sheets;
    ReadingBudget budget;
    for (const Attributes &sheet : collect("sheet", package.part(package.root() / "xl/workbook.xml"), stop)) {
        std::optional<std::string> id = value(sheet, "r:id");
        if (!id)
            id = value(sheet, "id");
        const auto target = targets.find(id.value_or(""));
        std::optional<fs::path> part = target == targets.end() ? std::nullopt : sheetPart(package, target->second);
        if (!part)
            continue;
        budget.spend(*part);
        sheets.push_back({value(sheet, "name").value_or("Sheet"), std::move(*part)});
    }
    return sheets;
}

/// Writes the worksheets of the tables of a text.
class SheetWriter : public MarkdownTable::Visitor {
public:
    SheetWriter(fs::path folder, std::stop_token stop)
        : m_folder(std::move(folder))
        , m_stop(std::move(stop))
    {
    }

    void startTable() override
    {
        endTable();
        ++m_count;
        m_rowNumber = 0;
        m_file.emplace(m_folder / ("sheet" + std::to_string(m_count) + ".xml"));
        m_file->text = XLSXWriter::sheetStart();
    }

    void row(const MarkdownTable::RowView &cells) override
    {
        throwIfStopped(m_stop);
        XLSXWriter::appendRow(m_file->text, ++m_rowNumber, cells, m_letters);
        m_file->flushIfLarge();
    }

    /// @return the number of sheets
    std::size_t finish()
    {
        if (m_count == 0) {
            startTable();
            row({"(no tables found)"});
        }
        endTable();
        return m_count;
    }

private:
    void endTable()
    {
        if (!m_file)
            return;
        m_file->text += XLSXWriter::sheetEnd();
        m_file->finish();
        m_file.reset();
    }

    fs::path m_folder;
    std::stop_token m_stop;
    std::optional<FileWriter> m_file;
    std::vector<std::string> m_letters;
    std::size_t m_count = 0;
    std::size_t m_rowNumber = 0;
};

} // namespace

std::vector<ConversionPair> XLSXConverter::pairs() const
{
    return {xlsxToMarkdown, markdownToXlsx};
}

void XLSXConverter::convert(
    const fs::path &input, const fs::path &output, ConversionPair pair, std::stop_token stop) const
{
    if (pair != xlsxToMarkdown && pair != markdownToXlsx)
        throw ConversionError::unsupportedPair(pair.source, pair.target);
    UnfinishedOutput unfinished({output});
    if (pair == xlsxToMarkdown)
        readToMarkdown(input, output, stop);
    else
        writeFromMarkdown(input, output, stop);
    unfinished.keep();
}

std::vector<XLSXConverter::Sheet> XLSXConverter::orderedSheets(
    const UnpackedPackage &package, const std::stop_token &stop)
{
    std::vector<Sheet> sheets = sheetsOfWorkbook(package, stop);
    if (!sheets.empty())
        return sheets;
    for (fs::path &part : package.parts(package.root() / "xl/worksheets", "xml"))
        sheets.push_back({"Sheet " + std::to_string(sheets.size() + 1), std::move(part)});
    return sheets;
}

void XLSXConverter::readToMarkdown(const fs::path &input, const fs::path &output, const std::stop_token &stop)
{
    if (!File::isReadable(input))
        throw ConversionError::unreadableInput(input);
    const UnpackedPackage package = UnpackedPackage::unpack(input, stop);
    const SharedStrings shared = SharedStrings::read(package.part(package.root() / "xl/sharedStrings.xml"), stop);
    const CellFormats formats = CellFormats::fromStyles(package.part(package.root() / "xl/styles.xml"), stop);
    const std::vector<Sheet> sheets = orderedSheets(package, stop);

    FileWriter file(output);
    for (const Sheet &sheet : sheets) {
        const SheetRows rows = SheetParser::parse(sheet.part, shared, formats, stop);
        if (rows.isEmpty())
            continue;
        if (sheets.size() > 1)
            file.text.append("## ").append(sheet.name).append("\n\n");
        rows.appendTable(file.text, [&] {
            throwIfStopped(stop);
            file.flushIfLarge();
        });
        file.text += '\n';
    }
    file.finish();
}

void XLSXConverter::writeFromMarkdown(const fs::path &input, const fs::path &output, const std::stop_token &stop)
{
    const std::string text = TextFile::read(input);
    Scratch::withScratch([&](const Scratch &scratch) {
        const fs::path &root = scratch.dir();
        for (const char *folder : {"xl/worksheets", "_rels", "xl/_rels"})
            fs::create_directories(root / folder);
        SheetWriter writer(root / "xl/worksheets", stop);
        MarkdownTable::parse(text, writer);
        const std::size_t count = writer.finish();
        File::write(root / "[Content_Types].xml", XLSXWriter::contentTypes(count));
        File::write(root / "_rels/.rels", XLSXWriter::rootRels());
        File::write(root / "xl/workbook.xml", XLSXWriter::workbook(count));
        File::write(root / "xl/_rels/workbook.xml.rels", XLSXWriter::workbookRels(count));
        ArchiveTool::zip(root, output, stop);
    });
}

} // namespace nolfa
