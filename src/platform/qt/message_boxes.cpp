#include "platform/qt/message_boxes.h"

#include "platform/qt/qt_text.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace platform {

namespace {

struct ButtonsRow {
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton usual;
    QMessageBox::StandardButton refusing;
};
/// Beside BoxButtons.
constexpr ButtonsRow kButtons[] = {
    {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok},
    {QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Cancel},
    {QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No},
};

/// Beside BoxIcon.
constexpr QMessageBox::Icon kIcons[] = {
    QMessageBox::NoIcon,
    QMessageBox::Critical,
    QMessageBox::Question,
    QMessageBox::Warning,
    QMessageBox::Information,
};

BoxAnswer answerOf(QMessageBox::StandardButton button) {
    switch (button) {
    case QMessageBox::Cancel:
        return BoxAnswer::cancel;
    case QMessageBox::Yes:
        return BoxAnswer::yes;
    case QMessageBox::No:
        return BoxAnswer::no;
    default:
        return BoxAnswer::ok;
    }
}

QString lines(const std::string& text) {
    return toQt(text).replace("\r\n", "\n").replace('\r', '\n');
}

/// The most that a box shows at once, so that its buttons stay on the screen.
constexpr qsizetype kMostCharacters = 1000;
constexpr qsizetype kMostLines = 24;

/// The beginning of a text that is too long for a box; the text itself when it is not.
QString beginningOf(const QString& text) {
    const QString cut = text.section('\n', 0, kMostLines - 1).left(kMostCharacters);
    return cut == text ? text : cut + "...";
}

void showText(QMessageBox& box, const std::string& text) {
    const QString whole = lines(text);
    box.setTextFormat(Qt::PlainText);
    box.setText(beginningOf(whole));
    if (box.text() != whole) {
        box.setDetailedText(whole);
    }
}

/// The text without its numbers and what stands in quotes.
std::string withoutNames(const std::string& text) {
    std::string shape;
    bool inQuotes = false;
    for (const char letter : text) {
        inQuotes = inQuotes != (letter == '"');
        if (!inQuotes && (letter < '0' || letter > '9')) {
            shape += letter;
        }
    }
    return shape;
}

/// What makes a box come again: a question is answered only for itself.
std::string kindOf(const std::string& text, const std::string& title, BoxButtons buttons) {
    return title + "\n" + (buttons == BoxButtons::ok ? withoutNames(text) : text);
}

QString listText(const std::vector<AnsweredMessage>& answered) {
    QString text;
    for (const AnsweredMessage& message : answered) {
        const QString times = message.times > 1 ? QString(" (%1 times)").arg(message.times) : "";
        text += lines(message.text).replace('\n', ' ') + times + '\n';
    }
    return text;
}

}  // namespace

void MessageBoxes::begin() {
    known_.clear();
    answered_.clear();
    count_ = 0;
}

void MessageBoxes::keep(const std::string& text) {
    ++count_;
    if (!answered_.empty() && answered_.back().text == text) {
        ++answered_.back().times;
    } else {
        answered_.push_back({text, 1});
    }
}

MessageBoxes::Reply MessageBoxes::ask(
    const std::string& text,
    const std::string& title,
    BoxButtons buttons,
    BoxIcon icon,
    const BoxPlace& place
) {
    Known& known = known_[kindOf(text, title, buttons)];
    if (known.fixed) {
        keep(text);
        return {known.answer, false, false};
    }
    const bool comesAgain = place.inRun && ++known.times > 1;
    const ButtonsRow& row = kButtons[static_cast<std::size_t>(buttons)];
    QMessageBox box(place.parent);
    box.setObjectName("messageBox");
    box.setWindowTitle(toQt(title));
    showText(box, text);
    box.setIcon(kIcons[static_cast<std::size_t>(icon)]);
    box.setStandardButtons(row.buttons);
    box.setDefaultButton(row.usual);
    box.setEscapeButton(row.refusing);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QCheckBox* same = nullptr;
    QPushButton* stop = nullptr;
    if (comesAgain) {
        same = new QCheckBox("&Give the same answer for the rest of this run", &box);
        box.setCheckBox(same);
    }
    if (comesAgain && place.canStop) {
        stop = box.addButton("&Stop", QMessageBox::DestructiveRole);
        stop->setObjectName("stopRun");
    }
    box.exec();
    if (stop != nullptr && box.clickedButton() == stop) {
        return {answerOf(row.refusing), true, true};
    }
    const BoxAnswer answer = answerOf(box.standardButton(box.clickedButton()));
    known.fixed = same != nullptr && same->isChecked();
    known.answer = answer;
    return {answer, true, false};
}

void MessageBoxes::end(QWidget* parent) {
    if (count_ == 0) {
        return;
    }
    QDialog dialog(parent);
    dialog.setObjectName("answeredMessages");
    dialog.setWindowTitle("Messages of this run");
    auto* column = new QVBoxLayout(&dialog);
    const QString counted = count_ == 1 ? "1 message was" : QString("%1 messages were").arg(count_);
    column->addWidget(new QLabel(counted + " answered without being shown:", &dialog));
    auto* list = new QPlainTextEdit(listText(answered_), &dialog);
    list->setReadOnly(true);
    list->setAccessibleName("Messages");
    list->setMinimumSize(
        list->fontMetrics().averageCharWidth() * 80, list->fontMetrics().height() * 14
    );
    column->addWidget(list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    QPushButton* copy = buttons->addButton("Copy &All", QDialogButtonBox::ActionRole);
    column->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(copy, &QPushButton::clicked, [list] {
        QGuiApplication::clipboard()->setText(list->toPlainText());
    });
    count_ = 0;
    dialog.exec();
}

}  // namespace platform
