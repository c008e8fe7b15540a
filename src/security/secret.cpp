#include "security/secret.h"

#include "util/overwrite.h"

namespace security {

void wipe(std::span<std::uint8_t> bytes) {
    util::overwrite(bytes.data(), bytes.size());
}

void wipe(std::span<std::uint32_t> words) {
    util::overwrite(words.data(), words.size());
}

void wipe(std::string& text) {
    text.resize(text.capacity());  // what an earlier, longer content left behind goes too
    util::overwrite(text.data(), text.size());
    text.clear();
}

bool sameSecret(std::string_view secret, std::string_view typed) {
    // Texts of different lengths differ; the walk is made all the same, over the typed one alone.
    const bool sameSize = secret.size() == typed.size();
    const std::string_view other = sameSize ? secret : typed;
    unsigned difference = sameSize ? 0U : 1U;
    for (std::size_t at = 0; at < typed.size(); ++at) {
        difference |= static_cast<unsigned>(static_cast<unsigned char>(other[at])) ^
                      static_cast<unsigned>(static_cast<unsigned char>(typed[at]));
    }
    return difference == 0;
}

Bytes bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// A moved short text would stay behind where it was, so it is copied and wiped.
Secret::Secret(std::string&& text) : text_(text) {  // NOLINT(*-rvalue-reference-param-not-moved)
    wipe(text);
}

Secret::~Secret() {
    wipe(text_);
}

}  // namespace security
