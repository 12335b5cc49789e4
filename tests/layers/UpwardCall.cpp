// SPDX-License-Identifier: MIT
#include <string_view>

// Stands on the platform layer alone and declares for itself what belongs to a layer above.
std::string_view ErrorText(int errorNumber);
std::string_view UpwardCall();

std::string_view UpwardCall() {
    return ErrorText(5);
}
