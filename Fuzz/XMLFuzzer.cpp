#include "Check.h"

#include "Platform/XMLReader.h"

#include <string>

namespace {

/// All that was heard, with marks between that no document holds; pieces of text joined.
class Recorder : public nolfa::XMLHandler {
public:
    void startElement(std::string_view name, const nolfa::XMLAttributes &attributes) override
    {
        heard.append("\x01").append(name);
        attributes.forEach([this](std::string_view key, std::string_view value) {
            heard.append("\x02").append(key).append("\x03").append(value);
        });
        heard += '\x04';
    }
    void endElement(std::string_view name) override { heard.append("\x05").append(name).append("\x04"); }
    void characters(std::string_view text) override { heard += text; }

    std::string heard;
};

} // namespace

/// The fast road and the general parser must tell the same of every document.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Recorder fast;
    Recorder plain;
    const auto outcome = nolfa::XMLReader::read(textOf(data, size), fast);
    check(outcome == nolfa::XMLReader::readPlainly(textOf(data, size), plain));
    check(fast.heard == plain.heard);
    return 0;
}
