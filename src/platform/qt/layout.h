#pragma once

#include "ui/form.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Where the controls of a window stand, as data.
namespace platform::layout {

/// One line of a box, from top to bottom. `cells` holds what stands side by side, parted by blanks:
///
///     cmdStop            a control; a field that has a caption takes two places, caption and field
///     chkExport(3)       a member of a control array; "(*)" makes a line for each member
///     Cmdexport/CmdManual  controls that share one place, of which one is seen at a time
///     lblNet~txtNet      a field inside the gap that the label's caption leaves
///     ^txtTaxRate(0)     the caption of a control, as the heading of what stands below
///     [terms]            a box, described by the lines that bear its name
///     .                  an empty place
///     ...                takes the spare width
///
/// and behind it, a span last: `*` takes the spare width, `+` the spare height, `!` leaves the
/// caption away, `>` puts numbers at the right edge, `?` hides a list without entries, `:3` covers
/// three places.
struct Line {
    const char* box;  ///< "" is the window itself; a frame of the form, or a box of the layout
    const char* cells;
};

/// Title of a box, or of a frame that has no caption of its own. A box with a title gets a border.
struct Title {
    const char* box;
    const char* title;
};

/// What a screen reader says for a control whose own caption says nothing. A field bears it as its
/// caption, too, unless its place leaves captions away.
struct Spoken {
    const char* control;
    int index;
    const char* name;
};

enum class Style : unsigned char {
    main,     ///< main window, in the middle of the screen
    dialog,   ///< as main, without a frame of its own in the task bar
    splash,   ///< the picture of the start: no title bar
    loading,  ///< no title bar, a third of the way down the screen
};

struct Window {
    const char* form;
    Style style;
    int width;   ///< at the start, in characters; 0: as the content needs
    int height;  ///< in lines of text
    std::span<const Line> lines;
    std::span<const Title> titles;
    std::span<const Spoken> names = {};
};

/// The description of a form's window; one that puts the controls below each other, in the order of
/// the form, when there is none.
const Window* find(std::string_view form);

/// A place of a line, read.
struct Cell {
    enum class Kind : unsigned char { control, heading, box, empty, spare };
    Kind kind = Kind::control;
    std::vector<std::string> names;  ///< several: they share the place
    std::vector<int> indexes;        ///< beside the names; kEachIndex for "(*)"
    std::string inGap;               ///< the field in the gap of a label
    bool wide = false;
    bool high = false;
    bool noCaption = false;
    bool right = false;
    bool big = false;
    bool hidesEmpty = false;
    int span = 1;
};
inline constexpr int kEachIndex = -2;

/// The name in the window's table; empty when it has no row.
const char* spokenName(const Window* window, std::string_view control, int index);

/// Reads the places of one line.
std::vector<Cell> cellsOf(std::string_view cells);

}  // namespace platform::layout
