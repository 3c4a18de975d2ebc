#pragma once

#include "Engine/CellFormats.h"
#include "Engine/SharedStrings.h"
#include "Engine/SheetRows.h"
#include "Platform/XMLReader.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace nolfa {

/// Reads one worksheet part: cached values as they are displayed, formulas ignored. Not thread-safe.
class SheetParser : public XMLHandler {
public:
    /// Both must outlive the parser.
    SheetParser(const SharedStrings &shared, const CellFormats &formats);

    /// The rows of a part; none when it can't be opened, those before the error when it is malformed.
    /// @throws ConversionError when the sheet is too large, CancellationError
    [[nodiscard]] static SheetRows parse(const std::filesystem::path &part, const SharedStrings &shared,
        const CellFormats &formats, const std::stop_token &stop);

    /// Zero-based, from the letters at the start of a cell reference: "A1" is 0, "b2" 1, "AA1" 26; 0 without letters.
    [[nodiscard]] static std::uint64_t columnIndex(std::string_view reference);

    void startElement(std::string_view name, const XMLAttributes &attributes) override;
    void endElement(std::string_view name) override;
    void characters(std::string_view text) override;

    [[nodiscard]] SheetRows takeRows() { return std::move(m_rows); }

private:
    enum class CellType { number, sharedString, boolean, text };

    void startCell(const XMLAttributes &attributes);
    [[nodiscard]] std::string_view resolvedValue();

    const SharedStrings &m_shared;
    const CellFormats &m_formats;
    SheetRows m_rows;
    CellType m_cellType = CellType::number;
    std::optional<std::int64_t> m_cellStyle;
    std::uint64_t m_cellColumn = 0;
    bool m_capturing = false;
    std::string m_value;
    std::string m_rendered;
};

} // namespace nolfa
