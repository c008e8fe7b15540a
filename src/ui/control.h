#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ui {

/// What a control is; an adapter draws one widget for each kind.
enum class Kind : std::uint8_t {
    label,
    button,
    checkBox,
    optionButton,
    textBox,
    passwordBox,
    dropDown,
    grid,
    frame,
    menuItem,
    datePicker,
    fileDialog,  ///< never seen; caption: title of the dialog, text: the file chosen last
};

/// What happened to a control or a form.
enum class Signal : std::uint8_t { load, activate, unload, click, enter, leave, change, select };

/// A control that stands alone; members of a control array count from 0.
inline constexpr int kNoIndex = -1;

/// Start states of a control, joined by `|`.
inline constexpr unsigned kPlain = 0;
inline constexpr unsigned kHidden = 1;
inline constexpr unsigned kDisabled = 2;
inline constexpr unsigned kLocked = 4;   ///< a field that shows but takes no typing
inline constexpr unsigned kChecked = 8;  ///< a check box or option button that starts on

/// Description of one control, a row of a form's table.
struct Control {
    Kind kind;
    const char* name;
    int index;            ///< kNoIndex, or the place in a control array
    const char* caption;  ///< label of the control; a text box starts empty
    unsigned start = kPlain;
    const char* parent = "";  ///< name of the frame that holds it; hidden with it
};

/// A key that acts wherever the focus is, before the control under focus sees it.
struct Key {
    const char* key;      ///< "F8", "Esc"
    const char* control;  ///< acts as a click on it when it is enabled and visible
    int index = kNoIndex;
};

/// What a control holds at the moment.
struct ControlState {
    Kind kind = Kind::label;
    std::string name;
    int index = kNoIndex;
    std::string caption;
    std::string parent;
    std::string text;  ///< text of a field, picked entry of a list; code page 1252
    int value = 0;     ///< 1: a check box or option button is on
    bool enabled = true;
    bool visible = true;
    bool locked = false;
    std::vector<std::string> items;              ///< entries of a list
    std::vector<std::vector<std::string>> rows;  ///< cells of a grid, header first
};

}  // namespace ui
