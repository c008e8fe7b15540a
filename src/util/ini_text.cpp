#include "util/ini_text.h"

#include "util/conversions.h"

#include <algorithm>

namespace util {

namespace {

constexpr std::string_view kSpace = " \t";
constexpr char kLineEnd[] = "\r\n";

/// Name of the section that a line begins; nothing when it begins none.
std::optional<std::string_view> headerOf(std::string_view line) {
    const std::string_view text = trimSpace(line);
    const std::size_t close = text.rfind(']');
    if (!text.starts_with('[') || close == std::string_view::npos) {
        return std::nullopt;
    }
    return trimSpace(text.substr(1, close - 1));
}

struct KeyLine {
    std::string_view key;
    std::string_view value;
};

/// Key and value of a line; nothing when it holds none.
std::optional<KeyLine> keyOf(std::string_view line) {
    const std::string_view text = trimSpace(line);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || text.starts_with(';')) {
        return std::nullopt;
    }
    return KeyLine{trimSpace(text.substr(0, equals)), trimSpace(text.substr(equals + 1))};
}

bool isSame(std::string_view left, std::string_view right) {
    return sameName(trimSpace(left), trimSpace(right));
}

}  // namespace

std::string_view trimSpace(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kSpace);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

std::string_view withoutQuotes(std::string_view text) {
    const bool isQuoted = text.size() > 1 && text.front() == text.back() &&
                          (text.front() == '"' || text.front() == '\'');
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

IniText::IniText(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        std::size_t next = std::min(end + 1, bytes.size());
        if (bytes.substr(end).starts_with(kLineEnd)) {
            next = end + 2;
        }
        lines_.push_back(
            {std::string(bytes.substr(0, end)), std::string(bytes.substr(end, next - end))}
        );
        bytes.remove_prefix(next);
    }
}

std::optional<IniText::Range> IniText::find(std::string_view section) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const auto name = headerOf(lines_[i].text);
        if (!name || !isSame(*name, section)) {
            continue;
        }
        std::size_t end = i + 1;
        while (end < lines_.size() && !headerOf(lines_[end].text)) {
            ++end;
        }
        return Range{i, i + 1, end};
    }
    return std::nullopt;
}

std::optional<std::size_t> IniText::find(const Range& range, std::string_view key) const {
    for (std::size_t i = range.begin; i < range.end; ++i) {
        const auto line = keyOf(lines_[i].text);
        if (line && isSame(line->key, key)) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::string> IniText::value(std::string_view section, std::string_view key) const {
    const auto range = find(section);
    const auto line = range ? find(*range, key) : std::nullopt;
    if (!line) {
        return std::nullopt;
    }
    return std::string(keyOf(lines_[*line].text)->value);
}

std::vector<std::string> IniText::sections() const {
    std::vector<std::string> names;
    for (const Line& line : lines_) {
        if (const auto name = headerOf(line.text)) {
            names.emplace_back(*name);
        }
    }
    return names;
}

std::vector<std::string> IniText::keys(std::string_view section) const {
    std::vector<std::string> names;
    const auto range = find(section).value_or(Range{});
    for (std::size_t i = range.begin; i < range.end; ++i) {
        const auto line = keyOf(lines_[i].text);
        if (line && !line->key.empty()) {
            names.emplace_back(line->key);
        }
    }
    return names;
}

void IniText::set(std::string_view section, std::string_view key, std::string_view value) {
    auto range = find(section);
    if (!range) {
        insert(lines_.size(), "[" + std::string(trimSpace(section)) + "]");
        range = Range{lines_.size() - 1, lines_.size(), lines_.size()};
    }
    const auto textOf = [value](std::string_view name) {
        return std::string(name) + "=" + std::string(value);
    };
    const auto line = find(*range, key);
    if (!line) {
        std::size_t position = range->end;
        while (position > range->begin && trimSpace(lines_[position - 1].text).empty()) {
            --position;
        }
        insert(position, textOf(trimSpace(key)));
        return;
    }
    const auto held = keyOf(lines_[*line].text);
    if (held->value != value) {
        lines_[*line].text = textOf(held->key);
    }
}

void IniText::removeKey(std::string_view section, std::string_view key) {
    const auto range = find(section);
    const auto line = range ? find(*range, key) : std::nullopt;
    if (line) {
        erase(*line, *line + 1);
    }
}

void IniText::removeSection(std::string_view section) {
    if (const auto range = find(section)) {
        erase(range->header, range->end);
    }
}

void IniText::insert(std::size_t position, const std::string& text) {
    // A new line ends as the line in front of it does, so that a file keeps one kind of line end.
    std::string end = kLineEnd;
    if (position > 0) {
        std::string& before = lines_[position - 1].end;
        before = before.empty() ? end : before;
        end = before;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(position), Line{text, end});
}

void IniText::erase(std::size_t first, std::size_t last) {
    lines_.erase(
        lines_.begin() + static_cast<std::ptrdiff_t>(first),
        lines_.begin() + static_cast<std::ptrdiff_t>(last)
    );
}

std::string IniText::bytes() const {
    std::string all;
    for (const Line& line : lines_) {
        all.append(line.text).append(line.end);
    }
    return all;
}

}  // namespace util
