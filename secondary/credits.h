// SPDX-License-Identifier: GPL-3.0-or-later
// Where the author is reached and where the program is downloaded: the about window shows both,
// and the invoice's credit line ends with the same contact address.
#pragma once

namespace credits {

inline constexpr const char* kContactAddress = "tobin.arle@ledgerly.example";
// Shown as it stands and handed to the browser so, with no scheme in front.
inline constexpr const char* kDownloadPage = "www.ledgerly.example/download";

}  // namespace credits
