#include "platform/qt/widgets.h"

#include <algorithm>
#include <iterator>

#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

namespace platform {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setShrinks() {
    shrinks_ = true;
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
    if (!shrinks_) {
        QLabel::paintEvent(event);
        return;
    }
    const QString line = text().simplified();
    const QString shown = fontMetrics().elidedText(line, Qt::ElideRight, width());
    const QString tip = shown == line ? QString() : "<p>" + line.toHtmlEscaped() + "</p>";
    if (tip != toolTip()) {
        setToolTip(tip);  // as a paragraph a long text is broken into lines
    }
    QPainter painter(this);
    style()->drawItemText(
        &painter,
        rect(),
        Qt::AlignLeft | Qt::AlignVCenter,
        palette(),
        isEnabled(),
        shown,
        foregroundRole()
    );
}

void ColumnHeading::add(QWidget* field) {
    fields_.push_back(field);
    if (buddy() == nullptr) {
        setBuddy(field);
    }
}

bool ColumnHeading::event(QEvent* event) {
    if (event->type() != QEvent::Shortcut || fields_.empty()) {
        return QLabel::event(event);
    }
    goToNext();
    return true;
}

void ColumnHeading::goToNext() {
    const auto present = std::find_if(fields_.begin(), fields_.end(), [](const QWidget* field) {
        return field->hasFocus();
    });
    const bool isLast = present == fields_.end() || std::next(present) == fields_.end();
    QWidget* const next = isLast ? fields_.front() : *std::next(present);
    next->setFocus(Qt::ShortcutFocusReason);
}

PickList::PickList(QWidget* parent) : QComboBox(parent) {
    setMaxVisibleItems(16);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    connect(this, &QComboBox::activated, this, [this] { picked_ = true; });
    afterPopup_.setSingleShot(true);
    connect(&afterPopup_, &QTimer::timeout, this, &PickList::tellDropped);
}

void PickList::showPopup() {
    open_ = true;
    picked_ = false;
    QComboBox::showPopup();
}

void PickList::hidePopup() {
    QComboBox::hidePopup();
    if (open_) {
        open_ = false;
        afterPopup_.start(0);  // the pick, if there is one, is told right after the list has gone
    }
}

void PickList::tellDropped() {
    if (!picked_ && !open_ && dropped_) {
        dropped_();
    }
}

void showLocked(QLineEdit* field, bool locked) {
    QPalette palette;
    if (locked) {
        palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    }
    field->setPalette(palette);
}

void showPressed(QPushButton* button, bool pressed) {
    QPalette palette;
    if (pressed) {
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            palette.setColor(group, QPalette::Button, palette.color(QPalette::Highlight));
            palette.setColor(group, QPalette::ButtonText, palette.color(QPalette::HighlightedText));
        }
    }
    button->setPalette(palette);
}

}  // namespace platform
