#include "ProgressLine.h"

#include "Platform/Terminal.h"
#include "Platform/Unicode.h"

#include <iostream>
#include <string>

namespace nolfa::CommandLine {

namespace {

/// Cuts at a number of code points, which is near enough to columns for a line that is redrawn all the time.
std::string shortened(std::string text, std::size_t columns)
{
    std::size_t count = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool startsCharacter = (static_cast<unsigned char>(text[index]) & 0xC0U) != 0x80U;
        if (startsCharacter && count++ == columns) {
            text.resize(index);
            break;
        }
    }
    return text;
}

} // namespace

ProgressLine::ProgressLine(bool isShown)
    : m_isShown(isShown)
{
}

ProgressLine::~ProgressLine()
{
    clear();
}

void ProgressLine::show(std::size_t done, std::size_t total, std::string_view name)
{
    if (!m_isShown)
        return;
    const std::string text = std::to_string(done) + "/" + std::to_string(total) + "  " + Unicode::printable(name);
    std::cerr << "\r\033[K" << shortened(text, Terminal::errorWidth() - 1) << std::flush;
    m_isDrawn = true;
}

void ProgressLine::clear()
{
    if (m_isDrawn)
        std::cerr << "\r\033[K" << std::flush;
    m_isDrawn = false;
}

void ProgressLine::say(std::string_view sentence)
{
    clear();
    std::cerr << Unicode::printable(sentence) << std::endl;
}

} // namespace nolfa::CommandLine
