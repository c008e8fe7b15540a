#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace util {

/// The text of a settings file: sections "[Name]" of lines "Key=Value". Lines end in CR LF, LF or
/// CR. A line that begins with ";", a line without "=" and what stands in front of the first
/// section is no key. Names are compared without letter case and without blanks and tabs at both
/// ends; of two that are equal the first counts. A change leaves every other line byte for byte.
class IniText {
public:
    explicit IniText(std::string_view bytes);

    /// What stands behind the "=", without blanks and tabs at both ends; nothing when there is no
    /// such key.
    [[nodiscard]] std::optional<std::string>
    value(std::string_view section, std::string_view key) const;
    /// Names of all sections, in the order of the file.
    [[nodiscard]] std::vector<std::string> sections() const;
    /// Names of the keys of the first section of that name. A key without a name is left out.
    [[nodiscard]] std::vector<std::string> keys(std::string_view section) const;

    /// Sets a value in the line that holds the key, or in a new last line of the section, or in a
    /// new section at the end. A name that stands in the file keeps its spelling.
    void set(std::string_view section, std::string_view key, std::string_view value);
    /// Removes the first line that holds the key.
    void removeKey(std::string_view section, std::string_view key);
    /// Removes the first section of that name with all lines up to the next one.
    void removeSection(std::string_view section);

    /// The whole text.
    [[nodiscard]] std::string bytes() const;

private:
    struct Line {
        std::string text;  ///< without its end
        std::string end;   ///< empty: the last line of a file that does not end in a line end
    };
    /// Lines of one section: the header, the first line behind it, the line behind the last.
    struct Range {
        std::size_t header = 0;
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    [[nodiscard]] std::optional<Range> find(std::string_view section) const;
    [[nodiscard]] std::optional<std::size_t> find(const Range& range, std::string_view key) const;
    void insert(std::size_t position, const std::string& text);
    void erase(std::size_t first, std::size_t last);

    std::vector<Line> lines_;
};

/// `text` without one pair of equal quotes, double or single, around it.
std::string_view withoutQuotes(std::string_view text);

/// `text` without blanks and tabs at both ends.
std::string_view trimSpace(std::string_view text);

}  // namespace util
