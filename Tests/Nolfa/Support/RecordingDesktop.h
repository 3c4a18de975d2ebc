#pragma once

#include "Nolfa/Support/Desktop.h"

namespace nolfa::testing {

/// Remembers what it was asked for.
class RecordingDesktop : public Desktop {
public:
    using Files = std::vector<std::filesystem::path>;

    void reveal(const Files &files) override { revealed.push_back(files); }
    void open(const std::filesystem::path &file) override { opened.push_back(file); }

    std::vector<Files> revealed; ///< one entry a call
    Files opened;
};

} // namespace nolfa::testing
