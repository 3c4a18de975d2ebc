#include "Check.h"

#include "Engine/MarkdownTable.h"
#include "Engine/XLSXWriter.h"

#include <algorithm>

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    for (MarkdownTable::Table &table : MarkdownTable::parse(textOf(data, size))) {
        std::size_t width = 0;
        for (const MarkdownTable::Row &row : table) {
            width = std::max(width, row.size());
            for (const std::string &cell : row)
                check(cell.find_first_of("|\n") == std::string::npos);
        }
        if (width * table.size() > 1U << 16U)
            continue;
        check(!XLSXWriter::sheet(table).empty());
        // What is rendered reads back, evened out.
        const std::vector<MarkdownTable::Table> again = MarkdownTable::parse(MarkdownTable::render(table));
        for (MarkdownTable::Row &row : table)
            row.resize(width);
        check(again == std::vector<MarkdownTable::Table>{table});
    }
    return 0;
}
