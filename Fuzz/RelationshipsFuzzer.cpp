#include "Part.h"

#include "Engine/ElementCollector.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::filesystem::path part = partOf(data, size);
    const auto targets = nolfa::ElementCollector::relationshipTargets(part, {});
    const auto elements = nolfa::ElementCollector::collect("Relationship", part, {});
    check(targets.size() <= elements.size());
    for (const auto &element : elements) {
        const auto id = nolfa::ElementCollector::value(element, "Id");
        const auto target = nolfa::ElementCollector::value(element, "Target");
        check(!id || !target || targets.contains(*id));
    }
    return 0;
}
