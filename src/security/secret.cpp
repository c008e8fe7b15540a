#include "security/secret.h"

#include <algorithm>

namespace security {

void wipe(std::span<std::uint8_t> bytes) {
    volatile std::uint8_t* const first = bytes.data();
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        first[at] = 0;
    }
}

void wipe(std::string& text) {
    text.resize(text.capacity());  // what an earlier, longer content left behind goes too
    volatile char* const first = text.data();
    for (std::size_t at = 0; at < text.size(); ++at) {
        first[at] = '\0';
    }
    text.clear();
}

bool sameSecret(std::string_view left, std::string_view right) {
    unsigned difference = left.size() == right.size() ? 0U : 1U;
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t at = 0; at < common; ++at) {
        difference |= static_cast<unsigned>(static_cast<unsigned char>(left[at])) ^
                      static_cast<unsigned>(static_cast<unsigned char>(right[at]));
    }
    return difference == 0;
}

Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

// A moved short text would stay behind where it was, so it is copied and wiped.
Secret::Secret(std::string&& text) : text_(text) {  // NOLINT(*-rvalue-reference-param-not-moved)
    wipe(text);
}

Secret::~Secret() {
    wipe(text_);
}

}  // namespace security
