#include "platform/qt/qt_desktop.h"

#include "platform/qt/busy_bar.h"
#include "platform/qt/form_window_parts.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/splash.h"
#include "platform/qt/text_viewer.h"
#include "util/conversions.h"

#include <algorithm>

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QUrl>

namespace platform {

namespace {

/// Runs something at the end of a block, however it ends.
template <class Last>
class AtEnd {
public:
    explicit AtEnd(Last last) : last_(std::move(last)) {}
    ~AtEnd() { last_(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    AtEnd(AtEnd&&) = delete;
    AtEnd& operator=(AtEnd&&) = delete;

private:
    Last last_;
};

/// "QB Files (*.qbw)|*.qbw|All Files (*.*)|*.*" as the toolkit writes it.
QString filterText(const std::string& filter) {
    const QStringList parts = toQt(filter).split('|');
    QStringList rows;
    for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
        const QString name = parts[at].section('(', 0, 0).trimmed();
        const QString mask = parts[at + 1] == "*.*" ? QString("*") : parts[at + 1];
        rows += name + " (" + mask + ")";
    }
    return rows.join(";;");
}

bool isButton(ui::Kind kind) {
    return kind == ui::Kind::button || kind == ui::Kind::menuItem;
}

bool startsWork(ui::Form& form, const Act& act) {
    return act.signal == ui::Signal::click && isButton(form.controls()[act.slot].kind);
}

bool isPress(const Act& act) {
    return act.what == Act::What::signal && (act.signal == ui::Signal::click || act.byPress);
}

/// The click that the key "Esc" stands for.
bool isEscape(ui::Form& form, const Act& act) {
    if (act.what == Act::What::close) {
        return true;
    }
    const ui::ControlState& state = form.controls()[act.slot];
    return act.signal == ui::Signal::click &&
           std::any_of(form.keys().begin(), form.keys().end(), [&](const ui::Key& key) {
               return std::string_view(key.key) == "Esc" && key.index == state.index &&
                      util::sameName(key.control, state.name);
           });
}

bool isStop(ui::Form& form, const Act& act) {
    return act.what == Act::What::signal && act.signal == ui::Signal::click &&
           util::sameName(form.controls()[act.slot].name, kStop);
}

}  // namespace

QtDesktop::QtDesktop(QtHost host) : host_(std::move(host)) {
    QApplication::setWindowIcon(programIcon());
    QApplication::setQuitOnLastWindowClosed(false);
}

QtDesktop::~QtDesktop() {
    for (const auto& shown : shown_) {
        if (shown->window->isFormThere()) {
            shown->window->form().setObserver(nullptr);
        }
    }
    QtDesktop::setBusyCursor(false);
}

QtDesktop::Shown* QtDesktop::shownOf(const ui::Form& form) {
    for (const auto& shown : shown_) {
        if (&shown->window->form() == &form) {
            return shown.get();
        }
    }
    return nullptr;
}

/// The modal window that has the operator.
QtDesktop::Shown* QtDesktop::top() {
    const auto found = std::find_if(shown_.rbegin(), shown_.rend(), [](const auto& shown) {
        return shown->modal;
    });
    return found == shown_.rend() ? nullptr : found->get();
}

QWidget* QtDesktop::topWidget() {
    const auto found = std::find_if(shown_.rbegin(), shown_.rend(), [](const auto& shown) {
        return shown->window->isVisible();
    });
    return found == shown_.rend() ? nullptr : (*found)->window.get();
}

/// A form that went without being closed leaves its window behind.
void QtDesktop::dropDeadWindows() {
    std::erase_if(shown_, [](const auto& shown) {
        return !shown->modal && !shown->working && !shown->window->isFormThere();
    });
}

QtDesktop::Shown& QtDesktop::open(ui::Form& form, bool modal) {
    dropDeadWindows();
    std::erase_if(shown_, [&](const auto& shown) { return &shown->window->form() == &form; });
    form.reopen();
    auto made = std::make_unique<Shown>();
    Shown& shown = *made;
    const auto post = [&shown](const Act& act) { shown.acts.push_back(act); };
    shown.window = std::make_unique<FormWindow>(form, post, host_.dayFirst);
    shown.modal = modal;
    if (modal) {
        shown.window->setWindowModality(Qt::ApplicationModal);
    }
    shown_.push_back(std::move(made));
    form.setObserver(this);
    return shown;
}

void QtDesktop::start(Shown& shown) {
    ui::Form& form = shown.window->form();
    runWork(shown, [&] { form.raise(form.name(), ui::Signal::load); });
    if (form.isClosed()) {
        return;
    }
    shown.window->present();
    runWork(shown, [&] { form.raise(form.name(), ui::Signal::activate); });
}

void QtDesktop::showModeless(ui::Form& form) {
    start(open(form, false));
}

/// The form exists: it is being shown, or closes itself.
void QtDesktop::closeWindow(const Shown& shown) {
    shown.window->form().setObserver(nullptr);
    std::erase_if(shown_, [&](const auto& one) { return one.get() == &shown; });
}

void QtDesktop::showModal(ui::Form& form) {
    Shown& shown = open(form, true);
    {
        const AtEnd gone([&] { closeWindow(shown); });
        start(shown);
        while (!form.isClosed()) {
            wait(shown);
        }
    }
    form.raise(form.name(), ui::Signal::unload);
}

/// Plays what waits; without anything to play, lets the toolkit wait for the operator.
void QtDesktop::wait(Shown& shown) {
    if (shown.acts.empty()) {
        QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        return;
    }
    const Act act = shown.acts.front();
    shown.acts.pop_front();
    play(shown, act);
}

void QtDesktop::play(Shown& shown, const Act& act) {
    ui::Form& form = shown.window->form();
    if (act.what == Act::What::close) {
        form.close();
        return;
    }
    if (!canPlay(form, act)) {
        shown.window->refresh(form.controls()[act.slot]);
        return;
    }
    const ui::Focus focus = form.focus();
    if (startsWork(form, act)) {
        runWork(shown, [&] { playSignal(shown, act); });
        // What was clicked together with it is not meant for what the window shows now.
        std::erase_if(shown.acts, [&](const Act& later) {
            return startsWork(form, later) && !isEscape(form, later);
        });
    } else if (isTyped(form.controls()[act.slot].kind)) {
        playField(shown, act);
    } else {
        playSignal(shown, act);
    }
    if (form.isClosed()) {
        return;
    }
    if (shown.window->followFocus(focus) && act.signal == ui::Signal::leave) {
        // The field was not given up: a click that would have left it does not count.
        std::erase_if(shown.acts, [&](const Act& later) { return !isEscape(form, later); });
    }
    shown.window->openPendingList();
}

/// A field may open a company file, or bring up a dialog. What the operator did meanwhile does not
/// count; what was done before it came to its turn does, but for a second press on the field.
void QtDesktop::playField(Shown& shown, const Act& act) {
    std::deque<Act> before;
    before.swap(shown.acts);
    runWork(shown, [&] { playSignal(shown, act); });
    ui::Form& form = shown.window->form();
    const bool leaves = !shown.acts.empty() && isEscape(form, shown.acts.front());
    if (leaves) {
        return;
    }
    if (isPress(act)) {
        std::erase_if(before, [&](const Act& later) {
            return isPress(later) && later.slot == act.slot;
        });
    }
    shown.acts.insert(shown.acts.begin(), before.begin(), before.end());
}

bool QtDesktop::canPlay(ui::Form& form, const Act& act) {
    const ui::ControlState& state = form.controls()[act.slot];
    const bool needsControl = act.signal != ui::Signal::leave && act.signal != ui::Signal::change;
    return !needsControl || (state.enabled && form.isShown(state));
}

void QtDesktop::playSignal(Shown& shown, const Act& act) {
    ui::Form& form = shown.window->form();
    const ui::ControlState& state = form.controls()[act.slot];
    shown.window->setAnchor(act);
    if (act.signal == ui::Signal::click) {
        form.setFocus(state.name, state.index);
        toggle(form, act.slot);
    }
    const bool handled = form.raise(state.name, act.signal, state.index, act.row, act.column);
    if (!handled && act.byPress) {  // the window has an ear for the press alone
        form.raise(state.name, ui::Signal::click, state.index);
    }
}

/// Sets a box as its widget stands; the other option buttons of its array go off.
void QtDesktop::toggle(ui::Form& form, std::size_t slot) {
    const ui::ControlState& state = form.controls()[slot];
    if (state.kind == ui::Kind::checkBox) {
        form.setOn(state.name, state.value == 0, state.index);
    }
    if (state.kind != ui::Kind::optionButton) {
        return;
    }
    for (const ui::ControlState& other : form.controls()) {
        if (other.kind == state.kind && util::sameName(other.name, state.name)) {
            form.setOn(other.name, other.index == state.index, other.index);
        }
    }
}

/// Runs a handler that may take long: Stop is served in it.
void QtDesktop::runWork(Shown& shown, const std::function<void()>& handler) {
    const bool outermost = !shown.working;
    if (outermost) {
        shown.working = true;
        boxes_.begin();
    }
    {
        const AtEnd done([&] { shown.working = !outermost; });
        handler();
    }
    if (outermost) {
        endWork(shown);
    }
}

void QtDesktop::endWork(Shown& shown) {
    FormWindow& window = *shown.window;
    if (window.isFrozen()) {
        window.setFrozen(false);
        if (window.busyBar() != nullptr) {
            window.busyBar()->stop();
        }
    }
    boxes_.end(topWidget());
    if (shown.leaving) {
        shown.leaving = false;
        shown.acts.assign(1, shown.leave);
    }
}

void QtDesktop::pendingEvents() {
    dropDeadWindows();
    Shown* shown = top();
    if (shown == nullptr || !shown->working) {
        QApplication::processEvents();
        return;
    }
    FormWindow& window = *shown->window;
    if (!window.isFrozen()) {
        window.setFrozen(true);
        if (window.busyBar() != nullptr) {
            window.busyBar()->start();
        }
    } else if (window.busyBar() != nullptr) {
        window.busyBar()->tick();
    }
    QApplication::processEvents();
    serveStop(*shown);
}

/// Of what the operator did while work runs only Stop counts; Esc and the close box stop it too.
void QtDesktop::serveStop(Shown& shown) {
    ui::Form& form = shown.window->form();
    bool stop = false;
    while (!shown.acts.empty()) {
        const Act act = shown.acts.front();
        shown.acts.pop_front();
        if (isEscape(form, act)) {
            shown.leaving = true;
            shown.leave = act;
            stop = true;
        } else if (isStop(form, act)) {
            stop = true;
        } else if (act.what == Act::What::signal) {
            shown.window->refresh(form.controls()[act.slot]);
        }
    }
    if (stop) {
        pressStop(shown);
    }
}

bool QtDesktop::canStop(ui::Form& form) {
    const ui::ControlState* stop = form.findControl(kStop);
    return stop != nullptr && stop->enabled && form.isShown(*stop);
}

void QtDesktop::pressStop(Shown& shown) {
    ui::Form& form = shown.window->form();
    if (canStop(form)) {
        form.raise(kStop, ui::Signal::click);
    }
}

BoxAnswer QtDesktop::messageBox(
    const std::string& text, const std::string& title, BoxButtons buttons, BoxIcon icon
) {
    dropDeadWindows();
    Shown* shown = top();
    const bool working = shown != nullptr && shown->working;
    const BoxPlace place{topWidget(), working, working && canStop(shown->window->form())};
    const MessageBoxes::Reply reply = boxes_.ask(text, title, buttons, icon, place);
    if (working && reply.stopped) {
        pressStop(*shown);
    }
    if (working && !reply.shown) {
        pendingEvents();  // a box that is not seen must not shut Stop out
    }
    return reply.answer;
}

void QtDesktop::setBusyCursor(bool busy) {
    if (busy == busyCursor_) {
        return;
    }
    busyCursor_ = busy;
    if (busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void QtDesktop::openDocument(const std::string& name) {
    const bool isAddress = name.find("://") != std::string::npos;
    const std::string file =
        !isAddress && host_.nativeName ? host_.nativeName(name) : util::toUtf8(name);
    const QUrl url =
        isAddress ? QUrl(toQt(name)) : QUrl::fromLocalFile(QString::fromStdString(file));
    const bool opened = host_.openUrl ? host_.openUrl(url) : QDesktopServices::openUrl(url);
    const bool shown =
        opened || (!isAddress && TextViewer::open(QString::fromStdString(file), topWidget()));
    if (!shown) {
        messageBox(
            "This computer has no program that opens " + name,
            fromQt(topWidget() == nullptr ? QString() : topWidget()->windowTitle()),
            BoxButtons::ok,
            BoxIcon::exclamation
        );
    }
}

std::string QtDesktop::chooseFile(
    const std::string& title, const std::string& startPath, const std::string& filter
) {
    QFileDialog dialog(topWidget(), toQt(title));
    dialog.setObjectName("chooseFile");
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (!filter.empty()) {
        dialog.setNameFilters(filterText(filter).split(";;"));
    }
    const std::string native = host_.nativeName && !util::trim(startPath).empty()
                                   ? host_.nativeName(startPath)
                                   : util::toUtf8(startPath);
    const QFileInfo start(QString::fromStdString(native));
    const QString folder = start.isDir() ? start.filePath() : start.path();
    dialog.setDirectory(
        QDir(folder).isAbsolute() && QDir(folder).exists() ? folder : QDir::homePath()
    );
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    return fromQt(dialog.selectedFiles().front());
}

bool QtDesktop::hasOperator() const {
    return std::none_of(shown_.begin(), shown_.end(), [](const auto& shown) {
        return shown->leaving;
    });
}

void QtDesktop::controlChanged(ui::Form& form, const ui::ControlState& control) {
    if (Shown* shown = shownOf(form)) {
        shown->window->refresh(control);
    }
}

void QtDesktop::formClosed(ui::Form& form) {
    Shown* shown = shownOf(form);
    if (shown == nullptr) {
        return;
    }
    shown->window->hide();
    if (!shown->modal) {
        closeWindow(*shown);
    }
}

}  // namespace platform
