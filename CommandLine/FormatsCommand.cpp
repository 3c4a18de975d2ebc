#include "FormatsCommand.h"

#include "Platform/JSON.h"

#include <fmt/format.h>

namespace nolfa::CommandLine {

namespace {

struct Route {
    ConversionPair pair;
    std::optional<ConversionCapability> capability;
};

std::vector<Route> routes(const ConversionService &service)
{
    std::vector<Route> result;
    for (const DocumentFormat source : DocumentFormats::allCases) {
        for (const DocumentFormat target : service.supportedTargets(source))
            result.push_back({{source, target}, service.capability(source, target)});
    }
    return result;
}

JSON json(const Route &route)
{
    const auto &capability = route.capability;
    JSON::Object members{{"source", rawValue(route.pair.source)}, {"target", rawValue(route.pair.target)}};
    members.emplace_back("tier", capability ? JSON(rawValue(capability->tier)) : JSON());
    members.emplace_back("note", capability && capability->note ? JSON(*capability->note) : JSON());
    members.emplace_back("isMacOnly", capability && capability->isMacOnly);
    members.emplace_back("requiresNetwork", capability && capability->requiresNetwork);
    return members;
}

void printJSON(const std::vector<Route> &all, std::ostream &out)
{
    JSON::Array items;
    for (const Route &route : all)
        items.push_back(json(route));
    out << JSON(JSON::Object{{"version", 1}, {"routes", std::move(items)}}).text() << '\n';
}

void printTable(const std::vector<Route> &all, std::ostream &out)
{
    for (const Route &route : all) {
        const auto &capability = route.capability;
        std::string line = fmt::format("{:<9} → {:<9} {:<12} {}", rawValue(route.pair.source),
            rawValue(route.pair.target), capability ? label(capability->tier) : std::string(),
            capability ? capability->note.value_or("") : std::string());
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
}

} // namespace

ExitStatus runFormats(const ConversionService &service, const FormatsArguments &arguments, std::ostream &out)
{
    const std::vector<Route> all = routes(service);
    if (arguments.asJSON)
        printJSON(all, out);
    else
        printTable(all, out);
    out.flush();
    return ExitStatus::success;
}

} // namespace nolfa::CommandLine
