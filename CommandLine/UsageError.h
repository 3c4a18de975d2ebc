#pragma once

#include <stdexcept>
#include <string>

namespace nolfa::CommandLine {

/// Wrong usage; what() is the sentence for the user.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Ends the reading of arguments with a sentence, in both languages, and says where help is.
/// @throws UsageError
[[noreturn]] void failUsage(std::string en, std::string fr);

} // namespace nolfa::CommandLine
