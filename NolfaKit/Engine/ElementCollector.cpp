#include "Engine/ElementCollector.h"

#include "Engine/ReadingLimits.h"
#include "Platform/XMLReader.h"

namespace nolfa::ElementCollector {

namespace {

class Collector : public XMLHandler {
public:
    explicit Collector(std::string_view name)
        : m_name(name)
    {
    }

    void startElement(std::string_view name, const XMLAttributes &attributes) override
    {
        if (name != m_name)
            return;
        Attributes &element = elements.emplace_back();
        attributes.forEach([this, &element](std::string_view key, std::string_view text) {
            m_size += key.size() + text.size() + overhead;
            element.emplace(key, text);
        });
        ReadingLimits::require(m_size += overhead, ReadingLimits::keptAttributes);
    }
    void endElement(std::string_view /*name*/) override { }
    void characters(std::string_view /*text*/) override { }

    std::vector<Attributes> elements;

private:
    /// What keeping a string costs besides its bytes, or so.
    static constexpr std::size_t overhead = 64;

    std::string_view m_name;
    std::size_t m_size = 0;
};

} // namespace

std::vector<Attributes> collect(
    std::string_view name, const std::optional<std::filesystem::path> &part, const std::stop_token &stop)
{
    Collector collector(name);
    if (part)
        XMLReader::read(*part, collector, stop);
    return std::move(collector.elements);
}

std::optional<std::string> value(const Attributes &attributes, std::string_view name)
{
    const auto found = attributes.find(name);
    return found == attributes.end() ? std::nullopt : std::optional(found->second);
}

std::map<std::string, std::string, std::less<>> relationshipTargets(
    const std::optional<std::filesystem::path> &part, const std::stop_token &stop)
{
    std::map<std::string, std::string, std::less<>> targets;
    for (const Attributes &relationship : collect("Relationship", part, stop)) {
        const std::optional<std::string> id = value(relationship, "Id");
        const std::optional<std::string> target = value(relationship, "Target");
        if (id && target)
            targets.insert_or_assign(*id, *target);
    }
    return targets;
}

} // namespace nolfa::ElementCollector
