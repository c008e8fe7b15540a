#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace companyfile {

/// `utf8` in lower case, accented western letters included: the form in which names compare.
std::string folded(std::string_view utf8);
/// Without blanks, tabs and line breaks at both ends.
std::string_view trimmed(std::string_view text);
/// Number of characters of UTF-8 text.
std::size_t characterCount(std::string_view utf8);
/// `utf8` with every character that the western code page lacks replaced by "?".
std::string westernOnly(std::string_view utf8);
/// Appends the character `codePoint` as UTF-8.
void appendUtf8(std::string& out, char32_t codePoint);
/// Takes the next character off the front of `utf8`; a broken sequence gives its first byte.
char32_t nextCharacter(std::string_view& utf8);

/// Tests `text` by one of the words Equals, StartsWith, Contains, EndsWith; both in the same case
/// form.
bool matches(std::string_view criterion, std::string_view text, std::string_view part);
/// An id as the wire shows it: the number in hexadecimal digits, a hyphen, the moment in seconds.
std::string idText(std::int64_t number, std::int64_t now);
/// The pieces of `text` between `separator`s, empty ones included.
std::vector<std::string_view> split(std::string_view text, char separator);
/// Takes `suffix` off the end of `text`; false, with `text` as it was, when it does not end so.
bool removeSuffix(std::string_view& text, std::string_view suffix);

}  // namespace companyfile
