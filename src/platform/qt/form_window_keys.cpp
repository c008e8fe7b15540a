#include "platform/qt/form_window.h"
#include "platform/qt/form_window_parts.h"
#include "platform/qt/mnemonics.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/widgets.h"
#include "util/conversions.h"

#include <algorithm>
#include <map>

#include <QAbstractButton>
#include <QLabel>
#include <QShortcut>

/// What a screen reader says for the controls, and the letters and keys that reach them.
namespace platform {

namespace {

/// Digits of the keys for what has no letter.
constexpr int kKeys = 9;

bool takesFocus(ui::Kind kind) {
    return kind != ui::Kind::label && kind != ui::Kind::frame && kind != ui::Kind::menuItem &&
           kind != ui::Kind::fileDialog;
}

QString withoutColon(const std::string& caption) {
    QString text = toQt(caption).simplified();
    if (text.endsWith(':')) {
        text.chop(1);
    }
    return text;
}

bool bearsCaption(ui::Kind kind) {
    return kind == ui::Kind::button || kind == ui::Kind::checkBox || kind == ui::Kind::optionButton;
}

constexpr int kRounds = 4;

}  // namespace

/// The round in which a control gets its letter: buttons, boxes, fields, and last the buttons that
/// have a key.
int FormWindow::letterRound(const ui::ControlState& state) const {
    if (state.kind == ui::Kind::button) {
        return hasFormKey(state) ? kRounds - 1 : 0;
    }
    return bearsCaption(state.kind) ? 1 : 2;
}

/// A field without a caption bears the one of its label; members of an array that share a caption
/// are counted.
void FormWindow::nameControls() {
    const auto& states = form_->controls();
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        const ui::ControlState& state = states[slot];
        const bool isCounted =
            !state.caption.empty() &&
            std::count_if(states.begin(), states.end(), [&](const ui::ControlState& other) {
                return other.name == state.name && other.caption == state.caption;
            }) > 1;
        Slot& place = slots_[slot];
        QString name = QString::fromLatin1(layout::spokenName(layout_, state.name, state.index));
        if (name.isEmpty() && isCounted) {
            name = toQt(state.caption) + QString(" %1").arg(state.index + 1);
        } else if (name.isEmpty() && state.caption.empty() && place.label != kNoSlot) {
            name = withoutColon(states[place.label].caption);
        } else if (name.isEmpty() && place.captionEnd != nullptr) {
            name = (place.caption->text() + " " + place.captionEnd->text()).simplified();
        }
        place.control->setSpoken(name);
    }
}

/// The frame around a control that shares its place with other frames; kNoSlot when there is none.
std::size_t FormWindow::pageOf(std::size_t slot) const {
    const ui::ControlState* state = &form_->controls()[slot];
    while (!state->parent.empty()) {
        state = form_->findControl(state->parent);
        if (state == nullptr) {
            return kNoSlot;
        }
        if (slots_[slotOfState(*state)].sharesPlace) {
            return slotOfState(*state);
        }
    }
    return kNoSlot;
}

/// Pages of which one is seen at a time may use the same letters. Buttons and boxes of the window
/// itself come first, then the pages, then the fields of the window.
void FormWindow::giveLetters() {
    letters_.assign(slots_.size(), 0);
    MnemonicPool common;
    for (const ui::ControlState& state : form_->controls()) {
        if (state.kind == ui::Kind::menuItem && state.parent.empty()) {
            common.take(toQt(state.caption));
        }
    }
    std::map<int, std::vector<std::size_t>> pages;  // by place, its frames
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        if (form_->controls()[slot].kind == ui::Kind::frame && slots_[slot].sharesPlace) {
            pages[slots_[slot].place].push_back(slot);
        }
    }
    constexpr int kFields = 2;
    giveLettersOn(kNoSlot, 0, kFields, common);
    for (const auto& [place, frames] : pages) {
        MnemonicPool given = common;
        for (const std::size_t frame : frames) {
            MnemonicPool pool = common;
            giveLettersOn(frame, 0, kRounds, pool);
            given.merge(pool);
        }
        common = given;
    }
    giveLettersOn(kNoSlot, kFields, kRounds, common);
}

