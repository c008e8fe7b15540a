#include "platform/qt/layout.h"

#include "util/conversions.h"

#include <algorithm>
#include <charconv>

namespace platform::layout {

namespace {

int numberAt(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

struct Mark {
    char mark;
    bool Cell::*meaning;
};
constexpr Mark kMarks[] = {
    {'*', &Cell::wide},
    {'+', &Cell::high},
    {'!', &Cell::noCaption},
    {'>', &Cell::right},
    {'#', &Cell::big},
    {'?', &Cell::hidesEmpty},
};

/// Cuts the marks behind a place's name off and takes them in.
void takeMarks(std::string_view& token, Cell& cell) {
    const std::size_t colon = token.rfind(':');
    if (colon != std::string_view::npos) {
        cell.span = numberAt(token.substr(colon + 1));
        token = token.substr(0, colon);
    }
    const auto isMark = [&](const Mark& row) { return token.back() == row.mark; };
    for (const auto* row = std::find_if(std::begin(kMarks), std::end(kMarks), isMark);
         row != std::end(kMarks);
         row = std::find_if(std::begin(kMarks), std::end(kMarks), isMark)) {
        cell.*row->meaning = true;
        token.remove_suffix(1);
    }
}

/// Adds "chkExport(3)" to the names of a place.
void addName(std::string_view token, Cell& cell) {
    int index = ui::kNoIndex;
    const std::size_t open = token.find('(');
    if (open != std::string_view::npos) {
        index = token[open + 1] == '*' ? kEachIndex : numberAt(token.substr(open + 1));
        token = token.substr(0, open);
    }
    cell.names.emplace_back(token);
    cell.indexes.push_back(index);
}

Cell cellOf(std::string_view token) {
    Cell cell;
    if (token == "...") {
        cell.kind = Cell::Kind::spare;
        return cell;
    }
    if (token == ".") {
        cell.kind = Cell::Kind::empty;
        return cell;
    }
    takeMarks(token, cell);
    if (token.front() == '[') {
        cell.kind = Cell::Kind::box;
        cell.names.emplace_back(token.substr(1, token.size() - 2));
        return cell;
    }
    if (token.front() == '^') {
        cell.kind = Cell::Kind::heading;
        token.remove_prefix(1);
    }
    if (const std::size_t gap = token.find('~'); gap != std::string_view::npos) {
        cell.inGap = std::string(token.substr(gap + 1));
        token = token.substr(0, gap);
    }
    while (!token.empty()) {
        const std::size_t slash = token.find('/');
        addName(token.substr(0, slash), cell);
        token = slash == std::string_view::npos ? std::string_view() : token.substr(slash + 1);
    }
    return cell;
}

}  // namespace

const char* spokenName(const Window* window, std::string_view control, int index) {
    if (window == nullptr) {
        return "";
    }
    const auto found =
        std::find_if(window->names.begin(), window->names.end(), [&](const Spoken& row) {
            return row.index == index && util::sameName(row.control, control);
        });
    return found == window->names.end() ? "" : found->name;
}

std::vector<Cell> cellsOf(std::string_view cells) {
    std::vector<Cell> result;
    while (!cells.empty()) {
        const std::size_t blank = cells.find(' ');
        const std::string_view token = cells.substr(0, blank);
        if (!token.empty()) {
            result.push_back(cellOf(token));
        }
        cells = blank == std::string_view::npos ? std::string_view() : cells.substr(blank + 1);
    }
    return result;
}

}  // namespace platform::layout
