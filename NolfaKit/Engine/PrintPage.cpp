#include "Engine/PrintPage.h"

namespace nolfa {

namespace {

constexpr std::string_view styleSheet
    = "body { font-family: \"Hanken Grotesk\", -apple-system, sans-serif; font-size: 12pt; line-height: 1.5; "
      "color: #1A1714; }\n"
      "h1, h2, h3, h4 { font-family: \"Newsreader 24pt\", Georgia, serif; color: #1A1714; font-weight: 600; }\n"
      "h1 { font-size: 25pt; } h2 { font-size: 19pt; } h3 { font-size: 15pt; }\n"
      "a { color: #6E2433; }\n"
      "blockquote { color: #5B6068; }\n"
      "code, pre { font-family: \"IBM Plex Mono\", monospace; font-size: 10.5pt; }\n"
      "th, td { border: 1px solid #E3DACB; padding: 4px 8px; }\n"
      "th { background-color: #F7EFE0; }";

} // namespace

std::string printPage(std::string_view body)
{
    std::string page = "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><style>";
    page += styleSheet;
    page += "</style></head><body>";
    page += body;
    page += "</body></html>";
    return page;
}

} // namespace nolfa
