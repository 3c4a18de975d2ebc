#pragma once

#include "Engine/Converter.h"
#include "Engine/UnpackedPackage.h"

#include <string>

namespace nolfa {

/// Excel to Markdown, each worksheet a pipe table; Markdown to Excel, each pipe table a worksheet.
class XLSXConverter : public Converter {
public:
    struct Sheet {
        std::string name;
        std::filesystem::path part;
        bool operator==(const Sheet &) const = default;
    };

    [[nodiscard]] std::vector<ConversionPair> pairs() const override;

    void convert(const std::filesystem::path &input, const std::filesystem::path &output, ConversionPair pair,
        std::stop_token stop) const override;

    /// The worksheets in the workbook's order, hidden ones included; without a usable list all that lie in the
    /// package, by file name.
    /// @throws ConversionError when the list names parts again without end
    [[nodiscard]] static std::vector<Sheet> orderedSheets(const UnpackedPackage &package, const std::stop_token &stop);

private:
    static void readToMarkdown(
        const std::filesystem::path &input, const std::filesystem::path &output, const std::stop_token &stop);
    static void writeFromMarkdown(
        const std::filesystem::path &input, const std::filesystem::path &output, const std::stop_token &stop);
};

} // namespace nolfa
