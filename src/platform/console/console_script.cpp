#include "platform/console/console_script.h"

#include "util/text_codec.h"

#include <charconv>
#include <istream>

namespace platform {

namespace {

constexpr char kBlanks[] = " \t";

/// Cuts `text` at its first blank; the blank itself goes.
std::string cutWord(std::string& text) {
    const std::size_t blank = text.find(' ');
    std::string word = text.substr(0, blank);
    text = blank == std::string::npos ? std::string() : text.substr(blank + 1);
    return word;
}

}  // namespace

std::optional<ConsoleAction> ConsoleScript::next() {
    std::string line;
    while (std::getline(*in_, line)) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        const std::size_t first = line.find_first_not_of(kBlanks);
        if (first == std::string::npos || line[first] == '#') {
            continue;
        }
        ConsoleAction action;
        action.line = line.substr(first);
        action.rest = util::fromUtf8(action.line);
        action.verb = cutWord(action.rest);
        return action;
    }
    return std::nullopt;
}

ConsoleTarget consoleTarget(const ConsoleAction& action) {
    ConsoleTarget target;
    target.text = action.rest;
    std::string name = cutWord(target.text);
    const std::size_t open = name.find('(');
    if (open != std::string::npos && name.ends_with(')')) {
        target.index = consoleNumber(action, name.substr(open + 1, name.size() - open - 2));
        name.resize(open);
    }
    if (name.empty()) {
        throw ConsoleScriptError{"no control is named: " + action.line};
    }
    target.name = name;
    return target;
}

int consoleNumber(const ConsoleAction& action, const std::string& text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (text.empty() || result.ec != std::errc() || result.ptr != end || number < 0) {
        throw ConsoleScriptError{"\"" + text + "\" is no number: " + action.line};
    }
    return number;
}

}  // namespace platform
