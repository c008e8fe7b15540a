#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Care for texts that nobody else is to see.
namespace security {

using Bytes = std::vector<std::uint8_t>;

/// Overwrites the bytes with zeros; the compiler does not leave that out.
void wipe(std::span<std::uint8_t> bytes);
/// Overwrites the text, its spare room included, and leaves it empty.
void wipe(std::string& text);

/// True when both texts are the same, byte by byte. The time it takes depends on their lengths
/// only, never on where they differ.
bool sameSecret(std::string_view left, std::string_view right);

/// The bytes of a text, one a character.
Bytes bytesOf(std::string_view text);

/// A text that is overwritten when it goes out of use.
class Secret {
public:
    /// Takes the text over; the given one is wiped.
    explicit Secret(std::string&& text);
    ~Secret();
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    Secret(Secret&&) = delete;
    Secret& operator=(Secret&&) = delete;

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] bool empty() const { return text_.empty(); }

private:
    std::string text_;
};

}  // namespace security
