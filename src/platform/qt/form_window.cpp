#include "platform/qt/form_window.h"

#include "platform/qt/busy_bar.h"
#include "platform/qt/form_window_parts.h"
#include "platform/qt/mnemonics.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/splash.h"
#include "platform/qt/widgets.h"
#include "util/conversions.h"

#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

namespace platform {

namespace {

QString objectNameOf(const ui::ControlState& state) {
    const QString name = toQt(state.name);
    return state.index == ui::kNoIndex ? name : name + QString("(%1)").arg(state.index);
}

}  // namespace

FormWindow::FormWindow(ui::Form& form, Post post, const DayFirst& dayFirst)
    : form_(&form),
      name_(form.name()),
      post_(std::move(post)),
      layout_(layout::find(form.name())),
      content_(new QWidget(this)),
      enteredByMouse_(kNoSlot) {
    setObjectName(toQt(name_));
    setWindowTitle(toQt(form.title()));
    if (isBare(layout_)) {
        setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    }
    makeControls(dayFirst);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    LayoutBuilder builder(form, slots_, content_);
    if (layout_ != nullptr) {
        builder.build(*layout_);
    }
    builder.buildRest();
    if (layout_ != nullptr && layout_->style == layout::Style::splash) {
        column->addWidget(new SplashPicture(windowTitle(), this));
        content_->hide();
    }
    column->addWidget(content_);
    makeMenus();
    makeBusyBar(builder);
    markPages();
    nameControls();
    giveLetters();
    giveKeys();
    orderTabs();
    for (const ui::ControlState& state : form.controls()) {
        refresh(state);
    }
    QApplication::instance()->installEventFilter(this);
}

FormWindow::~FormWindow() {
    QApplication::instance()->removeEventFilter(this);
}

/// Who shows a form modal waits for it, so that it outlives its window.
bool FormWindow::isFormThere() const {
    return windowModality() != Qt::NonModal || ui::findForm(name_) == form_;
}

void FormWindow::makeControls(const DayFirst& dayFirst) {
    const auto& states = form_->controls();
    slots_.resize(states.size());
    for (std::size_t slot = 0; slot < states.size(); ++slot) {
        ControlSinks sinks;
        sinks.holds = [this, slot](const std::string& text) {
            ui::ControlState& state = form_->controls()[slot];
            if (state.kind != ui::Kind::checkBox && state.kind != ui::Kind::optionButton) {
                ui::replaceText(state.text, text);
            }
        };
        sinks.raised = [this, slot](ui::Signal signal, int row, int column) {
            post_(Act{Act::What::signal, slot, signal, row, column});
        };
        slots_[slot].control = makeControlWidget(states[slot], sinks, content_, dayFirst);
        if (QWidget* widget = slots_[slot].control->widget()) {
            widget->setObjectName(objectNameOf(states[slot]));
        }
    }
}

/// A menu entry without a parent heads a menu; the others stand in the menu of their parent.
void FormWindow::makeMenus() {
    std::map<std::string, QMenu*> menus;
    auto* bar = new QMenuBar(this);
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        const ui::ControlState& state = form_->controls()[slot];
        if (state.kind != ui::Kind::menuItem) {
            continue;
        }
        const QString caption = toQt(state.caption);
        if (state.parent.empty()) {
            menus[state.name] =
                bar->addMenu(withMnemonic(caption, caption.isEmpty() ? '\0' : caption[0].toLatin1())
                );
        } else if (menus.contains(state.parent)) {
            auto* action = slots_[slot].control->action();
            action->setObjectName(objectNameOf(state));
            menus[state.parent]->addAction(action);
        }
    }
    if (menus.empty()) {
        delete bar;
    } else {
        layout()->setMenuBar(bar);
    }
}

/// The bar that shows work stands beside the status text.
void FormWindow::makeBusyBar(LayoutBuilder& builder) {
    if (form_->findControl(kStatus) != nullptr) {
        busyBar_ = new BusyBar(content_);
        builder.placeBeside(kStatus, busyBar_);
    }
}

/// A button that bears the caption of a frame shows that page: it looks pressed while the page is
/// seen.
void FormWindow::markPages() {
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        auto* button = qobject_cast<QPushButton*>(slots_[slot].control->widget());
        for (const ui::ControlState& frame : form_->controls()) {
            if (button != nullptr && frame.kind == ui::Kind::frame && !frame.caption.empty() &&
                frame.caption == form_->controls()[slot].caption) {
                button->setCheckable(true);
            }
        }
    }
}

void FormWindow::refreshPages() {
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        auto* button = qobject_cast<QPushButton*>(slots_[slot].control->widget());
        if (button == nullptr || !button->isCheckable()) {
            continue;
        }
        for (const ui::ControlState& frame : form_->controls()) {
            if (frame.kind == ui::Kind::frame && frame.caption == form_->controls()[slot].caption) {
                button->setChecked(frame.visible);
                showPressed(button, frame.visible);
            }
        }
    }
}

/// Tab follows the order of the layout, which is the order of the screen.
void FormWindow::orderTabs() {
    const std::vector<QWidget*> order = tabOrderOf(*content_->layout());
    for (std::size_t at = 1; at < order.size(); ++at) {
        setTabOrder(order[at - 1], order[at]);
    }
}

