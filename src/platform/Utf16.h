// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// UTF-8 from and to UTF-16 as it stands in a file, without its byte order mark. A byte that is no UTF-8 is
// the lone surrogate U+DC00 + byte, so every text comes back as it was. Not so every file: other lone
// surrogates and a byte too many become U+FFFD.
namespace platform {

enum class ByteOrder { Little, Big };

std::string FromUtf16(std::string_view units, ByteOrder order);
std::string ToUtf16(std::string_view text, ByteOrder order);

}  // namespace platform
