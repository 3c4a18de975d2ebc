#pragma once

#include <QUrl>
#include <optional>

namespace nolfa {

class Bundle;

/// How a user can give something back. Thread-safe.
namespace SupportInfo {

/// The payment page, a value of the build: "NolfaDonationURL" of the bundle. Absent where there is none.
[[nodiscard]] std::optional<QUrl> donationURL(const Bundle &bundle);

/// False as long as the address is a placeholder, one that holds "REPLACE_WITH".
[[nodiscard]] bool hasRealDonationLink(const std::optional<QUrl> &donationURL);

} // namespace SupportInfo

} // namespace nolfa