void FormWindow::present() {
    setWindowTitle(toQt(form_->title()));
    adjustSize();
    if (layout_ != nullptr && layout_->width > 0) {
        const QFontMetrics metrics = fontMetrics();
        const QSize wanted(
            metrics.averageCharWidth() * layout_->width, metrics.height() * layout_->height
        );
        resize(wanted.expandedTo(sizeHint()));
    }
    // The frame that the window gets has its place on the screen, too.
    const int frame = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QRect place = screen()->availableGeometry().adjusted(0, 0, 0, -frame);
    resize(size().boundedTo(place.size()));
    const bool isHigh = layout_ != nullptr && layout_->style == layout::Style::loading;
    constexpr int kThird = 3;
    const int top = isHigh ? place.height() / kThird : (place.height() - height()) / 2;
    move(place.left() + (place.width() - width()) / 2, place.top() + top);
    quiet_ = true;
    show();
    focusFirst();
    quiet_ = false;
}

/// A field that only shows gets the focus when nothing else can have it.
void FormWindow::focusFirst() {
    QWidget* first = nullptr;
    for (QWidget* widget : tabOrderOf(*content_->layout())) {
        const auto* field = qobject_cast<QLineEdit*>(widget);
        const bool onlyShows = field != nullptr && field->isReadOnly();
        if (widget->isEnabled() && widget->isVisible() && (first == nullptr || !onlyShows)) {
            first = widget;
            if (!onlyShows) {
                break;
            }
        }
    }
    if (first == nullptr) {
        return;
    }
    first->setFocus(Qt::OtherFocusReason);
    auto* field = qobject_cast<QLineEdit*>(first);
    if (field != nullptr && layout_ != nullptr && layout_->style == layout::Style::dialog) {
        field->selectAll();
    }
}

std::size_t FormWindow::slotOfState(const ui::ControlState& state) const {
    return static_cast<std::size_t>(&state - form_->controls().data());
}

std::size_t FormWindow::slotOfWidget(const QObject* widget) const {
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        if (slots_[slot].control->widget() == widget) {
            return slot;
        }
    }
    return kNoSlot;
}

bool FormWindow::floats(std::size_t slot) const {
    return !slots_[slot].placed && form_->controls()[slot].kind == ui::Kind::dropDown;
}

void FormWindow::refresh(const ui::ControlState& state) {
    const std::size_t slot = slotOfState(state);
    const bool wasQuiet = std::exchange(quiet_, true);  // hiding may move the focus
    slots_[slot].control->apply(state);
    refreshCaption(slot);
    setShown(slot, state.visible);
    setUsable(slot);
    quiet_ = wasQuiet;
    if (state.kind == ui::Kind::frame) {
        refreshPages();
    }
    if (busyBar_ != nullptr && util::sameName(state.name, kStatus)) {
        busyBar_->status(state.caption);
    }
}

void FormWindow::setShown(std::size_t slot, bool shown) {
    QWidget* widget = slots_[slot].control->widget();
    if (slots_[slot].isCut) {
        return;
    }
    shown = shown && (!slots_[slot].hidesEmpty || !form_->controls()[slot].items.empty());
    if (!floats(slot)) {
        slots_[slot].control->setShown(shown);
        for (QLabel* caption : {slots_[slot].caption, slots_[slot].captionEnd}) {
            if (caption != nullptr) {
                caption->setVisible(shown);
            }
        }
    } else if (shown && widget->isHidden()) {
        showList(slot);
    } else if (!shown && !widget->isHidden()) {
        hideList(slot);
    }
}

/// While work runs, what could be pressed is grey; fields and grids keep their look and take
/// nothing.
void FormWindow::setUsable(std::size_t slot) {
    using ui::Kind;
    const ui::ControlState& state = form_->controls()[slot];
    const bool onlyShows = state.kind == Kind::frame || state.kind == Kind::label ||
                           state.kind == Kind::grid || isTyped(state.kind);
    const bool isStop = util::sameName(state.name, kStop);
    const bool isEmpty = state.kind == Kind::dropDown && state.items.empty() && !floats(slot);
    const bool usable = state.enabled && !isEmpty && (!frozen_ || onlyShows || isStop);
    slots_[slot].control->setUsable(usable);
    if (slots_[slot].caption != nullptr) {
        slots_[slot].caption->setEnabled(usable);
    }
}

void FormWindow::setFrozen(bool frozen) {
    if (frozen == frozen_) {
        return;
    }
    frozen_ = frozen;
    quiet_ = true;
    if (frozen) {
        focusBeforeFreeze_ = focusWidget();
    }
    for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
        setUsable(slot);
    }
    if (frozen) {
        if (auto* stop = findChild<QWidget*>(kStop); stop != nullptr && stop->isEnabled()) {
            stop->setFocus(Qt::OtherFocusReason);
        }
    } else if (focusBeforeFreeze_ != nullptr && focusBeforeFreeze_->isVisible() &&
               focusBeforeFreeze_->isEnabled()) {
        focusBeforeFreeze_->setFocus(Qt::OtherFocusReason);
    }
    quiet_ = false;
}

}  // namespace platform
