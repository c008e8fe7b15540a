#include "platform/qt/control_widget.h"

#include "platform/qt/grid_widget.h"
#include "platform/qt/mnemonics.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/widgets.h"
#include "ui/form.h"
#include "util/conversions.h"

#include <algorithm>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

namespace platform {

QRect ControlWidget::partAt(int /*row*/, int /*column*/) const {
    return widget() == nullptr ? QRect() : widget()->rect();
}

QString ControlWidget::nameFor(const ui::ControlState& state) const {
    if (!spoken_.isEmpty()) {
        return spoken_;
    }
    return state.caption.empty() ? toQt(state.name) : toQt(state.caption);
}

namespace {

/// A control that is one widget.
template <class Widget>
class Single : public ControlWidget {
public:
    explicit Single(Widget* widget) : widget_(widget) {}
    [[nodiscard]] QWidget* widget() const override { return widget_; }
    void setUsable(bool usable) override { widget_->setEnabled(usable); }
    void setShown(bool shown) override { widget_->setVisible(shown); }

protected:
    [[nodiscard]] Widget* get() const { return widget_; }

private:
    Widget* widget_;
};

class Label : public Single<ElidedLabel> {
public:
    explicit Label(QWidget* parent) : Single(new ElidedLabel(parent)) {}
    void apply(const ui::ControlState& state) override {
        caption_ = toQt(state.caption);
        showCaption();
    }
    void setMnemonic(char letter) override {
        letter_ = letter;
        showCaption();
    }

private:
    /// Only in a label that belongs to a field "&" marks the letter.
    void showCaption() {
        get()->setText(get()->buddy() == nullptr ? caption_ : withMnemonic(caption_, letter_));
    }

    QString caption_;
    char letter_ = 0;
};

/// Push buttons, check boxes and option buttons.
template <class Widget>
class Button : public Single<Widget> {
public:
    Button(const ControlSinks& sinks, QWidget* parent) : Single<Widget>(new Widget(parent)) {
        QObject::connect(this->get(), &QAbstractButton::clicked, [this, sinks](bool checked) {
            if (isPage_) {
                this->get()->setChecked(!checked);  // the window says which page it shows
            } else if (this->get()->isCheckable()) {
                sinks.holds(checked ? "1" : "0");
            }
            sinks.raised(ui::Signal::click, 0, 0);
        });
    }
    void apply(const ui::ControlState& state) override {
        caption_ = toQt(state.caption);
        this->get()->setText(withMnemonic(caption_, letter_));
        this->get()->setAccessibleName(this->nameFor(state));
        isPage_ = state.kind == ui::Kind::button && this->get()->isCheckable();
        if (this->get()->isCheckable() && !isPage_) {
            setChecked(state.value != 0);
        }
    }
    void setMnemonic(char letter) override {
        letter_ = letter;
        this->get()->setText(withMnemonic(caption_, letter_));
    }

private:
    /// Option buttons exclude each other; the form's state does not depend on that.
    void setChecked(bool on) {
        const QSignalBlocker quiet(this->get());
        const bool exclusive = this->get()->autoExclusive();
        this->get()->setAutoExclusive(false);
        this->get()->setChecked(on);
        this->get()->setAutoExclusive(exclusive);
    }

    QString caption_;
    char letter_ = 0;
    bool isPage_ = false;
};

class Field : public Single<QLineEdit> {
public:
    Field(const ControlSinks& sinks, QWidget* parent) : Single(new QLineEdit(parent)) {
        constexpr int kLeastCharacters = 10;
        get()->setMinimumWidth(get()->fontMetrics().averageCharWidth() * kLeastCharacters);
        QObject::connect(get(), &QLineEdit::textEdited, [this, sinks](const QString& text) {
            tell(text, sinks);
            sinks.raised(ui::Signal::change, 0, 0);
        });
    }
    void apply(const ui::ControlState& state) override {
        showText(state.text);
        if (get()->isReadOnly() != state.locked) {
            get()->setReadOnly(state.locked);
            showLocked(get(), state.locked);
        }
        get()->setAccessibleName(nameFor(state));
    }
    void alignRight() override { get()->setAlignment(Qt::AlignRight | Qt::AlignVCenter); }
    void takePalette() override { showLocked(get(), get()->isReadOnly()); }

protected:
    /// Tells the form what was typed.
    virtual void tell(const QString& text, const ControlSinks& sinks) { sinks.holds(fromQt(text)); }
    virtual void showText(const std::string& held) {
        const QString text = toQt(held);
        if (get()->text() != text) {
            get()->setText(text);
            get()->setCursorPosition(0);
        }
    }
};

/// Leaves as few copies of what is typed behind as the toolkit lets it.
class PasswordField : public Field {
public:
    PasswordField(const ControlSinks& sinks, QWidget* parent) : Field(sinks, parent) {
        get()->setEchoMode(QLineEdit::Password);
    }
    ~PasswordField() override {
        if (field_ != nullptr) {
            overwriteShared(field_->text());
        }
    }
    PasswordField(const PasswordField&) = delete;
    PasswordField& operator=(const PasswordField&) = delete;
    PasswordField(PasswordField&&) = delete;
    PasswordField& operator=(PasswordField&&) = delete;

protected:
    void tell(const QString& text, const ControlSinks& sinks) override {
        std::string typed = plainText(text);
        sinks.holds(typed);
        ui::replaceText(typed, "");
    }
    void showText(const std::string& held) override {
        std::string shown = plainText(get()->text());
        if (shown != held) {
            overwriteShared(get()->text());
            get()->setText(toQt(held));
        }
        ui::replaceText(shown, "");
    }

private:
    /// Character by character into a text that does not grow.
    static std::string plainText(const QString& text) {
        std::string plain;
        plain.reserve(static_cast<std::size_t>(text.size()));
        for (const QChar character : text) {
            plain += fromQt(QString(character));
        }
        return plain;
    }
    /// The field's own text, which the toolkit would give back as it stands.
    static void overwriteShared(const QString& text) {
        auto* const characters = const_cast<QChar*>(text.constData());
        std::fill_n(characters, text.size(), QChar(u'*'));
    }

