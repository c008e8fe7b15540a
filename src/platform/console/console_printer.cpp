#include "platform/console/console_printer.h"

#include "util/text_codec.h"

#include <ostream>

namespace platform {

namespace {

/// The text as it stands between the marks of a line.
std::string escaped(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        switch (text[at]) {
        case '\r':
            if (at + 1 < text.size() && text[at + 1] == '\n') {
                ++at;
            }
            [[fallthrough]];
        case '\n':
            result += "\\n";
            break;
        case '\\':
        case '|':
            result += '\\';
            [[fallthrough]];
        default:
            result += text[at];
        }
    }
    return util::toUtf8(result);
}

const char* kindWord(ui::Kind kind) {
    static constexpr const char* kWords[] = {
        "label",
        "button",
        "checkBox",
        "optionButton",
        "textBox",
        "passwordBox",
        "dropDown",
        "grid",
        "frame",
        "menuItem",
        "datePicker",
        "fileDialog",
    };
    return kWords[static_cast<std::size_t>(kind)];
}

const char* buttonsWord(BoxButtons buttons) {
    static constexpr const char* kWords[] = {"ok", "ok/cancel", "yes/no"};
    return kWords[static_cast<std::size_t>(buttons)];
}

std::string nameOf(const ui::ControlState& state) {
    const bool isArray = state.index != ui::kNoIndex;
    return state.name + (isArray ? "(" + std::to_string(state.index) + ")" : "");
}

std::string valueOf(const ui::ControlState& state) {
    using ui::Kind;
    switch (state.kind) {
    case Kind::checkBox:
    case Kind::optionButton:
        return std::to_string(state.value);
    case Kind::grid:
        return std::to_string(state.rows.size());
    case Kind::passwordBox:
        return state.text.empty() ? "\"\"" : "\"***\"";
    case Kind::textBox:
    case Kind::dropDown:
    case Kind::datePicker:
        return "\"" + escaped(state.text) + "\"";
    default:
        return "\"" + escaped(state.caption) + "\"";
    }
}

}  // namespace

const char* answerWord(BoxAnswer answer) {
    static constexpr const char* kWords[] = {"ok", "cancel", "yes", "no"};
    return kWords[static_cast<std::size_t>(answer)];
}

void ConsolePrinter::line(const std::string& text) {
    *out_ << text << '\n' << std::flush;
}

void ConsolePrinter::window(const ui::Form& form) {
    line("[window] " + form.name() + " \"" + escaped(form.title()) + "\"");
}

void ConsolePrinter::status(const std::string& text) {
    line("[status] " + escaped(text));
}

void ConsolePrinter::box(
    const std::string& title, const std::string& text, BoxButtons buttons, BoxAnswer answer
) {
    line(
        "[box] " + escaped(title) + " | " + escaped(text) + " | " + buttonsWord(buttons) + " -> " +
        answerWord(answer)
    );
}

void ConsolePrinter::document(const std::string& name) {
    line("[open] " + escaped(name));
}

void ConsolePrinter::fileChoice(
    const std::string& title, const std::string& startPath, const std::string& file
) {
    line(
        "[file] " + escaped(title) + " | " + escaped(startPath) + " -> " +
        (file.empty() ? "cancel" : escaped(file))
    );
}

void ConsolePrinter::refused(const std::string& action, const std::string& reason) {
    line("[refused] " + action + ": " + reason);
}

void ConsolePrinter::control(ui::Form& form, const ui::ControlState& state) {
    line(
        "[control] " + nameOf(state) + " " + kindWord(state.kind) + " " + valueOf(state) + " " +
        (state.enabled ? "enabled" : "disabled") + " " +
        (form.isShown(state) ? "visible" : "hidden")
    );
    for (const auto& row : state.rows) {
        std::string text = "[row] ";
        for (std::size_t column = 0; column < row.size(); ++column) {
            text += (column == 0 ? "" : " | ") + escaped(row[column]);
        }
        line(text);
    }
}

}  // namespace platform
