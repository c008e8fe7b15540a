#pragma once

#include "platform/ports/desktop.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

/// One message box as it was shown.
struct ShownBox {
    std::string text;
    std::string title;
    platform::BoxButtons buttons = platform::BoxButtons::ok;
    platform::BoxIcon icon = platform::BoxIcon::none;
};

/// A desktop without a screen: records what the program says and plays the operator.
class RecordingDesktop : public platform::DesktopPort {
public:
    using FormScript = std::function<void(ui::Form&)>;

    std::vector<ShownBox> boxes;
    std::deque<platform::BoxAnswer> answers;       ///< for the coming boxes, in order
    std::optional<platform::BoxAnswer> otherwise;  ///< for further boxes; unset: OK or Yes
    FormScript onModal;  ///< acts on each modal form without a script of its own
    std::map<std::string, FormScript> onForm;      ///< by form name
    std::map<int, std::function<void()>> onYield;  ///< by number of the yield, from 1
    std::vector<std::string> shownForms;           ///< modal and modeless, in order
    std::vector<std::string> openedDocuments;
    std::string chosenFile;  ///< answer of chooseFile()
    int yields = 0;
    bool busy = false;
    bool operatorThere = true;

    void showModal(ui::Form& form) override {
        open(form);
        if (!form.isClosed()) {
            const auto script = onForm.find(form.name());
            if (script != onForm.end()) {
                script->second(form);
            } else if (onModal) {
                onModal(form);
            }
        }
        form.raise(form.name(), ui::Signal::unload);
    }
    void showModeless(ui::Form& form) override { open(form); }
    platform::BoxAnswer messageBox(
        const std::string& text,
        const std::string& title,
        platform::BoxButtons buttons,
        platform::BoxIcon icon
    ) override {
        boxes.push_back({text, title, buttons, icon});
        if (boxes.size() > kTooManyBoxes) {
            throw std::logic_error("the program asks for ever: " + text);
        }
        if (!answers.empty()) {
            const platform::BoxAnswer answer = answers.front();
            answers.pop_front();
            return answer;
        }
        const bool isQuestion = buttons == platform::BoxButtons::yesNo;
        return otherwise.value_or(isQuestion ? platform::BoxAnswer::yes : platform::BoxAnswer::ok);
    }
    void pendingEvents() override {
        const auto callback = onYield.find(++yields);
        if (callback != onYield.end()) {
            callback->second();
        }
    }
    void setBusyCursor(bool isBusy) override { busy = isBusy; }
    void openDocument(const std::string& name) override { openedDocuments.push_back(name); }
    std::string chooseFile(const std::string&, const std::string&, const std::string&) override {
        return chosenFile;
    }
    [[nodiscard]] bool hasOperator() const override { return operatorThere; }

    /// Texts of the boxes, in order.
    [[nodiscard]] std::vector<std::string> boxTexts() const {
        std::vector<std::string> texts;
        texts.reserve(boxes.size());
        for (const ShownBox& box : boxes) {
            texts.push_back(box.text);
        }
        return texts;
    }

private:
    static constexpr std::size_t kTooManyBoxes = 10000;

    void open(ui::Form& form) {
        shownForms.push_back(form.name());
        form.reopen();
        form.raise(form.name(), ui::Signal::load);
        form.raise(form.name(), ui::Signal::activate);
    }
};

}  // namespace testing_support