    QPointer<QLineEdit> field_ = get();
};

class List : public Single<PickList> {
public:
    List(const ControlSinks& sinks, QWidget* parent) : Single(new PickList(parent)) {
        QObject::connect(get(), &QComboBox::activated, [this, sinks](int /*row*/) {
            sinks.holds(fromQt(get()->currentText()));
            sinks.raised(ui::Signal::select, 0, 0);
        });
        get()->onDropped([sinks] { sinks.raised(ui::Signal::leave, 0, 0); });
    }
    void apply(const ui::ControlState& state) override {
        const QSignalBlocker quiet(get());
        if (items_ != state.items) {
            items_ = state.items;
            get()->clear();
            for (const std::string& item : items_) {
                get()->addItem(toQt(item));
            }
        }
        const QString text = toQt(state.text);
        get()->setPlaceholderText(text);
        get()->setCurrentIndex(text.isEmpty() ? -1 : get()->findText(text));
        get()->setAccessibleName(nameFor(state));
    }
    void openList() override { get()->showPopup(); }

private:
    std::vector<std::string> items_;
};

class Date : public Single<QDateEdit> {
public:
    Date(const ControlSinks& sinks, QWidget* parent, const DayFirst& dayFirst)
        : Single(new QDateEdit(parent)),
          format_(dayFirst && dayFirst() ? "d/M/yyyy" : "M/d/yyyy") {
        get()->setCalendarPopup(true);
        get()->setDisplayFormat(format_);
        QObject::connect(get(), &QDateEdit::userDateChanged, [this, sinks](QDate date) {
            sinks.holds(fromQt(date.toString(format_)));
            sinks.raised(ui::Signal::change, 0, 0);
        });
    }
    void apply(const ui::ControlState& state) override {
        const QSignalBlocker quiet(get());
        const QDate date = QDate::fromString(toQt(state.text).trimmed(), format_);
        if (date.isValid()) {
            get()->setDate(date);
        }
        get()->setReadOnly(state.locked);
        get()->setAccessibleName(nameFor(state));
    }

private:
    QString format_;
};

class Frame : public Single<QGroupBox> {
public:
    explicit Frame(QWidget* parent) : Single(new QGroupBox(parent)) {}
    void apply(const ui::ControlState& state) override {
        if (!state.caption.empty()) {
            get()->setTitle(withMnemonic(toQt(state.caption), 0));
        }
        get()->setAccessibleName(state.caption.empty() ? get()->title() : toQt(state.caption));
    }
};

class MenuEntry : public ControlWidget {
public:
    MenuEntry(const ControlSinks& sinks, QWidget* parent) : action_(new QAction(parent)) {
        QObject::connect(action_, &QAction::triggered, [sinks] {
            sinks.raised(ui::Signal::click, 0, 0);
        });
    }
    [[nodiscard]] QWidget* widget() const override { return nullptr; }
    [[nodiscard]] QAction* action() const override { return action_; }
    void apply(const ui::ControlState& state) override {
        action_->setText(
            withMnemonic(toQt(state.caption), state.caption.empty() ? '\0' : state.caption[0])
        );
    }
    void setUsable(bool usable) override { action_->setEnabled(usable); }
    void setShown(bool shown) override { action_->setVisible(shown); }

private:
    QAction* action_;
};

/// What the form opens itself when it needs it.
class Unseen : public ControlWidget {
public:
    [[nodiscard]] QWidget* widget() const override { return nullptr; }
    void apply(const ui::ControlState& /*state*/) override {}
    void setUsable(bool /*usable*/) override {}
    void setShown(bool /*shown*/) override {}
};

}  // namespace

std::unique_ptr<ControlWidget> makeControlWidget(
    const ui::ControlState& state,
    const ControlSinks& sinks,
    QWidget* parent,
    const DayFirst& dayFirst
) {
    using ui::Kind;
    switch (state.kind) {
    case Kind::label:
        return std::make_unique<Label>(parent);
    case Kind::button:
        return std::make_unique<Button<QPushButton>>(sinks, parent);
    case Kind::checkBox:
        return std::make_unique<Button<QCheckBox>>(sinks, parent);
    case Kind::optionButton:
        return std::make_unique<Button<QRadioButton>>(sinks, parent);
    case Kind::textBox:
        return std::make_unique<Field>(sinks, parent);
    case Kind::passwordBox:
        return std::make_unique<PasswordField>(sinks, parent);
    case Kind::dropDown:
        return std::make_unique<List>(sinks, parent);
    case Kind::datePicker:
        return std::make_unique<Date>(sinks, parent, dayFirst);
    case Kind::grid:
        return makeGrid(sinks, parent);
    case Kind::frame:
        return std::make_unique<Frame>(parent);
    case Kind::menuItem:
        return std::make_unique<MenuEntry>(sinks, parent);
    case Kind::fileDialog:
        return std::make_unique<Unseen>();
    }
    return nullptr;
}

}  // namespace platform