/// Letters for the controls of one page (kNoSlot: those on none), for the rounds from `first` on.
void FormWindow::giveLettersOn(std::size_t page, int first, int end, MnemonicPool& pool) {
    for (int round = first; round < end; ++round) {
        for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
            if (pageOf(slot) == page && letterRound(form_->controls()[slot]) == round) {
                giveLetter(slot, pool);
            }
        }
    }
}

/// A letter of the control's caption, of its label or its heading, if one is left.
void FormWindow::giveLetter(std::size_t slot, MnemonicPool& pool) {
    const ui::ControlState& state = form_->controls()[slot];
    Slot& place = slots_[slot];
    if (!takesFocus(state.kind)) {
        return;
    }
    char& letter = letters_[slot];
    QLabel* const caption = place.heading != nullptr ? place.heading : place.caption;
    if (caption != nullptr) {
        if (place.heading != nullptr && letters_[slotOfWidget(caption->buddy())] != 0) {
            letter = letters_[slotOfWidget(caption->buddy())];  // the heading has one by now
            place.control->widget()->setAccessibleDescription(
                QString("Alt+%1").arg(QChar::fromLatin1(letter).toUpper())
            );
            return;
        }
        const QString text = caption->text();
        letter = pool.take(text);
        caption->setText(withMnemonic(text, letter));
    } else if (place.label != kNoSlot) {
        letter = pool.take(toQt(form_->controls()[place.label].caption));
        slots_[place.label].control->setMnemonic(letter);
    } else if (bearsCaption(state.kind)) {
        letter = pool.take(toQt(state.caption));
        place.control->setMnemonic(letter);
    }
}

bool FormWindow::hasFormKey(const ui::ControlState& state) const {
    const auto keys = form_->keys();
    return std::any_of(keys.begin(), keys.end(), [&](const ui::Key& key) {
        return key.index == state.index && util::sameName(key.control, state.name);
    });
}

/// What has neither letter nor key gets Ctrl with a digit, which its tool tip tells.
void FormWindow::giveKeys() {
    int given = 0;
    for (std::size_t slot = 0; slot < slots_.size() && given < 2 * kKeys; ++slot) {
        const ui::ControlState& state = form_->controls()[slot];
        QWidget* const widget = slots_[slot].control->widget();
        const bool hasOne = letters_[slot] != 0 || hasFormKey(state);
        if (!takesFocus(state.kind) || hasOne || floats(slot)) {
            continue;
        }
        if (const ColumnHeading* heading = slots_[slot].heading;
            heading != nullptr && heading->buddy() != widget) {
            widget->setAccessibleDescription(heading->buddy()->accessibleDescription());
            continue;  // the key of its column
        }
        const QString key =
            QString(given < kKeys ? "Ctrl+%1" : "Ctrl+Shift+%1").arg(given % kKeys + 1);
        ++given;
        const auto* shortcut = new QShortcut(QKeySequence(key), this);
        connect(shortcut, &QShortcut::activated, this, [this, slot] { pressByKey(slot); });
        widget->setToolTip(key);
        widget->setAccessibleDescription(key);
    }
}

void FormWindow::pressByKey(std::size_t slot) {
    QWidget* const widget = slots_[slot].control->widget();
    if (frozen_ || !widget->isVisible() || !widget->isEnabled()) {
        return;
    }
    if (slots_[slot].heading != nullptr) {
        slots_[slot].heading->goToNext();
        return;
    }
    widget->setFocus(Qt::ShortcutFocusReason);
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->click();
    }
}

/// A caption beside a field follows the form's own.
void FormWindow::refreshCaption(std::size_t slot) {
    const ui::ControlState& state = form_->controls()[slot];
    const Slot& place = slots_[slot];
    if (place.caption != nullptr && place.captionEnd == nullptr && !state.caption.empty()) {
        const char letter = slot < letters_.size() ? letters_[slot] : '\0';
        place.caption->setText(withMnemonic(toQt(state.caption), letter));
    }
}

}  // namespace platform
