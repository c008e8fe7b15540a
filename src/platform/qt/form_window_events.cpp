#include "platform/qt/form_window.h"
#include "platform/qt/form_window_parts.h"
#include "util/conversions.h"

#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QPushButton>
#include <QScrollBar>

/// The lists that float over fields, the focus, the keys, and what the mouse does.
namespace platform {

namespace {

Qt::FocusReason reasonOf(const QEvent& event) {
    return static_cast<const QFocusEvent&>(event).reason();
}

/// False when the focus moves with the window, or for a list or menu that opens.
bool movesByOperator(const QEvent& event) {
    const Qt::FocusReason reason = reasonOf(event);
    return QApplication::activePopupWidget() == nullptr && reason != Qt::ActiveWindowFocusReason &&
           reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
}

/// Is it the key that a row of the form names? The keys of the number pad are those of the main
/// block, and the case of a letter does not matter.
bool isPressed(const ui::Key& key, const QKeyEvent& event) {
    Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool isReturn = event.key() == Qt::Key_Return;
    const int pressed = isReturn ? static_cast<int>(Qt::Key_Enter) : event.key();
    const QKeySequence named = QKeySequence::fromString(key.key);
    if (std::string_view(key.key).size() == 1) {
        modifiers &= ~Qt::ShiftModifier;
    }
    return named == QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(pressed)));
}

}  // namespace

void FormWindow::setAnchor(const Act& act) {
    const ui::Kind kind = form_->controls()[act.slot].kind;
    if (kind == ui::Kind::grid || isTyped(kind)) {
        anchor_ = act;
        hasAnchor_ = true;
    }
}

/// Lays the list over the cell or field that the operator acted on. It begins with what stands
/// there, so that leaving it without a pick changes nothing.
void FormWindow::showList(std::size_t slot) {
    QWidget* list = slots_[slot].control->widget();
    if (hasAnchor_) {
        const ui::ControlState& below = form_->controls()[anchor_.slot];
        const ControlWidget& place = *slots_[anchor_.slot].control;
        const QRect part = place.partAt(anchor_.row, anchor_.column);
        const int height = std::max(part.height(), list->sizeHint().height());
        list->setGeometry(QRect(
            place.widget()->mapTo(content_, part.topLeft()) +
                QPoint(0, (part.height() - height) / 2),
            QSize(part.width(), height)
        ));
        ui::ControlState& state = form_->controls()[slot];
        state.text = below.text;
        if (below.kind == ui::Kind::grid) {
            state.text = below.rows.at(static_cast<std::size_t>(anchor_.row))
                             .at(static_cast<std::size_t>(anchor_.column));
        }
        slots_[slot].control->apply(state);
    }
    list->show();
    list->raise();
    listPending_ = true;
    listSlot_ = slot;
}

void FormWindow::hideList(std::size_t slot) {
    const bool wasQuiet = std::exchange(quiet_, true);
    listPending_ = false;
    if (hasAnchor_) {
        slots_[anchor_.slot].control->widget()->setFocus(Qt::OtherFocusReason);
    }
    slots_[slot].control->widget()->hide();
    quiet_ = wasQuiet;
}

void FormWindow::openPendingList() {
    if (!listPending_) {
        return;
    }
    listPending_ = false;
    quiet_ = true;
    slots_[listSlot_].control->widget()->setFocus(Qt::OtherFocusReason);
    slots_[listSlot_].control->openList();
    quiet_ = false;
}

bool FormWindow::followFocus(const ui::Focus& before) {
    if (form_->focus() == before) {
        return false;
    }
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        const ui::ControlState& state = form_->controls()[slot];
        QWidget* widget = slots_[slot].control->widget();
        if (state.index == form_->focus().index &&
            util::sameName(state.name, form_->focus().name) && widget != nullptr &&
            widget->isVisible() && widget->isEnabled() && !floats(slot)) {
            quiet_ = true;
            widget->setFocus(Qt::OtherFocusReason);
            quiet_ = false;
            return true;
        }
    }
    return false;
}

/// True for what the operator does to anything but Stop, the scroll bars and the window itself.
bool FormWindow::isShutOut(const QWidget& widget, const QEvent& event) const {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        break;
    default:
        return false;
    }
    return frozen_ && widget.objectName() != kStop &&
           dynamic_cast<const QScrollBar*>(&widget) == nullptr;
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();  // the form decides
    if (!isBare(layout_)) {
        post_(Act{Act::What::close});
    }
}

/// What has colours of its own takes them from the new palette.
void FormWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !slots_.empty()) {
        for (const Slot& slot : slots_) {
            slot.control->takePalette();
        }
        refreshPages();
    }
}

/// Keys of the window act before the control under focus sees them; an open list or menu keeps its
/// own, and a button that has the focus keeps Enter.
bool FormWindow::takeKey(const QWidget& focus, const QKeyEvent& event) {
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (QApplication::activePopupWidget() != nullptr ||
        (isEnter && qobject_cast<const QPushButton*>(&focus) != nullptr)) {
        return false;
    }
    for (const ui::Key& key : form_->keys()) {
        if (!isPressed(key, event)) {
            continue;
        }
        const ui::ControlState* state = form_->findControl(key.control, key.index);
        if (state != nullptr && state->enabled && form_->isShown(*state)) {
            post_(Act{Act::What::signal, slotOfState(*state)});
            return true;
        }
    }
    return false;
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || !isFormThere() || widget->window() != this) {
        return QWidget::eventFilter(watched, event);
    }
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (takeKey(*widget, key)) {
            return true;
        }
        auto* button = isShutOut(*widget, *event) ? nullptr : qobject_cast<QPushButton*>(watched);
        if (button != nullptr && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)) {
            button->click();
            return true;
        }
    }
    if (isShutOut(*widget, *event)) {
        return true;
    }
    const std::size_t slot = slotOfWidget(watched);
    if (slot != kNoSlot && !quiet_) {
        watchFocus(slot, *event);
    }
    return QWidget::eventFilter(watched, event);
}

/// A press on a field raises one signal: `enter` when it brings the focus, else `click`. F4 stands
/// for a press on the field that has the focus.
void FormWindow::watchFocus(std::size_t slot, const QEvent& event) {
    const ui::ControlState& state = form_->controls()[slot];
    switch (event.type()) {
    case QEvent::FocusIn:
        if (movesByOperator(event)) {
            form_->setFocus(state.name, state.index);
            const bool byPress = isTyped(state.kind) && reasonOf(event) == Qt::MouseFocusReason;
            enteredByMouse_ = byPress ? slot : kNoSlot;
            post_(Act{Act::What::signal, slot, ui::Signal::enter, 0, 0, byPress});
        }
        break;
    case QEvent::FocusOut:
        if (movesByOperator(event)) {
            post_(Act{Act::What::signal, slot, ui::Signal::leave});
        }
        break;
    case QEvent::MouseButtonPress:
        if (isTyped(state.kind) && enteredByMouse_ != slot) {
            post_(Act{Act::What::signal, slot, ui::Signal::click});
        }
        enteredByMouse_ = kNoSlot;
        break;
    case QEvent::KeyPress:
        if (isTyped(state.kind) && static_cast<const QKeyEvent&>(event).key() == Qt::Key_F4) {
            post_(Act{Act::What::signal, slot, ui::Signal::click});
        }
        break;
    default:
        break;
    }
}

}  // namespace platform
