#include "CompareCommand.h"

#include "Compare/ComparisonReport.h"
#include "Compare/DocumentComparer.h"
#include "ComparisonJSON.h"
#include "Engine/ErrorMessage.h"
#include "Engine/FileName.h"
#include "Engine/OutputNaming.h"
#include "ProgressLine.h"

namespace nolfa::CommandLine {

namespace {

/// @return where it was written
std::filesystem::path writeReport(
    const DocumentComparison &comparison, const ReportArguments &report, const std::stop_token &stop)
{
    const std::filesystem::path wanted = std::filesystem::absolute(report.file);
    const OutputClaim claim
        = OutputNaming::claim(wanted.parent_path(), FileName::stem(wanted), FileName::pathExtension(wanted));
    ComparisonReport::write(comparison, claim.url(), report.format, stop);
    return claim.url();
}

void print(const DocumentComparison &comparison, const CompareArguments &arguments,
    const std::optional<std::filesystem::path> &report, std::ostream &out)
{
    if (arguments.asJSON)
        out << ComparisonJSON::text(comparison, report) << '\n';
    else if (report)
        out << report->native() << '\n';
    else
        out << ComparisonReport::markdown(comparison);
    out.flush();
}

} // namespace

ExitStatus runCompare(
    const ConversionService &service, const CompareArguments &arguments, std::ostream &out, const std::stop_token &stop)
{
    ProgressLine messages(false);
    try {
        const DocumentComparison comparison
            = DocumentComparer::compare(arguments.original, arguments.revised, service, {}, stop);
        std::optional<std::filesystem::path> report;
        if (arguments.report)
            report = writeReport(comparison, *arguments.report, stop);
        print(comparison, arguments, report, out);
        return out.good() ? ExitStatus::success : ExitStatus::documentFailed;
    } catch (const std::exception &error) {
        if (stop.stop_requested()) {
            messages.say(T("Interrupted.", "Interruption."));
            return ExitStatus::interrupted;
        }
        messages.say(FileName::display(arguments.original) + " ↔ " + FileName::display(arguments.revised) + ": "
            + ErrorMessage::sentence(error));
        return ExitStatus::documentFailed;
    }
}

} // namespace nolfa::CommandLine
