#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Care for texts that nobody else is to see. What grows, moves or is copied leaves its former self
/// in memory: such texts are made at their full size, handed over by return and wiped where they
/// end.
namespace security {

using Bytes = std::vector<std::uint8_t>;

/// Room for a password while it is typed, character by character: the field never grows.
inline constexpr std::size_t kTypedRoom = 64;

/// Overwrites the units with zeros; the compiler does not leave that out.
void wipe(std::span<std::uint8_t> bytes);
void wipe(std::span<std::uint32_t> words);
/// Overwrites the text, its spare room included, and leaves it empty.
void wipe(std::string& text);

/// True when both texts are the same, byte by byte. The time it takes depends on the length of
/// `typed` only: neither on the length of `secret` nor on where they differ.
bool sameSecret(std::string_view secret, std::string_view typed);

/// The bytes of a text, one a character.
Bytes bytesOf(std::string_view text);

/// The text without blanks at both ends, which stays where it is: trimming makes no copy.
std::string_view trimmed(std::string_view text);

/// Wipes a text or bytes at the end of a block, however that is left.
template <class Text>
class WipedAtEnd {
public:
    explicit WipedAtEnd(Text& text) : text_(text) {}
    ~WipedAtEnd() { wipe(text_); }
    WipedAtEnd(const WipedAtEnd&) = delete;
    WipedAtEnd& operator=(const WipedAtEnd&) = delete;
    WipedAtEnd(WipedAtEnd&&) = delete;
    WipedAtEnd& operator=(WipedAtEnd&&) = delete;

private:
    Text& text_;
};

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
