#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace util {

/// Fills `field` with the text as far as it goes, and with blanks behind it. The text does not
/// stand in the field.
inline void fillText(std::span<char> field, std::string_view text) {
    const std::size_t count = std::min(text.size(), field.size());
    std::copy_n(text.begin(), count, field.begin());
    std::fill(field.begin() + static_cast<std::ptrdiff_t>(count), field.end(), ' ');
}

/// True for a field that was never filled: it holds a byte of code 0.
inline bool isUnset(std::string_view field) {
    return field.find('\0') != std::string_view::npos;
}

/// A text field of a record: exactly `Width` bytes of code page 1252.
/// A fresh field holds bytes of code 0, which tells it from one that was filled; filling pads with
/// blanks on the right and cuts what does not fit.
template <std::size_t Width>
class FixedText {
public:
    static constexpr std::size_t kWidth = Width;

    FixedText() { bytes_.fill('\0'); }
    // A record field takes plain texts as they come: assignment is its everyday use.
    FixedText(std::string_view text) { assign(text); }    // NOLINT(google-explicit-constructor)
    FixedText(const std::string& text) { assign(text); }  // NOLINT(google-explicit-constructor)
    FixedText(const char* text) { assign(std::string_view(text)); }  // NOLINT

    template <class Text>
    requires std::is_convertible_v<const Text&, std::string_view> FixedText&
    operator=(const Text& text) {
        assign(std::string_view(text));
        return *this;
    }

    /// All `Width` bytes, padding included.
    [[nodiscard]] std::string_view view() const { return {bytes_.data(), Width}; }
    /// All `Width` bytes as a string of its own.
    [[nodiscard]] std::string str() const { return std::string(view()); }
    /// The text without blanks at both ends (only blanks: code 0 and tabs stay).
    [[nodiscard]] std::string trimmed() const {
        const std::string_view all = view();
        const std::size_t first = all.find_first_not_of(' ');
        if (first == std::string_view::npos) {
            return {};
        }
        return std::string(all.substr(first, all.find_last_not_of(' ') - first + 1));
    }
    [[nodiscard]] bool isUnset() const { return util::isUnset(view()); }

    friend bool operator==(const FixedText& left, const FixedText& right) {
        return left.view() == right.view();
    }

private:
    void assign(std::string_view text) {
        std::array<char, Width> filled;  // apart: `text` can be a piece of this field
        fillText(filled, text);
        bytes_ = filled;
    }

    std::array<char, Width> bytes_;
};

}  // namespace util
