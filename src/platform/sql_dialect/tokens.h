#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

enum class TokenKind : std::uint8_t { word, text, number, symbol, end };

/// One piece of a statement. Texts are without their quotes, doubled quotes made single; names in
/// brackets or double quotes are words. The last token of a list is always `end`.
struct Token {
    TokenKind kind = TokenKind::end;
    std::string text;
    bool quoted = false;     ///< a word that stood in brackets or double quotes
    std::size_t offset = 0;  ///< where it begins in the statement
    std::size_t length = 0;  ///< bytes it takes there

    /// True for this symbol, or for this bare word without regard to letter case.
    [[nodiscard]] bool is(std::string_view other) const;
};

/// Cuts a statement (code page 1252) into tokens. @throws PlatformError 105 for an open quote.
std::vector<Token> tokenize(std::string_view statement);

/// True when two names are the same without regard to the case of ASCII letters.
bool sameSqlName(std::string_view left, std::string_view right);

}  // namespace platform
