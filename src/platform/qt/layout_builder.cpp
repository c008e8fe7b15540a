#include "platform/qt/layout_builder.h"

#include "platform/qt/qt_text.h"
#include "platform/qt/widgets.h"
#include "util/conversions.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>

namespace platform {

namespace {

using layout::Cell;

constexpr char kButtonBar[] = "buttons of the default layout";

bool isField(ui::Kind kind) {
    using ui::Kind;
    return kind == Kind::textBox || kind == Kind::passwordBox || kind == Kind::dropDown ||
           kind == Kind::datePicker;
}

QGridLayout* newGrid(QWidget* widget, bool bordered) {
    auto* grid = new QGridLayout(widget);
    if (!bordered) {
        grid->setContentsMargins(0, 0, 0, 0);
    }
    return grid;
}

void keepPlaceWhenHidden(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

void styleLabel(ElidedLabel& label, const Cell& cell) {
    if (cell.wide) {
        label.setShrinks();
    }
    if (cell.big) {
        constexpr qreal kLarger = 1.3;
        QFont font = label.font();
        font.setBold(true);
        font.setPointSizeF(font.pointSizeF() * kLarger);
        label.setFont(font);
    }
}

/// Spare height goes below the last row, unless a row takes it.
void fillFromTop(QGridLayout& grid, int rows) {
    for (int row = 0; row < rows; ++row) {
        if (grid.rowStretch(row) > 0) {
            return;
        }
    }
    grid.setRowStretch(rows, 1);
}

}  // namespace

LayoutBuilder::LayoutBuilder(ui::Form& form, std::vector<Slot>& slots, QWidget* content)
    : form_(&form),
      slots_(&slots),
      content_(content) {
    boxes_[""] = Box{content, newGrid(content, true), 0};
}

std::size_t LayoutBuilder::slotOf(const std::string& name, int index) const {
    const ui::ControlState* state = form_->findControl(name, index);
    if (state == nullptr) {
        throw std::logic_error("the layout of " + form_->name() + " names " + name);
    }
    return static_cast<std::size_t>(state - form_->controls().data());
}

/// The box of that name: a frame of the form, or one that only the layout knows.
LayoutBuilder::Box& LayoutBuilder::box(const std::string& name) {
    const auto known = boxes_.find(name);
    if (known != boxes_.end()) {
        return known->second;
    }
    const char* title = "";
    if (window_ != nullptr) {
        for (const layout::Title& row : window_->titles) {
            title = name == row.box ? row.title : title;
        }
    }
    Box made;
    if (form_->findControl(name) != nullptr) {
        made.widget = slots_->at(slotOf(name, ui::kNoIndex)).control->widget();
        made.grid = newGrid(made.widget, true);
    } else {
        made.widget = *title != '\0' ? new QGroupBox(content_) : new QWidget(content_);
        made.grid = newGrid(made.widget, *title != '\0');
    }
    if (auto* group = qobject_cast<QGroupBox*>(made.widget); group != nullptr && *title != '\0') {
        group->setTitle(QString::fromLatin1(title));
    }
    return boxes_.emplace(name, made).first->second;
}

void LayoutBuilder::build(const layout::Window& window) {
    window_ = &window;
    for (const layout::Line& line : window.lines) {
        const std::vector<Cell> cells = layout::cellsOf(line.cells);
        const bool each = !cells.empty() && !cells.front().indexes.empty() &&
                          cells.front().indexes.front() == layout::kEachIndex;
        if (!each) {
            addLine(box(line.box), cells);
            continue;
        }
        for (int index = 0; form_->findControl(cells.front().names.front(), index) != nullptr;
             ++index) {
            std::vector<Cell> member = cells;
            for (Cell& cell : member) {
                std::fill(cell.indexes.begin(), cell.indexes.end(), index);
            }
            addLine(box(line.box), member);
        }
    }
    for (auto& [name, made] : boxes_) {
        if (qobject_cast<QGroupBox*>(made.widget) != nullptr) {
            fillFromTop(*made.grid, made.rows);
        }
    }
    giveColumns();
}

/// A heading knows the fields below it.
void LayoutBuilder::giveColumns() {
    for (std::size_t slot = 0; slot < slots_->size(); ++slot) {
        const auto found = headings_.find(form_->controls()[slot].name);
        if (found != headings_.end()) {
            (*slots_)[slot].heading = found->second;
            found->second->add((*slots_)[slot].control->widget());
        }
    }
}

/// Caption of a field: its own, or the one that its window's table gives it.
std::string LayoutBuilder::captionOf(const ui::ControlState& state) const {
    if (!isField(state.kind) || !state.caption.empty()) {
        return isField(state.kind) ? state.caption : std::string();
    }
    return layout::spokenName(window_, state.name, state.index);
}

/// A label right before a field is the field's.
void LayoutBuilder::nameByLabel(std::size_t label, std::size_t field) {
    if (label == kNoSlot || !isField(form_->controls()[field].kind)) {
        return;
    }
    (*slots_)[field].label = label;
    if (auto* shown = qobject_cast<QLabel*>((*slots_)[label].control->widget())) {
        shown->setBuddy((*slots_)[field].control->widget());
    }
}

void LayoutBuilder::addLine(Box& box, const std::vector<Cell>& cells) {
    const int row = box.rows++;
    int column = 0;
    labelBefore_ = kNoSlot;
    for (const Cell& cell : cells) {
        if (cell.high) {
            box.grid->setRowStretch(row, 1);
        }
        const std::size_t label = std::exchange(labelBefore_, kNoSlot);
        ++places_;
        column = place(box, row, column, cell);
        if (cell.kind == Cell::Kind::control && cell.names.size() == 1 && cell.inGap.empty()) {
            const std::size_t slot = slotOf(cell.names.front(), cell.indexes.front());
            nameByLabel(label, slot);
            labelBefore_ = form_->controls()[slot].kind == ui::Kind::label ? slot : kNoSlot;
        }
    }
}

/// @return the column behind the place.
int LayoutBuilder::place(Box& box, int row, int column, const Cell& cell) {
    switch (cell.kind) {
    case Cell::Kind::spare:
        box.grid->setColumnStretch(column, 1);
        return column + 1;
    case Cell::Kind::empty:
        return column + 1;
    case Cell::Kind::heading:
        placeHeading(box, row, column, cell);
        return column + cell.span;
    case Cell::Kind::box: {
        QGridLayout* grid = box.grid;
        if (cell.wide) {
            grid->setColumnStretch(column, 1);
        }
        grid->addWidget(this->box(cell.names.front()).widget, row, column, 1, cell.span);
        return column + cell.span;
    }
    case Cell::Kind::control:
        break;
    }
    if (!cell.inGap.empty()) {
        return placeGap(box, row, column, cell);
    }
    int behind = column;
    for (std::size_t at = 0; at < cell.names.size(); ++at) {
        const std::size_t slot = slotOf(cell.names[at], cell.indexes[at]);
        (*slots_)[slot].sharesPlace = cell.names.size() > 1;
        behind = std::max(behind, placeControl(box, row, column, cell, slot));
    }
    return behind;
}

int LayoutBuilder::placeControl(Box& box, int row, int column, const Cell& cell, std::size_t slot) {
    Slot& place = (*slots_)[slot];
    const ui::ControlState& state = form_->controls()[slot];
    QWidget* widget = place.control->widget();
    place.placed = true;
    place.place = places_;
    place.hidesEmpty = cell.hidesEmpty;
    if (!cell.noCaption && !captionOf(state).empty()) {
        box.grid->addWidget(captionFor(place, state, box.widget), row, column++);
    }
    if (cell.right) {
        place.control->alignRight();
    }
    if (place.sharesPlace) {
        keepPlaceWhenHidden(widget);
    }
    if (cell.wide) {
        box.grid->setColumnStretch(column, 1);
    }
    if (auto* label = dynamic_cast<ElidedLabel*>(widget)) {
        styleLabel(*label, cell);
    }
    box.grid->addWidget(widget, row, column, 1, cell.span);
    return column + cell.span;
}

QLabel*
LayoutBuilder::captionFor(Slot& slot, const ui::ControlState& state, QWidget* parent) const {
    slot.caption = new QLabel(toQt(captionOf(state)), parent);
    slot.caption->setTextFormat(Qt::PlainText);
    slot.caption->setBuddy(slot.control->widget());
    return slot.caption;
}

/// "Terms: Net      30    Days": the field stands where the caption leaves its gap.
int LayoutBuilder::placeGap(Box& box, int row, int column, const Cell& cell) {
    const std::size_t labelSlot = slotOf(cell.names.front(), cell.indexes.front());
    const std::size_t fieldSlot = slotOf(cell.inGap, ui::kNoIndex);
    const std::string& caption = form_->controls()[labelSlot].caption;
    const std::size_t gapBegin = caption.find("  ");
    const std::size_t gapEnd = caption.rfind("  ");
    const std::string before = caption.substr(0, gapBegin);
    const std::string after =
        gapEnd == std::string::npos ? std::string() : util::trim(caption.substr(gapEnd));

    Slot& field = (*slots_)[fieldSlot];
    (*slots_)[labelSlot].placed = true;
    (*slots_)[labelSlot].isCut = true;
    (*slots_)[labelSlot].control->widget()->hide();
    field.placed = true;
    field.caption = new QLabel(toQt(before), box.widget);
    field.caption->setTextFormat(Qt::PlainText);
    field.caption->setBuddy(field.control->widget());
    field.captionEnd = new QLabel(toQt(after), box.widget);
    field.captionEnd->setTextFormat(Qt::PlainText);
    if (auto* edit = qobject_cast<QLineEdit*>(field.control->widget())) {
        constexpr int kCharacters = 6;
        edit->setFixedWidth(edit->fontMetrics().averageCharWidth() * kCharacters);
    }
    if (cell.right) {
        field.control->alignRight();
    }
    box.grid->addWidget(field.caption, row, column);
    box.grid->addWidget(field.control->widget(), row, column + 1);
    box.grid->addWidget(field.captionEnd, row, column + 2);
    return column + 3;
}

void LayoutBuilder::placeHeading(Box& box, int row, int column, const Cell& cell) {
    const std::size_t slot = slotOf(cell.names.front(), cell.indexes.front());
    auto* heading = new ColumnHeading(toQt(form_->controls()[slot].caption), box.widget);
    headings_[form_->controls()[slot].name] = heading;
    heading->setAlignment(Qt::AlignBottom | (cell.right ? Qt::AlignRight : Qt::AlignLeft));
    if (cell.wide) {
        box.grid->setColumnStretch(column, 1);
    }
    box.grid->addWidget(heading, row, column, 1, cell.span);
}

void LayoutBuilder::placeAlone(std::size_t slot) {
    const ui::ControlState& state = form_->controls()[slot];
    if (state.kind == ui::Kind::button) {
        Box& bar = box(kButtonBar);
        bar.rows = 1;
        placeControl(bar, 0, bar.grid->columnCount(), Cell{}, slot);
        return;
    }
    const bool inFrame = !state.parent.empty() && form_->findControl(state.parent) != nullptr;
    Box& parent = box(inFrame ? state.parent : std::string());
    Cell cell;
    cell.span = captionOf(state).empty() ? 2 : 1;
    const bool isStatus = util::sameName(state.name, kStatus);
    cell.wide = isStatus || (state.kind != ui::Kind::label && cell.span == 1);
    const int row = parent.rows++;
    parent.grid->setRowStretch(row, state.kind == ui::Kind::grid ? 1 : 0);
    placeControl(parent, row, 0, cell, slot);
}

void LayoutBuilder::buildRest() {
    bool hasBar = false;
    for (std::size_t slot = 0; slot < slots_->size(); ++slot) {
        const ui::ControlState& state = form_->controls()[slot];
        const bool floats = state.kind == ui::Kind::dropDown && !state.visible;
        if ((*slots_)[slot].placed || floats || (*slots_)[slot].control->widget() == nullptr) {
            continue;
        }
        if (window_ != nullptr && boxes_.contains(state.name)) {
            continue;  // a frame that the layout has put to its place as a box
        }
        hasBar = hasBar || state.kind == ui::Kind::button;
        placeAlone(slot);
    }
    if (hasBar) {
        Box& root = boxes_[""];
        root.grid->addWidget(boxes_[kButtonBar].widget, root.rows++, 0, 1, 2, Qt::AlignRight);
    }
}

void LayoutBuilder::placeBeside(const std::string& control, QWidget* widget) {
    QWidget* neighbour = (*slots_)[slotOf(control, ui::kNoIndex)].control->widget();
    auto* grid = qobject_cast<QGridLayout*>(neighbour->parentWidget()->layout());
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(grid->indexOf(neighbour), &row, &column, &rows, &columns);
    grid->addWidget(widget, row, column + columns);
}

std::vector<QWidget*> tabOrderOf(const QLayout& layout) {
    std::vector<QWidget*> order;
    for (int at = 0; at < layout.count(); ++at) {
        QWidget* widget = layout.itemAt(at)->widget();
        if (widget == nullptr) {
            continue;
        }
        if (widget->focusPolicy() != Qt::NoFocus) {
            order.push_back(widget);
        }
        if (const QLayout* inner = widget->layout()) {
            const std::vector<QWidget*> below = tabOrderOf(*inner);
            order.insert(order.end(), below.begin(), below.end());
        }
    }
    return order;
}

}  // namespace platform
