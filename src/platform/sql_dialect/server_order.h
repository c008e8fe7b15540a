#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Order of two texts of code page 1252 as the server sorts characters: blank and the punctuation
/// up to "/", other signs, digits, letters with accented ones behind their letter. Letter case and
/// blanks at the end do not matter. Negative, 0 or positive.
int compareServerOrder(std::string_view left, std::string_view right);

/// A text whose order by bytes never contradicts the server's order: left <= right gives
/// key(left) <= key(right), equal texts give equal keys. It ends at the first character that ASCII
/// capitals cannot sort, so different texts may share a key. Pure ASCII.
std::string serverOrderKey(std::string_view text);

/// Accented letters (code page 1252, one character each) and, at the same places, the ASCII letter
/// that each sorts behind.
struct AccentedLetters {
    std::string letters;
    std::string bases;
};
const AccentedLetters& accentedLetters();

/// The characters that an order by bytes of ASCII capitals sorts as the server does.
const std::string& simpleCharacters();

}  // namespace platform
