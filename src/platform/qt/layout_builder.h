#pragma once

#include "platform/qt/control_widget.h"
#include "platform/qt/layout.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class QGridLayout;
class QLabel;
class QLayout;
class QWidget;

namespace platform {

class ColumnHeading;
/// The label in which a window tells how its work goes on.
inline constexpr char kStatus[] = "LblStatus";
inline constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

/// A control of a window with the caption that stands beside it.
struct Slot {
    std::unique_ptr<ControlWidget> control;
    QLabel* caption = nullptr;     ///< of a field; follows the field
    QLabel* captionEnd = nullptr;  ///< what follows the gap of a label
    bool placed = false;
    bool sharesPlace = false;     ///< keeps its place while it is hidden
    bool isCut = false;           ///< a label that stands as the captions of the field in its gap
    bool hidesEmpty = false;      ///< a list that is seen only while it has entries
    int place = 0;                ///< number of the place; what shares one has the same
    std::size_t label = kNoSlot;  ///< the label control that stands before the field
    ColumnHeading* heading = nullptr;  ///< of a field in a column
};

/// Puts the widgets of a form where its layout says. Slots stand beside the form's controls.
class LayoutBuilder {
public:
    LayoutBuilder(ui::Form& form, std::vector<Slot>& slots, QWidget* content);

    /// Follows the window's description.
    void build(const layout::Window& window);
    /// Puts every control that has no place yet below the last one: fields with their captions,
    /// buttons side by side. A list that starts hidden stays without a place: it floats.
    void buildRest();
    /// Puts a widget of the window's own behind a control, in the same row.
    void placeBeside(const std::string& control, QWidget* widget);

private:
    struct Box {
        QWidget* widget = nullptr;
        QGridLayout* grid = nullptr;
        int rows = 0;
    };

    Box& box(const std::string& name);
    void addLine(Box& box, const std::vector<layout::Cell>& cells);
    int place(Box& box, int row, int column, const layout::Cell& cell);
    int placeControl(Box& box, int row, int column, const layout::Cell& cell, std::size_t slot);
    int placeGap(Box& box, int row, int column, const layout::Cell& cell);
    void placeHeading(Box& box, int row, int column, const layout::Cell& cell);
    [[nodiscard]] std::string captionOf(const ui::ControlState& state) const;
    QLabel* captionFor(Slot& slot, const ui::ControlState& state, QWidget* parent) const;
    void nameByLabel(std::size_t label, std::size_t field);
    void giveColumns();
    [[nodiscard]] std::size_t slotOf(const std::string& name, int index) const;
    void placeAlone(std::size_t slot);

    ui::Form* form_;
    std::vector<Slot>* slots_;
    QWidget* content_;
    const layout::Window* window_ = nullptr;
    std::map<std::string, Box> boxes_;
    std::map<std::string, ColumnHeading*> headings_;  ///< by name of the control array
    std::size_t labelBefore_ = kNoSlot;               ///< the label placed last in the line
    int places_ = 0;
};

/// The widgets that take the focus, in the order of the layout: line by line within each box.
std::vector<QWidget*> tabOrderOf(const QLayout& layout);

}  // namespace platform
